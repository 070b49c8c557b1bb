#pragma once

#include <QString>

class SimpleCrypt;

/// Gives a key of 16 hexadecimal digits, with "0x" and white space around them or not, from a file
/// to an object that encrypts. No other copy of it is left in memory. Returns what is wrong with
/// the key, or nothing.
QString readKeyFile(const QString& path, SimpleCrypt& crypt);
/// The same from the environment variable ZEL_KEY, which is wiped too.
QString readKeyVariable(SimpleCrypt& crypt);
