#include "crypt/cryptdecoder_p.h"

#include "crypt/cipherstream_p.h"
#include "crypt/compression_p.h"
#include "crypt/cryptexception_p.h"
#include "crypt/cryptfiles_p.h"
#include "crypt/cryptheader_p.h"
#include "crypt/cryptheaderreader_p.h"
#include "crypt/digest.h"
#include "crypt/integrity_p.h"
#include "logging/zelassert.h"

#include <QDebug>

#include <utility>

namespace
{

const char* const s_decryptBytes = "QByteArray SimpleCrypt::decryptToByteArray(const QByteArray&)";
const char* const s_decryptFile =
    "bool SimpleCrypt::decryptFileSmart(const QString&, const QString&)";

// Compares the SHA-1 behind the lead byte with that of the payload.
bool isIntact(const QByteArray& leadAndHash, const QByteArray& found)
{
    if (leadAndHash.size() != 1 + SHA1_SIZE)
        printAssertMsg("randomCharAndIntegrity.size()==SHA1_SIZE+1",
                       "Integrity field size not right", __FILE__, __LINE__);
    const QByteArray expected = leadAndHash.right(SHA1_SIZE);
    if (found == expected)
        return true;
    qWarning() << s_decryptFile << "hashExpected!=hash.result" << expected.toHex() << found.toHex();
    return false;
}

QByteArray readStart(CryptFiles& files)
{
    QByteArray start = files.read(cryptheader::metadataOffset);
    if (start.size() == cryptheader::metadataOffset)
        return start;
    qWarning() << s_decryptFile << "Too few bytes";
    const SimpleCrypt::Failure failure = files.inputFailure();
    if (failure.systemError.isEmpty())
        files.emptyOutput();
    throw CryptException(failure);
}

} // namespace

CryptDecoder::CryptDecoder(SimpleCrypt::Settings& settings, SimpleCrypt::Outcome& outcome)
    : m_settings(settings)
    , m_outcome(outcome)
{
    m_outcome.checkedProtection = SimpleCrypt::ProtectionOff;
}

QByteArray CryptDecoder::decrypt(const QByteArray& cyphertext)
{
    if (!hasKey(s_decryptBytes))
        return QByteArray();
    if (cyphertext.size() <= cryptheader::shortestSize_B) {
        qWarning() << s_decryptBytes << "Too few bytes";
        m_outcome.failure.code = SimpleCrypt::CryptIntegrityMismatch;
        return QByteArray();
    }
    if (!isReadable(cyphertext, s_decryptBytes))
        return QByteArray();
    const std::optional<qint64> offset = bodyOffset(cyphertext, cyphertext.size());
    if (offset)
        return payloadOf(cyphertext.mid(static_cast<int>(*offset)), cryptheader::flags(cyphertext));
    qWarning() << s_decryptBytes << "Not enough bytes to remove.";
    return QByteArray();
}

bool CryptDecoder::hasKey(const char* signature)
{
    if (m_settings.hasKey)
        return true;
    qWarning() << signature << "No key set.";
    return m_outcome.refuse(SimpleCrypt::CryptKeyMissing);
}

bool CryptDecoder::isReadable(const QByteArray& start, const char* signature)
{
    if (cryptheader::isReadable(start))
        return true;
    qWarning() << signature << "Invalid version or not a cyphertext.";
    return m_outcome.refuse(SimpleCrypt::CryptBadVersion);
}

// The offset of the body in data of this size. If there is none, the failure is recorded.
std::optional<qint64> CryptDecoder::bodyOffset(const QByteArray& start, qint64 size)
{
    const std::optional<qint64> offset = CryptHeaderReader(m_outcome).bodyOffset(start);
    if ((cryptheader::flags(start) & SimpleCrypt::FlagPlain) != 0)
        m_settings.isPlain = true;
    if (offset && *offset <= size)
        return offset;
    m_outcome.failure.code = SimpleCrypt::CryptIntegrityMismatch;
    if (!offset)
        m_outcome.lastError = SimpleCrypt::CryptIntegrityMismatch;
    return std::nullopt;
}

// Deciphers the body, checks its integrity field and uncompresses the payload behind that.
QByteArray CryptDecoder::payloadOf(QByteArray body, int flags)
{
    if (!m_settings.isPlain)
        CipherStream(m_settings.keyParts).decipher(body.data(), body.size());
    const int payloadStart = 1 + integrity::fieldSize(flags);
    const QByteArray field = body.mid(1, payloadStart - 1);
    body.remove(0, payloadStart);
    if (integrity::field(flags, body.constData(), body.size()) != field) {
        m_outcome.refuse(SimpleCrypt::CryptIntegrityMismatch);
        return QByteArray();
    }
    if ((flags & SimpleCrypt::FlagCompressed) != 0)
        body = compression::uncompress(std::move(body));
    m_outcome.succeed(integrity::protection(flags));
    return body;
}

bool CryptDecoder::decryptFile(const QString& inputPath, const QString& outputPath,
                               const SimpleCrypt::Progress& progress)
{
    if (!hasKey(s_decryptFile))
        return false;
    CryptFiles files(inputPath, outputPath);
    const SimpleCrypt::Failure failure = files.open();
    if (failure.code != SimpleCrypt::CryptNoError)
        throw CryptException(failure);
    const QByteArray start = readStart(files);
    if (!isReadable(start, s_decryptFile)) {
        files.emptyOutput();
        return false;
    }
    const int flags = cryptheader::flags(start);
    if ((flags & (SimpleCrypt::FlagChecksum | SimpleCrypt::FlagCompressed)) != 0) {
        files.seekInput(0);
        files.writeResult([this](const QByteArray& bytes) { return decrypt(bytes); });
        return true;
    }
    const std::optional<qint64> offset = bodyOffset(start, files.inputSize());
    if (!offset) {
        qWarning() << s_decryptFile << "Not enough bytes to remove metadata and header.";
        files.emptyOutput();
        return false;
    }
    files.seekInput(*offset);
    return decryptStream(files, flags, progress);
}

bool CryptDecoder::decryptStream(CryptFiles& files, int flags,
                                 const SimpleCrypt::Progress& progress)
{
    const bool hasHash = (flags & SimpleCrypt::FlagSha1) != 0;
    const qint64 size = files.inputSize() - files.inputPosition();
    QByteArray chunk = CryptFiles::chunkBuffer();
    QByteArray prefix;
    CipherStream cipher(m_settings.keyParts);
    zeltools::Digest hash(QCryptographicHash::Sha1);
    qint64 read = 0;
    do {
        chunk.resize(0);
        files.readChunk(chunk);
        if (chunk.isEmpty() && read < size)
            throw CryptException(files.inputFailure());
        const int count = chunk.size();
        if (!m_settings.isPlain)
            cipher.decipher(chunk.data(), count);
        if (read == 0) {
            prefix = chunk.left(1 + integrity::fieldSize(flags));
            chunk.remove(0, prefix.size());
        }
        files.write(chunk);
        if (hasHash)
            hash.add(chunk.constData(), chunk.size());
        read += count;
        if (progress)
            progress(read, size);
    } while (read < size);
    files.syncOutput();
    if (hasHash && !isIntact(prefix, hash.result()))
        return m_outcome.refuse(SimpleCrypt::CryptIntegrityMismatch);
    m_outcome.succeed(integrity::protection(flags));
    return true;
}
