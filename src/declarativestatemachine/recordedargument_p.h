#pragma once

#include <zeltools/declarativestatemachine/machinerecording.h>

namespace zeltools::declarativestatemachine
{

/// The argument as a recording keeps it: an integer or a floating-point number of another size
/// becomes one of the types that are kept.
MachineRecording::Argument recordedArgument(const QVariant& value);

/// Whether recordedArgument() would keep the value as it is.
bool isKeptAsItIs(const QVariant& value);

/// The words of an argument in the text of a recording, such as `int 5`.
QByteArray argumentText(const MachineRecording::Argument& argument);

/// Reads the second word of an argument whose first word is the type. Returns an invalid value if
/// they do not fit.
QVariant argumentValue(const QByteArray& type, const QByteArray& word, bool isQuoted);

/// Decodes UTF-8 and keeps a byte order mark at its beginning.
QString fromUtf8(const QByteArray& bytes);

} // namespace zeltools::declarativestatemachine
