#include "crypt/cryptheader_p.h"

#include "crypt/byteorder_p.h"
#include "crypt/digest.h"
#include "logging/zelassert.h"

namespace cryptheader
{

namespace
{

constexpr char s_writtenVersion = 4;
constexpr int s_complementOffset = shortestSize_B + sizeof(qint32);

} // namespace

QByteArray versionAndFlags(int flags)
{
    const char bytes[shortestSize_B]{s_writtenVersion, static_cast<char>(flags)};
    return QByteArray(bytes, shortestSize_B);
}

QByteArray metadataFields(const QByteArray& metadata)
{
    return byteorder::bytesOf(metadata.size()) + byteorder::bytesOf(~metadata.size()) +
           zeltools::Digest::of(metadata, QCryptographicHash::Sha1);
}

int version(const QByteArray& data)
{
    return byteorder::byteAt(data, 0);
}

bool isReadable(const QByteArray& data)
{
    if (data.isEmpty())
        printAssertMsg("data.size()>0", "Data size to get version is empty", __FILE__, __LINE__);
    return version(data) == 3 || version(data) == s_writtenVersion;
}

int flags(const QByteArray& data)
{
    return byteorder::byteAt(data, 1);
}

std::optional<qint32> metadataSize(const QByteArray& data)
{
    const qint32 size = byteorder::int32At(data, shortestSize_B);
    const qint32 complement = byteorder::int32At(data, s_complementOffset);
    return complement == ~size ? std::optional(size) : std::nullopt;
}

QByteArray metadataHash(const QByteArray& data)
{
    return data.mid(metadataHashOffset, metadataOffset - metadataHashOffset);
}

} // namespace cryptheader
