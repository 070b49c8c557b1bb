#pragma once

#include "simplecrypt.h"

#include <QByteArray>
#include <QString>

class CryptFiles;

/// Writes cyphertexts with the settings of a SimpleCrypt, in memory and from file to file. Refused
/// input and success are recorded in its outcome; all other failures are exceptions.
class CryptEncoder
{
public:
    /// Whether a streamed file may end too early, in the way that encryptFileSmart() documents.
    enum class Tail { Lost, Kept };

    CryptEncoder(const SimpleCrypt::Settings& settings, SimpleCrypt::Outcome& outcome);

    QByteArray encrypt(const QByteArray& plaintext);
    bool encryptFile(const QString& inputPath, const QString& outputPath, Tail tail,
                     const SimpleCrypt::Progress& progress);

    /// The results of SimpleCrypt::getHeaderForCompleteBackup() and getMetadataHeader().
    static QByteArray backupHeader(const SimpleCrypt::Settings& settings);
    static QByteArray metadataHeader(const QString& metadata);

private:
    static int flagsOf(const SimpleCrypt::Settings& settings);
    QByteArray header(int flags) const;
    char leadByte() const;
    void encryptStream(CryptFiles& files, Tail tail, const SimpleCrypt::Progress& progress);

    const SimpleCrypt::Settings& m_settings;
    SimpleCrypt::Outcome& m_outcome;
};
