#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>

namespace zeltools
{

/// Returns UTF-8 without control characters: bytes that are not UTF-8, control characters outside
/// ASCII, and the ASCII characters that `isPlain` refuses have the form "\x1b". The text can be
/// decoded again if `isPlain` refuses the backslash.
ZELTOOLS_EXPORT QByteArray escapedUtf8(const QByteArray& bytes, bool (*isPlain)(char ascii));

} // namespace zeltools
