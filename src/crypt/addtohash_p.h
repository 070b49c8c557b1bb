#pragma once

#include <QByteArray>
#include <QCryptographicHash>

#include <algorithm>

namespace zeltools
{

/// Adds any number of bytes to a hash of Qt, which takes fewer than 2 GiB at once. The limit is
/// that of one piece.
inline void addToHash(QCryptographicHash& hash, const char* bytes, qint64 size_B,
                      qint64 limit_B = 1 << 30)
{
    for (qint64 done_B = 0; done_B < size_B; done_B += limit_B) {
        const auto piece_B = static_cast<int>(std::min(limit_B, size_B - done_B));
        hash.addData(QByteArray::fromRawData(bytes + done_B, piece_B));
    }
}

} // namespace zeltools
