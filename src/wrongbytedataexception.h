#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>

#include <stdexcept>

/// A text was to be bytes in hexadecimal, and is not. what() is in the encoding of the locale, and
/// carries the details behind the name of the class.
class ZELTOOLS_EXPORT WrongByteDataException : public std::invalid_argument
{
public:
    explicit WrongByteDataException(const QString& details);
};
