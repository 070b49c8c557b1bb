// The header of a cyphertext: what is written into it, and what bytes and files say there.

#include "simplecrypt.h"

#include "crypt/cryptexception_p.h"
#include "crypt/cryptheader_p.h"
#include "crypt/cryptlimits_p.h"
#include "crypt/sha1_p.h"
#include "logging/zelassert.h"

#include <QDebug>
#include <QFile>

#include <limits>

namespace
{

// For the operations that keep no record: nothing when memory runs out.
template <typename Operation>
auto orNothing(const Operation& operation) -> decltype(operation())
{
    try {
        return operation();
    } catch (const std::exception&) {
        return {};
    }
}

const char* const s_getMetadata = "QString SimpleCrypt::getMetadata(const QByteArray&)";

// Where less was read than a header needs: why, or that it is no header.
SimpleCrypt::Failure failureOf(const QFile& file)
{
    if (file.error() != QFileDevice::NoError)
        return {SimpleCrypt::CryptFileAccess, file.fileName(), file.errorString()};
    return {SimpleCrypt::CryptIntegrityMismatch, file.fileName(), {}};
}

// Whether the metadata have the hash that the header states, found out in chunks: a forged length
// must not cost memory. Leaves the file where it was.
bool isHashOf(QFile& file, qint64 size, const QByteArray& start)
{
    const qint64 before = file.pos();
    Sha1 hash;
    for (qint64 left = size; left > 0;) {
        const QByteArray chunk = file.read(qMin(left, qint64(cryptlimits::chunkSize_B)));
        hash.add(chunk.constData(), chunk.size());
        left = chunk.isEmpty() ? 0 : left - chunk.size();
    }
    return file.seek(before) && hash.result() == cryptheader::metadataHash(start);
}

} // namespace

bool SimpleCrypt::checkVersion(const QByteArray& data) const
{
    return orNothing([&] {
        if (data.isEmpty())
            printAssertMsg("data.size()>0", "Data size to get version is empty", __FILE__,
                           __LINE__);
        const int version = cryptheader::version(data);
        return version == 3 || version == 4;
    });
}

qint64 SimpleCrypt::getMetadataSize(const QByteArray& data)
{
    return orNothing([&] { return statedMetadataSize(data); });
}

qint64 SimpleCrypt::statedMetadataSize(const QByteArray& data)
{
    if (cryptheader::version(data) != 4) {
        m_lastError = CryptBadVersion;
        qWarning() << "qint64 SimpleCrypt::getMetadataSize(const QByteArray&)"
                   << "Invalid version or not a cyphertext.";
        return 0;
    }
    if ((cryptheader::flags(data) & FlagMetadata) == 0)
        return 0;
    if (data.size() < cryptheader::metadataHashOffset) {
        qWarning() << "Not enough bytes to get metadata size";
        return 0;
    }
    const std::optional<qint32> size = cryptheader::metadataSize(data);
    if (!size)
        qWarning() << "Metadata size is corrupted";
    return size.value_or(0);
}

QByteArray SimpleCrypt::getMetadataHeader(const QString& metadataStr) const
{
    return orNothing([&] { return metadataHeader(metadataStr); });
}

QByteArray SimpleCrypt::metadataHeader(const QString& metadata)
{
    if (metadata.isEmpty())
        printAssertMsg("metadataStr.size()>0", "Empty string provided", __FILE__, __LINE__);
    return cryptheader::metadataHeader(metadata.toLocal8Bit());
}

QString SimpleCrypt::getMetadata(const QByteArray& data)
{
    return guarded(QString(), [&] {
        const auto fail = [this](const char* message) {
            qWarning() << s_getMetadata << message;
            m_failure.code = CryptIntegrityMismatch;
            return QString();
        };
        const qint64 size = statedMetadataSize(data);
        if (data.size() < cryptheader::metadataOffset)
            return fail("not enough bytes to get hash of metadata");
        const qint64 present = qMin(size, qint64(data.size() - cryptheader::metadataOffset));
        const QByteArray metadata =
            QByteArray::fromRawData(data.constData() + cryptheader::metadataOffset,
                                    static_cast<int>(qMax(present, qint64(0))));
        if (Sha1::of(metadata) != cryptheader::metadataHash(data))
            return fail("metadata hash check is not valid");
        return QString::fromLatin1(metadata.constData(), metadata.size());
    });
}

QByteArray SimpleCrypt::convertInt32ToQByteArray(int value)
{
    return orNothing([&] { return cryptheader::int32Bytes(value); });
}

int SimpleCrypt::convertQByteArrayToInt32(const QByteArray& bytes)
{
    return cryptheader::int32At(bytes, 0);
}

QByteArray SimpleCrypt::getHeaderForCompleteBackup() const
{
    return orNothing([&] {
        if (m_protectionMode == ProtectionChecksum)
            printAssertMsg("", "ProtectionChecksum is not allowed in this mode", __FILE__,
                           __LINE__);
        const bool hasHash = m_protectionMode == ProtectionSha1;
        const int flags = settingFlags() | (hasHash ? FlagSha1 : 0);
        const QByteArray header = cryptheader::start(flags) + metadataBlock() + '0';
        return hasHash ? header + Sha1::of("not valid hash") : header;
    });
}

// The flags that stand whatever becomes of the payload.
int SimpleCrypt::settingFlags() const
{
    return (m_metadata.isEmpty() ? 0 : FlagMetadata) | (m_plainPayload ? FlagPlain : 0);
}

QByteArray SimpleCrypt::header(int flags) const
{
    const QByteArray start = cryptheader::start(flags);
    return m_metadata.isEmpty() ? start : start + metadataBlock();
}

QByteArray SimpleCrypt::metadataBlock() const
{
    return metadataHeader(m_metadata) + m_metadata.toLocal8Bit();
}

// The number of bytes in front of the body; nothing when it would be negative or the metadata
// would end before they begin. The end of the data is not looked at.
std::optional<qint64> SimpleCrypt::headerSize(const QByteArray& start)
{
    if ((cryptheader::flags(start) & FlagMetadata) == 0)
        return cryptheader::shortSize;
    const qint64 metadataSize = statedMetadataSize(start);
    return metadataSize < 0 ? std::nullopt
                            : std::optional(cryptheader::metadataOffset + metadataSize);
}

int SimpleCrypt::getHeaderLength(const QString& path)
{
    return guarded(-1, [&] { return headerLength(path); });
}

int SimpleCrypt::headerLength(const QString& path)
{
    const char* const signature = "int SimpleCrypt::getHeaderLength(QString)";
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_lastError = CryptFileAccess;
        m_failure = failureOf(file);
        qWarning() << signature << "could not open file" << path;
        return -1;
    }
    const QByteArray start = file.read(cryptheader::metadataOffset);
    if (start.size() < cryptheader::shortSize) {
        m_failure = failureOf(file);
        qWarning() << signature << "File to small to get metadata";
        return -1;
    }
    const int flags = cryptheader::flags(start);
    const std::optional<qint64> size = headerSize(start);
    const qint64 length = size.value_or(0) + 1 + ((flags & FlagSha1) != 0 ? SHA1_SIZE : 0);
    // Longer metadata than the file are forged; one that is cut within them may be still growing.
    if (!size || *size - cryptheader::metadataOffset > file.size() ||
        length > std::numeric_limits<int>::max()) {
        m_failure = {CryptIntegrityMismatch, path, {}};
        qWarning() << signature << "Metadata size is corrupted";
        return -1;
    }
    return static_cast<int>(length);
}

QString SimpleCrypt::getMetadataFromFile(const QString& path)
{
    return guarded(QString(), [&] { return metadataFromFile(path); });
}

QString SimpleCrypt::metadataFromFile(const QString& path)
{
    const auto warning = [] {
        return qWarning() << "QString SimpleCrypt::getMetadataFromFile(const QString&)";
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_lastError = CryptFileAccess;
        m_failure = failureOf(file);
        warning() << "metadata hash check is not valid"; // what the readers of the logs know
        return QString();
    }
    const QByteArray start = file.read(cryptheader::metadataOffset);
    if (start.size() < cryptheader::shortSize) {
        m_failure = failureOf(file);
        warning() << "File to small to get metadata";
        return QString();
    }
    if ((cryptheader::flags(start) & FlagMetadata) == 0) {
        warning() << "This file has no metadata flag enabled";
        return QString();
    }
    const qint64 size = statedMetadataSize(start);
    if (size <= 0) {
        m_failure = {CryptIntegrityMismatch, path, {}};
        warning() << "metadataSize is :" << size;
        return QString();
    }
    if (start.size() == cryptheader::metadataOffset && !isHashOf(file, size, start)) {
        m_failure = {CryptIntegrityMismatch, path, {}};
        qWarning() << s_getMetadata << "metadata hash check is not valid";
        return QString();
    }
    const qint64 count = qMin(qMin(size, file.bytesAvailable()), cryptlimits::largestMetadata_B);
    QString metadata = getMetadata(start + file.read(count));
    if (m_failure.code != CryptNoError)
        m_failure.path = path;
    return metadata;
}

int SimpleCrypt::getDataHashOffset(const QString& path)
{
    return getMetadataFromFile(path).size() + cryptheader::metadataOffset + 1;
}
