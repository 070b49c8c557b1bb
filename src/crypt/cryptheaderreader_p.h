#pragma once

#include "simplecrypt.h"

#include <QByteArray>
#include <QString>

#include <optional>

class QFile;

/// Answers the questions of SimpleCrypt about the header of bytes and files. It logs the warnings
/// and records the failures in the outcome of the SimpleCrypt.
class CryptHeaderReader
{
public:
    explicit CryptHeaderReader(SimpleCrypt::Outcome& outcome);

    /// The results of the functions with these names in SimpleCrypt.
    qint64 metadataSize(const QByteArray& data);
    QString metadata(const QByteArray& data);
    int headerLength(const QString& path);
    QString metadataFromFile(const QString& path);

    /// The offset of the body, which may be beyond the end of the data; empty if the stated length
    /// of the metadata is negative. Needs the bytes in front of the metadata.
    std::optional<qint64> bodyOffset(const QByteArray& start);

private:
    bool open(QFile& file);
    QByteArray readStart(QFile& file, const char* signature);
    QString refuseMetadata(const char* message);

    SimpleCrypt::Outcome& m_outcome;
};
