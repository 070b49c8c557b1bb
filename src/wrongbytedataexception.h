#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>

#include <stdexcept>

/// The exception for a text that is not bytes in hexadecimal form. what() is in the encoding of the
/// locale and has the name of the class followed by the details.
class ZELTOOLS_EXPORT WrongByteDataException : public std::invalid_argument
{
public:
    /// what() has the details in quotes; empty details are left out.
    explicit WrongByteDataException(const QString& details);
};
