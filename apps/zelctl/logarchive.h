#pragma once

#include <QProcess>

/// Unpacks a log file that tar and gzip have packed, by means of tar, piece by piece.
class LogArchive
{
public:
    /// The descriptor must stay open until the object is destroyed.
    explicit LogArchive(int descriptor);
    /// Ends tar if it still runs.
    ~LogArchive();
    Q_DISABLE_COPY(LogArchive)

    /// Waits for bytes and returns their number; 0 at the end, also of a damaged archive.
    qint64 read(char* to, qint64 size);
    /// Why the archive could not be read to its end, or an empty text. Valid at the end.
    QString error() const { return m_error; }

private:
    QProcess m_tar;
    QString m_error;
};
