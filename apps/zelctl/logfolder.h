#pragma once

#include "logentry.h"
#include <zeltools/filedescriptor.h>

#include <QStringList>

#include <memory>
#include <vector>

#include <sys/stat.h>

/// A log file and its predecessors. Any of them may be missing.
struct LogSeries
{
    LogKind kind;
    QString path; ///< of the live file
};

/// An open file of a series.
struct OpenLog
{
    QString path;
    int number = 0; ///< 0 is the live file, a higher number an older one
    bool isArchive = false;
    int descriptor = -1;
    std::shared_ptr<const zeltools::FileDescriptor> owner; ///< of the descriptor
    struct stat status = {};
};

/// Finds the series of a folder, and of its folders "debug" and "events" or "logs/debug" and
/// "logs/events". A series without a file is left out, unless `areAllKinds` and there is a file of
/// another kind in its folder.
std::vector<LogSeries> findLogSeries(const QString& folder, bool areAllKinds);

/// Opens the files of a series, oldest first. The files stay the same when the machine rotates
/// them. A file that cannot be opened is left out; the first one, with the reason, is the result,
/// which is empty otherwise.
QString openLogs(const LogSeries& series, std::vector<OpenLog>& logs);
