#pragma once

#include <QByteArray>
#include <QString>

struct FileContent
{
    QByteArray bytes;
    QString error; ///< path and reason; empty when all of the file is in `bytes`
    bool exists;
};

/// A hundred times the size of the largest configuration file of a machine.
constexpr qint64 largestTextFile = qint64(16) * 1024 * 1024;

/// Opens a regular file for reading. Returns the descriptor; or -1, with path and reason in `error`
/// and the number of the error in `errno`.
int openFile(const QString& path, QString& error);
/// Reads a regular file of at most `limit` bytes. Anything else is an error: a pipe would wait for
/// its writer.
FileContent readFile(const QString& path, qint64 limit = largestTextFile);
/// Reads the standard input to its end.
FileContent readStandardInput(qint64 limit);
/// The reason why the path is not a readable file, or an empty text. A link is followed.
QString whyUnreadable(const QString& path);
