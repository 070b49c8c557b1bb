#pragma once

#include <QByteArray>
#include <QString>

struct FileContent
{
    QByteArray bytes;
    QString error; ///< path and reason; empty when all of the file is in `bytes`
    bool exists;
};

/// A hundred times what any file has that a machine is configured by.
constexpr qint64 largestTextFile = qint64(16) * 1024 * 1024;

/// Reads a regular file of at most `limit` bytes. Anything else is an error: a pipe would wait for
/// its writer.
FileContent readFile(const QString& path, qint64 limit = largestTextFile);
/// Reads what standard input holds until it ends.
FileContent readStandardInput(qint64 limit);
/// Why the path is no file that could be read; empty when it is one. A link is followed.
QString whyUnreadable(const QString& path);
