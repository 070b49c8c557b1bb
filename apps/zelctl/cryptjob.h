#pragma once

#include "command.h"
#include <zeltools/simplecrypt.h>

#include <QString>

#include <optional>

/// What `zelctl crypt encrypt` or `decrypt` has been told to do.
struct Job
{
    QString input;   ///< "-" is the standard input
    QString output;  ///< "-" is the standard output
    QString keyFile; ///< empty when the key came from elsewhere
    SimpleCrypt crypt;
    bool isEncryption = false;
    bool isWhole = false; ///< in memory, not in chunks
    /// What a decryption must have checked the payload by.
    std::optional<SimpleCrypt::ProtectionMode> required;
};

/// Does it, and reports errors on stderr. The output appears when it is complete and, for an
/// encryption, has been decrypted again.
ExitStatus process(Job& job);
