#pragma once

#include "logarchive.h"
#include "logfolder.h"

#include <memory>

/// The bytes of a series of log files, oldest file first. At the end of the live file it can wait
/// for what the machine adds, and then goes on with the new live file after a rotation, and with
/// all files between the two.
class LogSource
{
public:
    explicit LogSource(const LogSeries& series);

    /// Opens all files that can be opened.
    void open();
    /// Starts at the end of the live file, and otherwise like open().
    void openAtEnd();
    /// Whether nothing has been added behind the bytes that were read, and no file was rotated.
    bool isAtEnd() const;

    /// Returns the number of bytes that were read; 0 at the end of the file.
    qint64 read(char* to, qint64 size);
    /// Goes on with the next file, at the end of one. Returns whether there is one.
    bool openNext();
    /// Goes on with what came after the live file. Returns whether there is something to read.
    bool openSuccessors();

    QString path() const;
    /// The first file that could not be opened, or read to its end, with the reason; or an empty
    /// text.
    QString error() const { return m_error; }

private:
    const OpenLog* current() const;
    void startArchive();
    bool startWith(const std::vector<OpenLog>& logs);
    void keepError(const QString& error);

    const LogSeries m_series;
    std::vector<OpenLog> m_logs;
    size_t m_index = 0;
    std::unique_ptr<LogArchive> m_archive;
    OpenLog m_former; ///< the live file until the last rotation
    QString m_error;
};
