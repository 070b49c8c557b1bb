#pragma once

#include <QString>
#include <QtGlobal>

namespace cryptlimits
{

/// What the streamed operations read at a time.
constexpr int chunkSize_B = 0x100000;
/// How the system says that something is larger than that.
inline QString tooLarge()
{
    return QStringLiteral("File too large");
}
/// Longer ones are forged.
constexpr qint64 largestMetadata_B = qint64(1024) * 1024 * 1024;

} // namespace cryptlimits
