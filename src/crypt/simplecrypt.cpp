#include "simplecrypt.h"

#include "crypt/byteorder_p.h"
#include "crypt/cryptdecoder_p.h"
#include "crypt/cryptencoder_p.h"
#include "crypt/cryptexception_p.h"
#include "crypt/cryptfiles_p.h"
#include "crypt/cryptheader_p.h"
#include "crypt/cryptheaderreader_p.h"

#include <QtEndian>

#include <string.h>

namespace
{

// Writes the result of an operation on the whole input. If a file cannot be opened, lastError()
// does not change.
template <typename Outcome, typename Operation>
bool processFile(Outcome& outcome, const QString& inputPath, const QString& outputPath,
                 const Operation& operation)
{
    return recorded(outcome, [&] {
        CryptFiles files(inputPath, outputPath);
        outcome.failure = files.open();
        if (outcome.failure.code != SimpleCrypt::CryptNoError)
            return false;
        files.writeResult(operation);
        return true;
    });
}

} // namespace

SimpleCrypt::SimpleCrypt(quint64 key)
{
    setKey(key);
}

SimpleCrypt::~SimpleCrypt()
{
    explicit_bzero(&m_settings.key, sizeof m_settings.key);
    explicit_bzero(m_settings.keyParts.data(), m_settings.keyParts.size());
}

void SimpleCrypt::setKey(quint64 key)
{
    m_settings.key = key;
    splitKey();
}

void SimpleCrypt::splitKey()
{
    qToLittleEndian(m_settings.key, m_settings.keyParts.data());
    m_settings.hasKey = true;
}

QByteArray SimpleCrypt::encryptToByteArray(const QByteArray& plaintext)
{
    return recorded(m_outcome,
                    [&] { return CryptEncoder(m_settings, m_outcome).encrypt(plaintext); });
}

QByteArray SimpleCrypt::encryptToByteArray(const QString& plaintext)
{
    return recorded(m_outcome, [&] { return encryptToByteArray(plaintext.toUtf8()); });
}

QString SimpleCrypt::encryptToString(const QByteArray& plaintext)
{
    return recorded(m_outcome,
                    [&] { return QString::fromLatin1(encryptToByteArray(plaintext).toBase64()); });
}

QString SimpleCrypt::encryptToString(const QString& plaintext)
{
    return recorded(m_outcome, [&] { return encryptToString(plaintext.toUtf8()); });
}

QByteArray SimpleCrypt::decryptToByteArray(const QByteArray& cyphertext)
{
    return recorded(m_outcome,
                    [&] { return CryptDecoder(m_settings, m_outcome).decrypt(cyphertext); });
}

QByteArray SimpleCrypt::decryptToByteArray(const QString& cyphertext)
{
    return recorded(m_outcome, [&] {
        return decryptToByteArray(QByteArray::fromBase64(cyphertext.toLatin1()));
    });
}

QString SimpleCrypt::decryptToString(const QByteArray& cyphertext)
{
    return recorded(m_outcome, [&] {
        const QByteArray text = decryptToByteArray(cyphertext);
        return QString::fromUtf8(text.constData(), text.size()); // a NUL does not end it
    });
}

QString SimpleCrypt::decryptToString(const QString& cyphertext)
{
    return recorded(m_outcome,
                    [&] { return decryptToString(QByteArray::fromBase64(cyphertext.toLatin1())); });
}

bool SimpleCrypt::checkVersion(const QByteArray& data) const
{
    return unrecorded([&] { return cryptheader::isReadable(data); });
}

qint64 SimpleCrypt::getMetadataSize(const QByteArray& data)
{
    return unrecorded([&] { return CryptHeaderReader(m_outcome).metadataSize(data); });
}

QByteArray SimpleCrypt::getMetadataHeader(const QString& metadataStr) const
{
    return unrecorded([&] { return CryptEncoder::metadataHeader(metadataStr); });
}

QString SimpleCrypt::getMetadata(const QByteArray& data)
{
    return recorded(m_outcome, [&] { return CryptHeaderReader(m_outcome).metadata(data); });
}

QByteArray SimpleCrypt::convertInt32ToQByteArray(int value)
{
    return unrecorded([&] { return byteorder::bytesOf(value); });
}

int SimpleCrypt::convertQByteArrayToInt32(const QByteArray& bytes)
{
    return byteorder::int32At(bytes, 0);
}

bool SimpleCrypt::encryptFile(const QString& inputPath, const QString& outputPath)
{
    CryptEncoder encoder(m_settings, m_outcome);
    return processFile(m_outcome, inputPath, outputPath,
                       [&](const QByteArray& bytes) { return encoder.encrypt(bytes); });
}

bool SimpleCrypt::decryptFile(const QString& inputPath, const QString& outputPath)
{
    CryptDecoder decoder(m_settings, m_outcome);
    return processFile(m_outcome, inputPath, outputPath,
                       [&](const QByteArray& bytes) { return decoder.decrypt(bytes); });
}

bool SimpleCrypt::encryptFileSmart(const QString& inputPath, const QString& outputPath,
                                   const Progress& progress)
{
    return recorded(m_outcome, [&] {
        return CryptEncoder(m_settings, m_outcome)
            .encryptFile(inputPath, outputPath, CryptEncoder::Tail::Lost, progress);
    });
}

bool SimpleCrypt::encryptFileInChunks(const QString& inputPath, const QString& outputPath,
                                      const Progress& progress)
{
    return recorded(m_outcome, [&] {
        return CryptEncoder(m_settings, m_outcome)
            .encryptFile(inputPath, outputPath, CryptEncoder::Tail::Kept, progress);
    });
}

bool SimpleCrypt::decryptFileSmart(const QString& inputPath, const QString& outputPath,
                                   const Progress& progress)
{
    return recorded(m_outcome, [&] {
        return CryptDecoder(m_settings, m_outcome).decryptFile(inputPath, outputPath, progress);
    });
}

int SimpleCrypt::getHeaderLength(const QString& path)
{
    return recorded(
        m_outcome, [&] { return CryptHeaderReader(m_outcome).headerLength(path); }, -1);
}

QString SimpleCrypt::getMetadataFromFile(const QString& path)
{
    return recorded(m_outcome, [&] { return CryptHeaderReader(m_outcome).metadataFromFile(path); });
}

int SimpleCrypt::getDataHashOffset(const QString& path)
{
    return getMetadataFromFile(path).size() + cryptheader::metadataOffset + 1;
}

QByteArray SimpleCrypt::getHeaderForCompleteBackup() const
{
    return unrecorded([&] { return CryptEncoder::backupHeader(m_settings); });
}
