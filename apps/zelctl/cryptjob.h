#pragma once

#include "command.h"
#include <zeltools/simplecrypt.h>

#include <QString>

#include <optional>

/// The task of `zelctl crypt encrypt` or `decrypt`.
struct Job
{
    QString input;   ///< "-" is the standard input
    QString output;  ///< "-" is the standard output
    QString keyFile; ///< empty when the key came from elsewhere
    SimpleCrypt crypt;
    bool isEncryption = false;
    bool isWhole = false; ///< in memory, not in chunks
    /// The check without which a decryption fails.
    std::optional<SimpleCrypt::ProtectionMode> required;
};

/// Encrypts or decrypts, and reports errors on stderr. The output appears when it is complete and,
/// for an encryption, has been decrypted again.
ExitStatus run(Job& job);
