// The operations of SimpleCrypt on files.

#include "simplecrypt.h"

#include "crypt/cipherstream_p.h"
#include "crypt/cryptexception_p.h"
#include "crypt/cryptfiles_p.h"
#include "crypt/cryptheader_p.h"
#include "crypt/integrity_p.h"
#include "crypt/sha1_p.h"
#include "logging/zelassert.h"

#include <QDebug>

namespace
{

const SimpleCrypt::Progress s_noProgress = [](qint64, qint64) {};

// The first of the two passes over a file.
QByteArray hashOf(CryptFiles& files, qint64 total_B, const SimpleCrypt::Progress& progress)
{
    const qint64 size = files.inputSize();
    QByteArray chunk = CryptFiles::chunkBuffer();
    Sha1 hash;
    do {
        chunk.resize(0);
        files.readChunk(chunk);
        hash.add(chunk.constData(), chunk.size());
        progress(qMin(files.inputPosition(), size), total_B);
    } while (!chunk.isEmpty());
    files.seekInput(0);
    return hash.result();
}

void warnOfSmart(const char* message)
{
    qWarning() << "bool SimpleCrypt::decryptFileSmart(const QString&, const QString&)" << message;
}

} // namespace

bool SimpleCrypt::processFile(const QString& inputPath, const QString& outputPath,
                              QByteArray (SimpleCrypt::*operation)(const QByteArray&))
{
    return guarded(false, [&] {
        CryptFiles files(inputPath, outputPath);
        m_failure = files.open();
        if (m_failure.code != CryptNoError)
            return false;
        files.write((this->*operation)(files.readWhole()));
        files.syncOutput();
        return true;
    });
}

bool SimpleCrypt::encryptFile(const QString& inputPath, const QString& outputPath)
{
    return processFile(inputPath, outputPath, &SimpleCrypt::encrypt);
}

bool SimpleCrypt::decryptFile(const QString& inputPath, const QString& outputPath)
{
    m_checkedProtection = ProtectionOff; // also where the file cannot even be read
    return processFile(inputPath, outputPath, &SimpleCrypt::decrypt);
}

bool SimpleCrypt::encryptFileSmart(const QString& inputPath, const QString& outputPath,
                                   const Progress& progress)
{
    return encryptInChunks(inputPath, outputPath, Tail::Lost, progress);
}

bool SimpleCrypt::encryptFileInChunks(const QString& inputPath, const QString& outputPath,
                                      const Progress& progress)
{
    return encryptInChunks(inputPath, outputPath, Tail::Kept, progress);
}

bool SimpleCrypt::encryptInChunks(const QString& inputPath, const QString& outputPath, Tail tail,
                                  const Progress& progress)
{
    return guarded(false, [&] {
        CryptFiles files(inputPath, outputPath);
        const Failure failure = files.open();
        if (failure.code != CryptNoError)
            throw CryptException(failure);
        const bool isForced = m_compressionMode == CompressionForced;
        if (isForced || m_protectionMode == ProtectionChecksum) {
            if (!isForced)
                qWarning() << "bool SimpleCrypt::encryptFileSmart(const QString&, const QString&)"
                           << "The computation of checksum is not allowed.";
            files.emptyOutput();
            refuse(isForced ? CryptCompressionUnsupported : CryptChecksumUnsupported);
            return false;
        }
        encryptStream(files, tail, progress ? progress : s_noProgress);
        return true;
    });
}

void SimpleCrypt::encryptStream(CryptFiles& files, Tail tail, const Progress& progress)
{
    const qint64 size = files.inputSize();
    const bool hasHash = m_protectionMode == ProtectionSha1;
    const qint64 total = hasHash ? 2 * size : size;
    const QByteArray header = this->header(settingFlags() | (hasHash ? FlagSha1 : 0));
    QByteArray chunk = CryptFiles::chunkBuffer();
    chunk += leadByte();
    if (hasHash && (size > 0 || tail == Tail::Kept))
        chunk += hashOf(files, total, progress);
    files.write(header);

    CipherStream cipher(m_keyParts);
    // Counts the bytes in front of the payload against the size of the input, so that a file little
    // larger than some chunks loses its tail: the layout that the other side expects.
    for (qint64 written = 0; tail == Tail::Kept || written < size; chunk.resize(0)) {
        const int start = chunk.size();
        files.readChunk(chunk);
        const bool isEnd = chunk.size() == start;
        if (isEnd && files.inputPosition() < size) // it became shorter meanwhile
            throw CryptException(files.inputFailure());
        if (!m_plainPayload)
            cipher.encipher(chunk.data(), chunk.size());
        files.write(chunk);
        written += chunk.size();
        progress(total - size + qMin(files.inputPosition(), size), total);
        if (isEnd)
            break;
    }
    files.syncOutput();
}

bool SimpleCrypt::decryptFileSmart(const QString& inputPath, const QString& outputPath,
                                   const Progress& progress)
{
    return guarded(false, [&] {
        m_checkedProtection = ProtectionOff;
        if (!m_hasKey) {
            warnOfSmart("No key set.");
            refuse(CryptKeyMissing);
            return false;
        }
        CryptFiles files(inputPath, outputPath);
        const Failure failure = files.open();
        if (failure.code != CryptNoError)
            throw CryptException(failure);
        const QByteArray start = files.read(cryptheader::metadataOffset);
        const int flags = cryptheader::flags(start);
        if (!isStart(start, files))
            return false;
        if ((flags & (FlagChecksum | FlagCompressed)) != 0) {
            files.close();
            return decryptFile(inputPath, outputPath);
        }
        return skipHeader(start, files) &&
               decryptStream(files, flags, progress ? progress : s_noProgress);
    });
}

// Whether the bytes can be those of a cyphertext.
bool SimpleCrypt::isStart(const QByteArray& start, CryptFiles& files)
{
    if (start.size() < cryptheader::metadataOffset) {
        warnOfSmart("Too few bytes");
        const Failure failure = files.inputFailure();
        if (failure.systemError.isEmpty())
            files.emptyOutput();
        throw CryptException(failure);
    }
    if (checkVersion(start))
        return true;
    warnOfSmart("Invalid version or not a cyphertext.");
    files.emptyOutput();
    refuse(CryptBadVersion);
    return false;
}

bool SimpleCrypt::skipHeader(const QByteArray& start, CryptFiles& files)
{
    const std::optional<qint64> size = headerSize(start);
    if ((cryptheader::flags(start) & FlagPlain) != 0)
        m_plainPayload = true;
    if (size && *size <= files.inputSize()) {
        files.seekInput(*size);
        return true;
    }
    warnOfSmart("Not enough bytes to remove metadata and header.");
    files.emptyOutput();
    m_failure.code = CryptIntegrityMismatch;
    if (!size)
        m_lastError = CryptIntegrityMismatch;
    return false;
}

bool SimpleCrypt::decryptStream(CryptFiles& files, int flags, const Progress& progress)
{
    const bool hasHash = (flags & FlagSha1) != 0;
    const qint64 size = files.inputSize() - files.inputPosition();
    QByteArray chunk = CryptFiles::chunkBuffer();
    QByteArray prefix;
    CipherStream cipher(m_keyParts);
    Sha1 hash;
    qint64 read = 0;
    do {
        chunk.resize(0);
        files.readChunk(chunk);
        if (chunk.isEmpty() && read < size)
            throw CryptException(files.inputFailure());
        const int count = chunk.size();
        if (!m_plainPayload)
            cipher.decipher(chunk.data(), count);
        if (read == 0) {
            prefix = chunk.left(hasHash ? 1 + SHA1_SIZE : 1);
            chunk.remove(0, prefix.size());
        }
        files.write(chunk);
        if (hasHash)
            hash.add(chunk.constData(), chunk.size());
        read += count;
        progress(read, size);
    } while (read < size);
    files.syncOutput();

    const QByteArray expected = prefix.right(SHA1_SIZE);
    const QByteArray found = hash.result();
    if (hasHash && prefix.size() != SHA1_SIZE + 1)
        printAssertMsg("randomCharAndIntegrity.size()==SHA1_SIZE+1",
                       "Integrity field size not right", __FILE__, __LINE__);
    if (hasHash && found != expected) {
        qWarning() << "bool SimpleCrypt::decryptFileSmart(const QString&, const QString&)"
                   << "hashExpected!=hash.result" << expected.toHex() << found.toHex();
        refuse(CryptIntegrityMismatch);
        return false;
    }
    m_lastError = CryptNoError;
    m_checkedProtection = integrity::protection(flags);
    return true;
}
