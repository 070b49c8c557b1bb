#pragma once

#include <QByteArray>

/// The compression of payloads: the length of the original, four bytes with the highest first, and
/// a zlib stream. Both functions throw std::bad_alloc if memory runs out; uncompress() reports
/// this as damage if the length is above SimpleCrypt::largestInMemory_B.
namespace compression
{

QByteArray compress(const QByteArray& payload);
/// Throws a CryptException with CryptIntegrityMismatch if the payload is damaged. A forged length
/// costs no more memory than the stream can expand to.
QByteArray uncompress(QByteArray payload);

} // namespace compression
