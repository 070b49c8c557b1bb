#include "crypt/cryptencoder_p.h"

#include "crypt/cipherstream_p.h"
#include "crypt/compression_p.h"
#include "crypt/cryptexception_p.h"
#include "crypt/cryptfiles_p.h"
#include "crypt/cryptheader_p.h"
#include "crypt/digest.h"
#include "crypt/integrity_p.h"
#include "logging/zelassert.h"
#include "random.h"

#include <QDebug>

using zeltools::Digest;

namespace
{

// Computes the SHA-1 of a file, in the first of the two passes over it.
QByteArray hashOf(CryptFiles& files, qint64 total_B, const SimpleCrypt::Progress& progress)
{
    const qint64 size = files.inputSize();
    QByteArray chunk = CryptFiles::chunkBuffer();
    Digest hash(QCryptographicHash::Sha1);
    do {
        chunk.resize(0);
        files.readChunk(chunk);
        hash.add(chunk.constData(), chunk.size());
        if (progress)
            progress(qMin(files.inputPosition(), size), total_B);
    } while (!chunk.isEmpty());
    files.seekInput(0);
    return hash.result();
}

QByteArray metadataBlock(const QString& metadata)
{
    return CryptEncoder::metadataHeader(metadata) + metadata.toLocal8Bit();
}

} // namespace

CryptEncoder::CryptEncoder(const SimpleCrypt::Settings& settings, SimpleCrypt::Outcome& outcome)
    : m_settings(settings)
    , m_outcome(outcome)
{
}

QByteArray CryptEncoder::encrypt(const QByteArray& plaintext)
{
    const char* const signature = "QByteArray SimpleCrypt::encryptToByteArray(const QByteArray&)";
    if (!m_settings.hasKey) {
        qWarning() << signature << "No key set.";
        m_outcome.refuse(SimpleCrypt::CryptKeyMissing);
        return QByteArray();
    }
    if (plaintext.size() > SimpleCrypt::largestInMemory_B) {
        qWarning() << signature << "Too many bytes";
        throw CryptException::tooLarge(QString());
    }
    int flags = flagsOf(m_settings);
    QByteArray payload = plaintext;
    if (m_settings.compression != SimpleCrypt::CompressionOff) {
        const QByteArray compressed = compression::compress(plaintext);
        if (m_settings.compression == SimpleCrypt::CompressionForced ||
            compressed.size() < plaintext.size()) {
            payload = compressed;
            flags |= SimpleCrypt::FlagCompressed;
        }
    }
    QByteArray cyphertext = header(flags);
    const int bodyStart = cyphertext.size();
    cyphertext.reserve(bodyStart + 1 + integrity::fieldSize(flags) + payload.size());
    cyphertext += leadByte();
    cyphertext += integrity::field(flags, payload.constData(), payload.size());
    cyphertext += payload;
    if (!m_settings.isPlain)
        CipherStream(m_settings.keyParts)
            .encipher(cyphertext.data() + bodyStart, cyphertext.size() - bodyStart);
    m_outcome.lastError = SimpleCrypt::CryptNoError;
    return cyphertext;
}

bool CryptEncoder::encryptFile(const QString& inputPath, const QString& outputPath, Tail tail,
                               const SimpleCrypt::Progress& progress)
{
    CryptFiles files(inputPath, outputPath);
    const SimpleCrypt::Failure failure = files.open();
    if (failure.code != SimpleCrypt::CryptNoError)
        throw CryptException(failure);
    if (m_settings.compression == SimpleCrypt::CompressionForced) {
        files.emptyOutput();
        return m_outcome.refuse(SimpleCrypt::CryptCompressionUnsupported);
    }
    if (m_settings.protection == SimpleCrypt::ProtectionChecksum) {
        qWarning() << "bool SimpleCrypt::encryptFileSmart(const QString&, const QString&)"
                   << "The computation of checksum is not allowed.";
        files.emptyOutput();
        return m_outcome.refuse(SimpleCrypt::CryptChecksumUnsupported);
    }
    encryptStream(files, tail, progress);
    return true;
}

void CryptEncoder::encryptStream(CryptFiles& files, Tail tail,
                                 const SimpleCrypt::Progress& progress)
{
    const qint64 size = files.inputSize();
    const bool hasHash = m_settings.protection == SimpleCrypt::ProtectionSha1;
    const qint64 total = hasHash ? 2 * size : size;
    const QByteArray header = this->header(flagsOf(m_settings));
    QByteArray chunk = CryptFiles::chunkBuffer();
    chunk += leadByte();
    if (hasHash && (size > 0 || tail == Tail::Kept))
        chunk += hashOf(files, total, progress);
    files.write(header);

    CipherStream cipher(m_settings.keyParts);
    // The condition compares a count that includes the bytes in front of the payload with the size
    // of the input, so a file that is little larger than some chunks loses its tail. Other programs
    // expect this layout.
    for (qint64 written = 0; tail == Tail::Kept || written < size; chunk.resize(0)) {
        const int start = chunk.size();
        files.readChunk(chunk);
        const bool isEnd = chunk.size() == start;
        if (isEnd && files.inputPosition() < size) // the file has become shorter meanwhile
            throw CryptException(files.inputFailure());
        if (!m_settings.isPlain)
            cipher.encipher(chunk.data(), chunk.size());
        files.write(chunk);
        written += chunk.size();
        if (progress)
            progress(total - size + qMin(files.inputPosition(), size), total);
        if (isEnd)
            break;
    }
    files.syncOutput();
}

QByteArray CryptEncoder::backupHeader(const SimpleCrypt::Settings& settings)
{
    if (settings.protection == SimpleCrypt::ProtectionChecksum)
        printAssertMsg("", "ProtectionChecksum is not allowed in this mode", __FILE__, __LINE__);
    const int flags = flagsOf(settings) & ~SimpleCrypt::FlagChecksum;
    QByteArray header =
        cryptheader::versionAndFlags(flags) + metadataBlock(settings.metadata) + '0';
    if ((flags & SimpleCrypt::FlagSha1) == 0)
        return header;
    return header + Digest::of("not valid hash", QCryptographicHash::Sha1);
}

QByteArray CryptEncoder::metadataHeader(const QString& metadata)
{
    if (metadata.isEmpty())
        printAssertMsg("metadataStr.size()>0", "Empty string provided", __FILE__, __LINE__);
    return cryptheader::metadataFields(metadata.toLocal8Bit());
}

// All flags but that of the compression, which depends on the payload.
int CryptEncoder::flagsOf(const SimpleCrypt::Settings& settings)
{
    return integrity::flag(settings.protection) |
           (settings.metadata.isEmpty() ? 0 : SimpleCrypt::FlagMetadata) |
           (settings.isPlain ? SimpleCrypt::FlagPlain : 0);
}

QByteArray CryptEncoder::header(int flags) const
{
    const QByteArray start = cryptheader::versionAndFlags(flags);
    return m_settings.metadata.isEmpty() ? start : start + metadataBlock(m_settings.metadata);
}

char CryptEncoder::leadByte() const
{
    return m_settings.isLeadByteRandom ? utils::randomTypeDistributed<char, 0, 127>() : '\xff';
}
