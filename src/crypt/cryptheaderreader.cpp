#include "crypt/cryptheaderreader_p.h"

#include "crypt/cryptfiles_p.h"
#include "crypt/cryptheader_p.h"
#include "crypt/digest.h"

#include <QDebug>
#include <QFile>

#include <limits>

using zeltools::Digest;

static_assert(cryptheader::shortestSize_B == SimpleCrypt::shortestHeader_B &&
              cryptheader::metadataOffset == SimpleCrypt::shortestStreamed_B);

namespace
{

constexpr qint64 s_largestMetadata_B = qint64(1024) * 1024 * 1024; // longer metadata are forged

// Whether the metadata in a file have the hash that the header states. The function reads them in
// chunks, because a forged length must not cost memory, and does not move the file's position.
bool isHashOf(QFile& file, qint64 size, const QByteArray& start)
{
    const qint64 before = file.pos();
    Digest hash(QCryptographicHash::Sha1);
    for (qint64 left = size; left > 0;) {
        const QByteArray chunk = file.read(qMin(left, qint64(CryptFiles::chunkSize_B)));
        hash.add(chunk.constData(), chunk.size());
        left = chunk.isEmpty() ? 0 : left - chunk.size();
    }
    return file.seek(before) && hash.result() == cryptheader::metadataHash(start);
}

bool hasMetadata(const QByteArray& start)
{
    return (cryptheader::flags(start) & SimpleCrypt::FlagMetadata) != 0;
}

} // namespace

CryptHeaderReader::CryptHeaderReader(SimpleCrypt::Outcome& outcome)
    : m_outcome(outcome)
{
}

qint64 CryptHeaderReader::metadataSize(const QByteArray& data)
{
    if (cryptheader::version(data) != 4) {
        m_outcome.lastError = SimpleCrypt::CryptBadVersion;
        qWarning() << "qint64 SimpleCrypt::getMetadataSize(const QByteArray&)"
                   << "Invalid version or not a cyphertext.";
        return 0;
    }
    if (!hasMetadata(data))
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

QString CryptHeaderReader::metadata(const QByteArray& data)
{
    const qint64 size = metadataSize(data);
    if (data.size() < cryptheader::metadataOffset)
        return refuseMetadata("not enough bytes to get hash of metadata");
    const qint64 present = qMin(size, qint64(data.size() - cryptheader::metadataOffset));
    const QByteArray metadata = QByteArray::fromRawData(
        data.constData() + cryptheader::metadataOffset, static_cast<int>(qMax(present, qint64(0))));
    if (Digest::of(metadata, QCryptographicHash::Sha1) != cryptheader::metadataHash(data))
        return refuseMetadata("metadata hash check is not valid");
    return QString::fromLatin1(metadata.constData(), metadata.size());
}

QString CryptHeaderReader::refuseMetadata(const char* message)
{
    qWarning() << "QString SimpleCrypt::getMetadata(const QByteArray&)" << message;
    m_outcome.failure.code = SimpleCrypt::CryptIntegrityMismatch;
    return QString();
}

std::optional<qint64> CryptHeaderReader::bodyOffset(const QByteArray& start)
{
    if (!hasMetadata(start))
        return cryptheader::shortestSize_B;
    const qint64 size = metadataSize(start);
    return size < 0 ? std::nullopt : std::optional(cryptheader::metadataOffset + size);
}

bool CryptHeaderReader::open(QFile& file)
{
    if (file.open(QIODevice::ReadOnly))
        return true;
    m_outcome.failure = {SimpleCrypt::CryptFileAccess, file.fileName(), file.errorString()};
    m_outcome.lastError = SimpleCrypt::CryptFileAccess;
    return false;
}

// The bytes in front of the metadata; empty if the file has no header.
QByteArray CryptHeaderReader::readStart(QFile& file, const char* signature)
{
    QByteArray start = file.read(cryptheader::metadataOffset);
    if (start.size() >= cryptheader::shortestSize_B)
        return start;
    m_outcome.failure = {SimpleCrypt::CryptIntegrityMismatch, file.fileName(), {}};
    if (file.error() != QFileDevice::NoError)
        m_outcome.failure = {SimpleCrypt::CryptFileAccess, file.fileName(), file.errorString()};
    qWarning() << signature << "File to small to get metadata";
    return QByteArray();
}

int CryptHeaderReader::headerLength(const QString& path)
{
    const char* const signature = "int SimpleCrypt::getHeaderLength(QString)";
    QFile file(path);
    if (!open(file)) {
        qWarning() << signature << "could not open file" << path;
        return -1;
    }
    const QByteArray start = readStart(file, signature);
    if (start.isEmpty())
        return -1;
    const bool hasHash = (cryptheader::flags(start) & SimpleCrypt::FlagSha1) != 0;
    const std::optional<qint64> offset = bodyOffset(start);
    const qint64 length = offset.value_or(0) + 1 + (hasHash ? SHA1_SIZE : 0);
    // Metadata that are longer than the file are forged. A file that ends within its metadata may
    // still be growing.
    if (!offset || *offset - cryptheader::metadataOffset > file.size() ||
        length > std::numeric_limits<int>::max()) {
        m_outcome.failure = {SimpleCrypt::CryptIntegrityMismatch, path, {}};
        qWarning() << signature << "Metadata size is corrupted";
        return -1;
    }
    return static_cast<int>(length);
}

QString CryptHeaderReader::metadataFromFile(const QString& path)
{
    const char* const signature = "QString SimpleCrypt::getMetadataFromFile(const QString&)";
    QFile file(path);
    if (!open(file)) {
        qWarning() << signature << "metadata hash check is not valid"; // known to readers of logs
        return QString();
    }
    const QByteArray start = readStart(file, signature);
    if (start.isEmpty())
        return QString();
    if (!hasMetadata(start)) {
        qWarning() << signature << "This file has no metadata flag enabled";
        return QString();
    }
    const qint64 size = metadataSize(start);
    QString metadata;
    if (size <= 0) {
        m_outcome.failure.code = SimpleCrypt::CryptIntegrityMismatch;
        qWarning() << signature << "metadataSize is :" << size;
    } else if (start.size() == cryptheader::metadataOffset && !isHashOf(file, size, start)) {
        refuseMetadata("metadata hash check is not valid");
    } else {
        metadata = this->metadata(
            start + file.read(qMin(qMin(size, file.bytesAvailable()), s_largestMetadata_B)));
    }
    if (m_outcome.failure.code != SimpleCrypt::CryptNoError)
        m_outcome.failure.path = path;
    return metadata;
}
