#include "crypt/cryptheader_p.h"

#include "crypt/sha1_p.h"
#include "simplecrypt.h"

namespace
{

constexpr char s_writtenVersion = 4;

int byteAt(const QByteArray& data, int offset)
{
    return offset < data.size() ? static_cast<quint8>(data.at(offset)) : 0;
}

} // namespace

namespace cryptheader
{

QByteArray start(int flags)
{
    const char bytes[shortSize]{s_writtenVersion, static_cast<char>(flags)};
    return QByteArray(bytes, shortSize);
}

QByteArray metadataHeader(const QByteArray& metadata)
{
    return SimpleCrypt::convertInt32ToQByteArray(metadata.size()) +
           SimpleCrypt::convertInt32ToQByteArray(~metadata.size()) + Sha1::of(metadata);
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
    const qint32 size = SimpleCrypt::convertQByteArrayToInt32(data.mid(2, 4));
    const qint32 complement = SimpleCrypt::convertQByteArrayToInt32(data.mid(6, 4));
    return complement == ~size ? std::optional(size) : std::nullopt;
}

} // namespace cryptheader
