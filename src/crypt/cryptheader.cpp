#include "crypt/cryptheader_p.h"

#include "crypt/sha1_p.h"
#include "simplecrypt.h"

#include <QtEndian>

namespace
{

constexpr char s_writtenVersion = 4;

int byteAt(const QByteArray& data, int offset)
{
    return offset < data.size() ? static_cast<quint8>(data.at(offset)) : 0;
}

} // namespace

static_assert(cryptheader::shortSize == SimpleCrypt::shortestHeader_B &&
              cryptheader::metadataOffset == SimpleCrypt::shortestStreamed_B);

namespace cryptheader
{

QByteArray start(int flags)
{
    const char bytes[shortSize]{s_writtenVersion, static_cast<char>(flags)};
    return QByteArray(bytes, shortSize);
}

QByteArray metadataHeader(const QByteArray& metadata)
{
    return int32Bytes(metadata.size()) + int32Bytes(~metadata.size()) + Sha1::of(metadata);
}

QByteArray int32Bytes(qint32 value)
{
    QByteArray bytes(sizeof value, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

qint32 int32At(const QByteArray& data, int offset)
{
    quint32 value = 0;
    for (int i = sizeof value - 1; i >= 0; --i)
        value = value << 8 | static_cast<quint32>(byteAt(data, offset + i));
    return static_cast<qint32>(value);
}

int version(const QByteArray& data)
{
    return byteAt(data, 0);
}

int flags(const QByteArray& data)
{
    return byteAt(data, 1);
}

std::optional<qint32> metadataSize(const QByteArray& data)
{
    const qint32 size = int32At(data, shortSize);
    const qint32 complement = int32At(data, 6);
    return complement == ~size ? std::optional(size) : std::nullopt;
}

QByteArray metadataHash(const QByteArray& data)
{
    return data.mid(metadataHashOffset, SHA1_SIZE);
}

} // namespace cryptheader
