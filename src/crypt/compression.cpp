#include "crypt/compression_p.h"

#include "crypt/cryptexception_p.h"

#include <QtEndian>

#include <limits>

namespace
{

constexpr int s_level = 9;
constexpr int s_lengthSize_B = sizeof(quint32);
constexpr qint64 s_largestExpansion = 1032; // of one byte, by deflate

// qUncompress() first allocates the stated length, which an attacker may have chosen. The function
// limits that length to what the payload can expand to. Qt 5 refuses a length that exceeds its
// arrays, Qt 6 tries to allocate it.
void limitStatedLength(QByteArray& payload)
{
    const qint64 stated = qFromBigEndian<quint32>(payload.constData());
    const qint64 possible = payload.size() * s_largestExpansion;
    if (stated > std::numeric_limits<int>::max()) {
        qWarning("qUncompress: Input data is corrupted");
        throw CryptException({SimpleCrypt::CryptIntegrityMismatch, {}, {}});
    }
    if (stated > possible)
        qToBigEndian(static_cast<quint32>(possible), payload.data());
    // qUncompress() reports missing memory as damage; this allocation throws instead.
    if (stated <= SimpleCrypt::largestInMemory_B)
        (void)QByteArray(static_cast<int>(qMin(stated, possible)), Qt::Uninitialized);
}

} // namespace

namespace compression
{

// qCompress() returns an empty array only if memory runs out.
QByteArray compress(const QByteArray& payload)
{
    QByteArray compressed = qCompress(payload, s_level);
    if (compressed.isEmpty())
        throw std::bad_alloc();
    return compressed;
}

QByteArray uncompress(QByteArray payload)
{
    if (payload == QByteArray(s_lengthSize_B, '\0')) // an empty original
        return QByteArray();
    if (payload.size() > s_lengthSize_B)
        limitStatedLength(payload);
    QByteArray result = qUncompress(payload);
    if (result.isNull())
        throw CryptException({SimpleCrypt::CryptIntegrityMismatch, {}, {}});
    return result;
}

} // namespace compression
