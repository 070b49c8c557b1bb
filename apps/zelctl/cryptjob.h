#pragma once

#include "command.h"
#include "simplecrypt.h"

#include <QString>

/// What `zelctl crypt encrypt` or `decrypt` has been told to do.
struct Job
{
    QString input;   ///< "-" is the standard input
    QString output;  ///< "-" is the standard output
    QString keyFile; ///< empty when the key came from elsewhere
    quint64 key = 0;
    SimpleCrypt crypt;
    bool isEncryption = false;
    bool isWhole = false; ///< in memory, not in chunks
    int prefixSize = 0;   ///< what a streamed encryption puts in front of the payload
};

/// Does it, and tells on stderr what hindered it. The output appears when it is complete and, for
/// an encryption, has been decrypted again.
ExitStatus process(Job& job);
