#include "simplecrypt.h"

#include "crypt/cipherstream_p.h"
#include "crypt/cryptheader_p.h"
#include "crypt/cryptlimits_p.h"
#include "crypt/integrity_p.h"
#include "crypt/sha1_p.h"
#include "logging/zelassert.h"
#include "random.h"

#include <QDebug>
#include <QtEndian>

#include <limits>

namespace
{

constexpr int s_compressionLevel = 9;

// The length in front of compressed data, four bytes that an attacker may have chosen, is what
// qUncompress() allocates at first. Deflate makes at most 1032 bytes of one.
QByteArray uncompress(QByteArray payload)
{
    constexpr qint64 mostOfOneByte = 1032;
    if (payload.size() > int(sizeof(quint32))) {
        const qint64 stated = qFromBigEndian<quint32>(payload.constData());
        const qint64 possible = payload.size() * mostOfOneByte;
        if (stated > possible && stated <= std::numeric_limits<int>::max())
            qToBigEndian(static_cast<quint32>(possible), payload.data());
    }
    return qUncompress(payload);
}

QString fromUtf8(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size()); // also what follows a NUL
}

} // namespace

SimpleCrypt::SimpleCrypt(quint64 key)
{
    setKey(key);
}

void SimpleCrypt::setKey(quint64 key)
{
    m_key = key;
    splitKey();
}

void SimpleCrypt::splitKey()
{
    m_keyParts.resize(sizeof m_key);
    qToLittleEndian(m_key, m_keyParts.data());
}

QByteArray SimpleCrypt::encryptToByteArray(const QByteArray& plaintext)
{
    const auto fail = [this](const char* message, Error error) {
        qWarning() << "QByteArray SimpleCrypt::encryptToByteArray(const QByteArray&)" << message;
        m_lastError = error;
        return QByteArray();
    };
    if (m_keyParts.isEmpty())
        return fail("No key set.", CryptKeyMissing);
    if (plaintext.size() > cryptlimits::largestInMemory_B)
        return fail("Too many bytes", CryptFileAccess);
    int flags = settingFlags();
    QByteArray payload = plaintext;
    if (m_compressionMode != CompressionOff) {
        const QByteArray compressed = qCompress(plaintext, s_compressionLevel);
        if (m_compressionMode == CompressionForced || compressed.size() < plaintext.size()) {
            payload = compressed;
            flags |= FlagCompressed;
        }
    }
    if (m_protectionMode == ProtectionChecksum)
        flags |= FlagChecksum;
    else if (m_protectionMode == ProtectionSha1)
        flags |= FlagSha1;

    QByteArray cyphertext = header(flags);
    const int bodyStart = cyphertext.size();
    cyphertext.reserve(bodyStart + 1 + integrity::size(flags) + payload.size());
    cyphertext += leadByte();
    cyphertext += integrity::of(flags, payload.constData(), payload.size());
    cyphertext += payload;
    if (!m_plainPayload)
        CipherStream(m_keyParts)
            .encipher(cyphertext.data() + bodyStart, cyphertext.size() - bodyStart);
    m_lastError = CryptNoError;
    return cyphertext;
}

QByteArray SimpleCrypt::encryptToByteArray(const QString& plaintext)
{
    return encryptToByteArray(plaintext.toUtf8());
}

QString SimpleCrypt::encryptToString(const QByteArray& plaintext)
{
    return QString::fromLatin1(encryptToByteArray(plaintext).toBase64());
}

QString SimpleCrypt::encryptToString(const QString& plaintext)
{
    return encryptToString(plaintext.toUtf8());
}

QByteArray SimpleCrypt::decryptToByteArray(const QByteArray& cyphertext)
{
    const auto fail = [](const char* message) {
        qWarning() << "QByteArray SimpleCrypt::decryptToByteArray(const QByteArray&)" << message;
        return QByteArray();
    };
    if (m_keyParts.isEmpty()) {
        m_lastError = CryptKeyMissing;
        return fail("No key set.");
    }
    if (cyphertext.size() <= cryptheader::shortSize)
        return fail("Too few bytes");
    if (!checkVersion(cyphertext)) {
        m_lastError = CryptBadVersion;
        return fail("Invalid version or not a cyphertext.");
    }
    const int flags = cryptheader::flags(cyphertext);
    const std::optional<qint64> headerSize = this->headerSize(cyphertext);
    if ((flags & FlagPlain) != 0)
        m_plainPayload = true;
    if (!headerSize)
        m_lastError = CryptIntegrityMismatch;
    if (!headerSize || *headerSize > cyphertext.size())
        return fail("Not enough bytes to remove.");
    return takePayload(cyphertext.mid(static_cast<int>(*headerSize)), flags);
}

QByteArray SimpleCrypt::decryptToByteArray(const QString& cyphertext)
{
    return decryptToByteArray(QByteArray::fromBase64(cyphertext.toLatin1()));
}

QString SimpleCrypt::decryptToString(const QByteArray& cyphertext)
{
    return fromUtf8(decryptToByteArray(cyphertext));
}

QString SimpleCrypt::decryptToString(const QString& cyphertext)
{
    return fromUtf8(decryptToByteArray(cyphertext));
}

// What is left of the body when it has been deciphered, checked and uncompressed.
QByteArray SimpleCrypt::takePayload(QByteArray body, int flags)
{
    if (!m_plainPayload)
        CipherStream(m_keyParts).decipher(body.data(), body.size());
    const int payloadStart = 1 + integrity::size(flags);
    const QByteArray field = body.mid(1, payloadStart - 1);
    body.remove(0, payloadStart);
    if (integrity::of(flags, body.constData(), body.size()) != field) {
        m_lastError = CryptIntegrityMismatch;
        return QByteArray();
    }
    m_lastError = CryptNoError;
    return (flags & FlagCompressed) != 0 ? uncompress(body) : body;
}

bool SimpleCrypt::checkVersion(const QByteArray& data) const
{
    if (data.isEmpty())
        printAssertMsg("data.size()>0", "Data size to get version is empty", __FILE__, __LINE__);
    const int version = cryptheader::version(data);
    return version == 3 || version == 4;
}

qint64 SimpleCrypt::getMetadataSize(const QByteArray& data)
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
    if (metadataStr.isEmpty())
        printAssertMsg("metadataStr.size()>0", "Empty string provided", __FILE__, __LINE__);
    return cryptheader::metadataHeader(metadataStr.toLocal8Bit());
}

QString SimpleCrypt::getMetadata(const QByteArray& data)
{
    const auto fail = [](const char* message) {
        qWarning() << "QString SimpleCrypt::getMetadata(const QByteArray&)" << message;
        return QString();
    };
    const qint64 size = getMetadataSize(data);
    if (data.size() < cryptheader::metadataOffset)
        return fail("not enough bytes to get hash of metadata");
    const QByteArray hash = data.mid(cryptheader::metadataHashOffset, SHA1_SIZE);
    const QByteArray metadata =
        data.mid(cryptheader::metadataOffset, static_cast<int>(qMax(size, qint64(0))));
    if (Sha1::of(metadata) != hash)
        return fail("metadata hash check is not valid");
    return QString::fromLatin1(metadata.constData(), metadata.size());
}

QByteArray SimpleCrypt::convertInt32ToQByteArray(int value)
{
    QByteArray bytes(sizeof(qint32), '\0');
    qToLittleEndian<qint32>(value, bytes.data());
    return bytes;
}

int SimpleCrypt::convertQByteArrayToInt32(const QByteArray& bytes)
{
    const QByteArray four = bytes.leftJustified(sizeof(qint32), '\0');
    return qFromLittleEndian<qint32>(four.constData());
}

QByteArray SimpleCrypt::getHeaderForCompleteBackup() const
{
    if (m_protectionMode == ProtectionChecksum)
        printAssertMsg("", "ProtectionChecksum is not allowed in this mode", __FILE__, __LINE__);
    const bool hasHash = m_protectionMode == ProtectionSha1;
    const int flags = settingFlags() | (hasHash ? FlagSha1 : 0);
    const QByteArray header = cryptheader::start(flags) + metadataBlock() + '0';
    return hasHash ? header + Sha1::of("not valid hash") : header;
}

char SimpleCrypt::leadByte() const
{
    return m_randomCharEnabled ? utils::randomTypeDistributed<char, 0, 127>() : '\xff';
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
    return getMetadataHeader(m_metadata) + m_metadata.toLocal8Bit();
}

// The number of bytes in front of the body; nothing when it would be negative or the metadata
// would end before they begin. The end of the data is not looked at.
std::optional<qint64> SimpleCrypt::headerSize(const QByteArray& start)
{
    if ((cryptheader::flags(start) & FlagMetadata) == 0)
        return cryptheader::shortSize;
    const qint64 metadataSize = getMetadataSize(start);
    return metadataSize < 0 ? std::nullopt
                            : std::optional(cryptheader::metadataOffset + metadataSize);
}
