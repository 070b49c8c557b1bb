// The operations of SimpleCrypt on files.

#include "simplecrypt.h"

#include "crypt/cipherstream_p.h"
#include "crypt/cryptheader_p.h"
#include "crypt/cryptlimits_p.h"
#include "crypt/sha1_p.h"
#include "logging/zelassert.h"
#include "system.h"

#include <QDebug>
#include <QFile>

#include <limits>

#include <sys/stat.h>

namespace
{

using cryptlimits::chunkSize_B;

const SimpleCrypt::Progress s_noProgress = [](qint64, qint64) {};

bool isSameFile(const QFile& open, const QString& path)
{
    struct stat one = {};
    struct stat other = {};
    return fstat(open.handle(), &one) == 0 && S_ISREG(one.st_mode) &&
           stat(QFile::encodeName(path).constData(), &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

// What cannot be read costs no other file its content: the output is emptied last. Unbuffered, as
// the chunks are larger than any buffer.
bool openBoth(QFile& input, QFile& output)
{
    return input.open(QIODevice::ReadOnly | QIODevice::Unbuffered) &&
           !isSameFile(input, output.fileName()) &&
           output.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
}

// Appends up to a chunk; nothing at the end of the file. False when reading fails.
bool readChunk(QFile& input, QByteArray& chunk)
{
    const int start = chunk.size();
    chunk.resize(start + chunkSize_B);
    const qint64 count = input.read(chunk.data() + start, chunkSize_B);
    chunk.resize(start + static_cast<int>(qMax(count, qint64(0))));
    return count >= 0;
}

// What the size says is only a hint: a file of /proc has none.
bool readWhole(QFile& input, QByteArray& bytes)
{
    bytes.reserve(static_cast<int>(qMin(input.size(), cryptlimits::largestInMemory_B)) +
                  chunkSize_B);
    int before = -1;
    while (bytes.size() > before && bytes.size() <= cryptlimits::largestInMemory_B) {
        before = bytes.size();
        if (!readChunk(input, bytes))
            return false;
    }
    return bytes.size() <= cryptlimits::largestInMemory_B;
}

bool writeChunk(QFile& output, const QByteArray& chunk)
{
    return output.write(chunk) == chunk.size() && output.flush();
}

QByteArray chunkBuffer()
{
    QByteArray chunk;
    chunk.reserve(chunkSize_B + 1 + SHA1_SIZE);
    return chunk;
}

} // namespace

bool SimpleCrypt::processFile(const QString& inputPath, const QString& outputPath,
                              QByteArray (SimpleCrypt::*operation)(const QByteArray&))
{
    QFile input(inputPath);
    QFile output(outputPath);
    if (!openBoth(input, output))
        return false;
    QByteArray bytes;
    if (!readWhole(input, bytes)) {
        m_lastError = CryptFileAccess;
        return true;
    }
    const QByteArray result = (this->*operation)(bytes);
    if (!writeChunk(output, result))
        m_lastError = CryptFileAccess;
    System::syncFile(output);
    return true;
}

bool SimpleCrypt::encryptFile(const QString& inputPath, const QString& outputPath)
{
    return processFile(inputPath, outputPath, &SimpleCrypt::encryptToByteArray);
}

bool SimpleCrypt::decryptFile(const QString& inputPath, const QString& outputPath)
{
    return processFile(inputPath, outputPath, &SimpleCrypt::decryptToByteArray);
}

bool SimpleCrypt::encryptFileSmart(const QString& inputPath, const QString& outputPath,
                                   const Progress& progress)
{
    QFile input(inputPath);
    QFile output(outputPath);
    Error error = CryptNoError;
    if (!openBoth(input, output)) {
        error = CryptFileAccess;
    } else if (m_compressionMode == CompressionForced) {
        error = CryptCompressionUnsupported;
    } else if (m_protectionMode == ProtectionChecksum) {
        qWarning() << "bool SimpleCrypt::encryptFileSmart(const QString&, const QString&)"
                   << "The computation of checksum is not allowed.";
        error = CryptChecksumUnsupported;
    } else {
        error = encryptStream(input, output, progress ? progress : s_noProgress);
    }
    if (error != CryptNoError)
        m_lastError = error;
    return error == CryptNoError;
}

SimpleCrypt::Error SimpleCrypt::encryptStream(QFile& input, QFile& output, const Progress& progress)
{
    const qint64 size = input.size();
    const bool hasHash = m_protectionMode == ProtectionSha1;
    const qint64 total = hasHash ? 2 * size : size;
    QByteArray chunk = chunkBuffer();
    QByteArray prefix(1, leadByte());
    if (hasHash && size > 0) {
        Sha1 hash;
        do {
            chunk.resize(0);
            if (!readChunk(input, chunk))
                return CryptFileAccess;
            hash.add(chunk.constData(), chunk.size());
            progress(qMin(input.pos(), size), total);
        } while (!chunk.isEmpty());
        prefix += hash.result();
        input.seek(0);
    }
    if (!writeChunk(output, header(settingFlags() | (hasHash ? FlagSha1 : 0))))
        return CryptFileAccess;

    CipherStream cipher(m_keyParts);
    // Counts the prefix against the size of the input, so that a file little larger than some
    // chunks loses its tail: the layout that the other side expects.
    for (qint64 written = 0; written < size; written += chunk.size()) {
        chunk.resize(0);
        if (written == 0)
            chunk += prefix;
        const int start = chunk.size();
        if (!readChunk(input, chunk) || chunk.size() == start) // or it became shorter meanwhile
            return CryptFileAccess;
        if (!m_plainPayload)
            cipher.encipher(chunk.data(), chunk.size());
        if (!writeChunk(output, chunk))
            return CryptFileAccess;
        progress(total - size + qMin(input.pos(), size), total);
    }
    System::syncFile(output);
    return CryptNoError;
}

bool SimpleCrypt::decryptFileSmart(const QString& inputPath, const QString& outputPath,
                                   const Progress& progress)
{
    const auto fail = [](const char* message) {
        qWarning() << "bool SimpleCrypt::decryptFileSmart(const QString&, const QString&)"
                   << message;
        return false;
    };
    if (m_keyParts.isEmpty()) {
        m_lastError = CryptKeyMissing;
        return fail("No key set.");
    }
    QFile input(inputPath);
    QFile output(outputPath);
    if (!openBoth(input, output)) {
        m_lastError = CryptFileAccess;
        return false;
    }
    const QByteArray start = input.read(cryptheader::metadataOffset);
    if (start.size() < cryptheader::metadataOffset) {
        m_lastError = CryptFileAccess;
        return fail("Too few bytes");
    }
    if (!checkVersion(start)) {
        m_lastError = CryptBadVersion;
        return fail("Invalid version or not a cyphertext.");
    }
    const int flags = cryptheader::flags(start);
    if ((flags & (FlagChecksum | FlagCompressed)) != 0) {
        input.close();
        output.close();
        return decryptFile(inputPath, outputPath);
    }
    const std::optional<qint64> headerSize = this->headerSize(start);
    if ((flags & FlagPlain) != 0)
        m_plainPayload = true;
    if (!headerSize)
        m_lastError = CryptIntegrityMismatch;
    if (!headerSize || input.size() < *headerSize)
        return fail("Not enough bytes to remove metadata and header.");
    input.seek(*headerSize);
    m_lastError = decryptStream(input, output, flags, progress ? progress : s_noProgress);
    return m_lastError == CryptNoError;
}

SimpleCrypt::Error SimpleCrypt::decryptStream(QFile& input, QFile& output, int flags,
                                              const Progress& progress)
{
    const bool hasHash = (flags & FlagSha1) != 0;
    const qint64 size = input.size() - input.pos();
    QByteArray chunk = chunkBuffer();
    QByteArray prefix;
    CipherStream cipher(m_keyParts);
    Sha1 hash;
    qint64 read = 0;
    do {
        chunk.resize(0);
        if (!readChunk(input, chunk) || (chunk.isEmpty() && read < size))
            return CryptFileAccess;
        const int count = chunk.size();
        if (!m_plainPayload)
            cipher.decipher(chunk.data(), count);
        if (read == 0) {
            prefix = chunk.left(hasHash ? 1 + SHA1_SIZE : 1);
            chunk.remove(0, prefix.size());
        }
        if (!writeChunk(output, chunk))
            return CryptFileAccess;
        if (hasHash)
            hash.add(chunk.constData(), chunk.size());
        read += count;
        progress(read, size);
    } while (read < size);
    System::syncFile(output);
    if (!hasHash)
        return CryptNoError;

    if (prefix.size() != SHA1_SIZE + 1)
        printAssertMsg("randomCharAndIntegrity.size()==SHA1_SIZE+1",
                       "Integrity field size not right", __FILE__, __LINE__);
    const QByteArray expected = prefix.right(SHA1_SIZE);
    const QByteArray found = hash.result();
    if (found == expected)
        return CryptNoError;
    qWarning() << "bool SimpleCrypt::decryptFileSmart(const QString&, const QString&)"
               << "hashExpected!=hash.result" << expected.toHex() << found.toHex();
    return CryptIntegrityMismatch;
}

int SimpleCrypt::getHeaderLength(const QString& path)
{
    const char* const signature = "int SimpleCrypt::getHeaderLength(QString)";
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_lastError = CryptFileAccess;
        qWarning() << signature << "could not open file" << path;
        return -1;
    }
    const QByteArray start = file.read(cryptheader::metadataOffset);
    if (start.size() < cryptheader::shortSize) {
        qWarning() << signature << "File to small to get metadata";
        return -1;
    }
    const int flags = cryptheader::flags(start);
    const std::optional<qint64> size = headerSize(start);
    // Short of metadata, a file that is too short for its header is one that is not yet written.
    const qint64 length = size.value_or(0) + 1 + ((flags & FlagSha1) != 0 ? SHA1_SIZE : 0);
    if (!size || (*size > cryptheader::metadataOffset && *size > file.size()) ||
        length > std::numeric_limits<int>::max()) {
        qWarning() << signature << "Metadata size is corrupted";
        return -1;
    }
    return static_cast<int>(length);
}

QString SimpleCrypt::getMetadataFromFile(const QString& path)
{
    const auto warning = [] {
        return qWarning() << "QString SimpleCrypt::getMetadataFromFile(const QString&)";
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_lastError = CryptFileAccess;
        warning() << "metadata hash check is not valid"; // what the readers of the logs know
        return QString();
    }
    const QByteArray start = file.read(cryptheader::metadataOffset);
    if (start.size() < cryptheader::shortSize) {
        warning() << "File to small to get metadata";
        return QString();
    }
    if ((cryptheader::flags(start) & FlagMetadata) == 0) {
        warning() << "This file has no metadata flag enabled";
        return QString();
    }
    const qint64 size = getMetadataSize(start);
    if (size <= 0) {
        warning() << "metadataSize is :" << size;
        return QString();
    }
    // read() allocates all at once; less than the metadata fails the check of the hash.
    const qint64 count = qMin(qMin(size, file.size()), cryptlimits::largestMetadata_B);
    return getMetadata(start + file.read(count));
}

int SimpleCrypt::getDataHashOffset(const QString& path)
{
    return getMetadataFromFile(path).size() + cryptheader::metadataOffset + 1;
}
