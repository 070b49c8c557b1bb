#pragma once

#include "commandparser.h"

#include <QString>

#include <optional>

class SimpleCrypt;

/// Reads the words of a command that gets a key, and sees to it that no core file shows the key.
/// `misuseOf` returns a problem with the words, or an empty text. Returns a status if the command
/// ends here.
std::optional<ExitStatus> parseSecretly(CommandParser& parser, const QStringList& arguments,
                                        QString (*misuseOf)(const CommandParser& parser));
/// Reads a key of 16 hexadecimal digits, with an optional "0x" and white space around it, and sets
/// it. The key comes from the file that the option "key-file" names, or else from the environment
/// variable ZEL_KEY, which is wiped. No other copy of the key stays in memory. Returns the problem
/// with the key, or an empty text.
QString readKey(const CommandParser& parser, SimpleCrypt& crypt);
