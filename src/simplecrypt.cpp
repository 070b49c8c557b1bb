#include "simplecrypt.h"

#include "crypt/cipherstream_p.h"
#include "crypt/cryptexception_p.h"
#include "crypt/cryptheader_p.h"
#include "crypt/cryptlimits_p.h"
#include "crypt/integrity_p.h"
#include "random.h"

#include <QDebug>
#include <QtEndian>

#include <limits>

#include <string.h>

namespace
{

constexpr int s_compressionLevel = 9;

// qCompress() returns an empty array when it has no memory, and never else.
QByteArray compress(const QByteArray& payload)
{
    QByteArray compressed = qCompress(payload, s_compressionLevel);
    if (compressed.isEmpty())
        throw std::bad_alloc();
    return compressed;
}

// The length in front of compressed data, four bytes that an attacker may have chosen, is what
// qUncompress() allocates at first. Deflate makes at most 1032 bytes of one. Qt 5 refuses what is
// larger than its arrays, Qt 6 tries to allocate it.
QByteArray uncompress(QByteArray payload)
{
    constexpr qint64 mostOfOneByte = 1032;
    if (payload == QByteArray(sizeof(quint32), '\0')) // nothing, compressed
        return QByteArray();
    if (payload.size() > int(sizeof(quint32))) {
        const qint64 stated = qFromBigEndian<quint32>(payload.constData());
        const qint64 possible = payload.size() * mostOfOneByte;
        if (stated > std::numeric_limits<int>::max()) {
            qWarning("qUncompress: Input data is corrupted");
            throw CryptException({SimpleCrypt::CryptIntegrityMismatch, {}, {}});
        }
        if (stated > possible)
            qToBigEndian(static_cast<quint32>(possible), payload.data());
        // qUncompress() takes missing memory for damage; this throws where there is too little.
        if (stated <= SimpleCrypt::largestInMemory_B)
            const QByteArray room(static_cast<int>(qMin(stated, possible)), Qt::Uninitialized);
    }
    QByteArray result = qUncompress(payload);
    if (result.isNull())
        throw CryptException({SimpleCrypt::CryptIntegrityMismatch, {}, {}});
    return result;
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

SimpleCrypt::~SimpleCrypt()
{
    explicit_bzero(&m_key, sizeof m_key);
    explicit_bzero(m_keyParts.data(), m_keyParts.size());
}

void SimpleCrypt::splitKey()
{
    qToLittleEndian(m_key, m_keyParts.data());
    m_hasKey = true;
}

QByteArray SimpleCrypt::encryptToByteArray(const QByteArray& plaintext)
{
    return guarded(QByteArray(), [&] { return encrypt(plaintext); });
}

QByteArray SimpleCrypt::encrypt(const QByteArray& plaintext)
{
    const auto warn = [](const char* message) {
        qWarning() << "QByteArray SimpleCrypt::encryptToByteArray(const QByteArray&)" << message;
    };
    if (!m_hasKey) {
        warn("No key set.");
        return refuse(CryptKeyMissing);
    }
    if (plaintext.size() > SimpleCrypt::largestInMemory_B) {
        warn("Too many bytes");
        throw CryptException({CryptFileAccess, {}, cryptlimits::tooLarge()});
    }
    int flags = settingFlags();
    QByteArray payload = plaintext;
    if (m_compressionMode != CompressionOff) {
        const QByteArray compressed = compress(plaintext);
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
    return guarded(QByteArray(), [&] { return encrypt(plaintext.toUtf8()); });
}

QString SimpleCrypt::encryptToString(const QByteArray& plaintext)
{
    return guarded(QString(), [&] { return QString::fromLatin1(encrypt(plaintext).toBase64()); });
}

QString SimpleCrypt::encryptToString(const QString& plaintext)
{
    return guarded(QString(),
                   [&] { return QString::fromLatin1(encrypt(plaintext.toUtf8()).toBase64()); });
}

QByteArray SimpleCrypt::decryptToByteArray(const QByteArray& cyphertext)
{
    return guarded(QByteArray(), [&] { return decrypt(cyphertext); });
}

QByteArray SimpleCrypt::decrypt(const QByteArray& cyphertext)
{
    const auto warn = [](const char* message) {
        qWarning() << "QByteArray SimpleCrypt::decryptToByteArray(const QByteArray&)" << message;
    };
    m_checkedProtection = ProtectionOff;
    if (!m_hasKey) {
        warn("No key set.");
        return refuse(CryptKeyMissing);
    }
    if (cyphertext.size() <= cryptheader::shortSize) {
        warn("Too few bytes");
        m_failure.code = CryptIntegrityMismatch;
        return QByteArray();
    }
    if (!checkVersion(cyphertext)) {
        warn("Invalid version or not a cyphertext.");
        return refuse(CryptBadVersion);
    }
    const int flags = cryptheader::flags(cyphertext);
    const std::optional<qint64> headerSize = this->headerSize(cyphertext);
    if ((flags & FlagPlain) != 0)
        m_plainPayload = true;
    if (!headerSize || *headerSize > cyphertext.size()) {
        warn("Not enough bytes to remove.");
        m_failure.code = CryptIntegrityMismatch;
        return headerSize ? QByteArray() : refuse(CryptIntegrityMismatch);
    }
    return takePayload(cyphertext.mid(static_cast<int>(*headerSize)), flags);
}

QByteArray SimpleCrypt::decryptToByteArray(const QString& cyphertext)
{
    return guarded(QByteArray(),
                   [&] { return decrypt(QByteArray::fromBase64(cyphertext.toLatin1())); });
}

QString SimpleCrypt::decryptToString(const QByteArray& cyphertext)
{
    return guarded(QString(), [&] { return fromUtf8(decrypt(cyphertext)); });
}

QString SimpleCrypt::decryptToString(const QString& cyphertext)
{
    return guarded(QString(), [&] {
        return fromUtf8(decrypt(QByteArray::fromBase64(cyphertext.toLatin1())));
    });
}

// What is left of the body when it has been deciphered, checked and uncompressed.
QByteArray SimpleCrypt::takePayload(QByteArray body, int flags)
{
    if (!m_plainPayload)
        CipherStream(m_keyParts).decipher(body.data(), body.size());
    const int payloadStart = 1 + integrity::size(flags);
    const QByteArray field = body.mid(1, payloadStart - 1);
    body.remove(0, payloadStart);
    if (integrity::of(flags, body.constData(), body.size()) != field)
        return refuse(CryptIntegrityMismatch);
    if ((flags & FlagCompressed) != 0)
        body = uncompress(std::move(body));
    m_lastError = CryptNoError;
    m_checkedProtection = integrity::protection(flags);
    return body;
}

// The result of an operation that the input or the settings do not allow.
QByteArray SimpleCrypt::refuse(Error code)
{
    m_failure.code = code;
    m_lastError = code;
    return QByteArray();
}

char SimpleCrypt::leadByte() const
{
    return m_randomCharEnabled ? utils::randomTypeDistributed<char, 0, 127>() : '\xff';
}
