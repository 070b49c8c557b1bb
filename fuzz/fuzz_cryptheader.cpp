// Calls each header query with arbitrary bytes, as an array and as a file, and with the same bytes
// behind a valid header.

#include "fuzz.h"
#include <zeltools/simplecrypt.h>

#include <sys/mman.h>
#include <unistd.h>

namespace
{

QString fileWith(const QByteArray& bytes)
{
    static const int file = memfd_create("fuzz", MFD_CLOEXEC);
    require(ftruncate(file, 0) == 0 &&
            pwrite(file, bytes.constData(), static_cast<size_t>(bytes.size()), 0) == bytes.size());
    return QStringLiteral("/proc/self/fd/%1").arg(file);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceWarnings();
    const QByteArray bytes = toBytes(data, size);
    SimpleCrypt crypt(1);
    if (!bytes.isEmpty())
        crypt.checkVersion(bytes); // an assertion fails on an empty array
    const qint64 metadataSize = crypt.getMetadataSize(bytes);
    const QString metadata = crypt.getMetadata(bytes);
    require(metadata.isEmpty() ||
            metadata.size() <= metadataSize); // fewer if the data ends earlier
    const QString path = fileWith(bytes);
    require(crypt.getMetadataFromFile(path) == metadata);
    require(crypt.getDataHashOffset(path) == 31 + metadata.size());
    require(crypt.getHeaderLength(path) <= bytes.size() + 51);

    QString text;
    for (const char character : bytes)
        text += QChar(character & 0x7f);
    if (text.isEmpty())
        return 0;
    crypt.setMetadata(text);
    const QByteArray good = crypt.getHeaderForCompleteBackup() + bytes;
    require(crypt.getMetadata(good) == text);
    require(crypt.getHeaderLength(fileWith(good)) == good.size() - bytes.size());
    return 0;
}
