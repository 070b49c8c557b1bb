#pragma once

#include "simplecrypt.h"

#include <QByteArray>
#include <QString>

#include <optional>

class CryptFiles;

/// Reads cyphertexts for a SimpleCrypt, in memory and from file to file. Success and cyphertexts
/// that are refused are recorded in its outcome; all other failures are exceptions. A cyphertext
/// that is not enciphered changes the settings, as SimpleCrypt::setPlainPayload() documents. The
/// constructor already resets the protection that was checked.
class CryptDecoder
{
public:
    CryptDecoder(SimpleCrypt::Settings& settings, SimpleCrypt::Outcome& outcome);

    QByteArray decrypt(const QByteArray& cyphertext);
    bool decryptFile(const QString& inputPath, const QString& outputPath,
                     const SimpleCrypt::Progress& progress);

private:
    bool hasKey(const char* signature);
    bool isReadable(const QByteArray& start, const char* signature);
    std::optional<qint64> bodyOffset(const QByteArray& start, qint64 size);
    bool decryptStream(CryptFiles& files, int flags, const SimpleCrypt::Progress& progress);
    QByteArray payloadOf(QByteArray body, int flags);

    SimpleCrypt::Settings& m_settings;
    SimpleCrypt::Outcome& m_outcome;
};
