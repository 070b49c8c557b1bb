#pragma once

#include <QDateTime>
#include <QString>

/// The state of one log file, see LogManager::fileHealth(). A file fails while it cannot be opened,
/// written or rotated, and it is healthy as soon as a line has been written without a fault.
struct LogFileHealth
{
    /// False while the file fails.
    bool isHealthy = true;
    QDateTime failingSince; ///< The local time; invalid while the file is healthy.
    /// The step that fails and the system's text, for example "Opening failed: No such file or
    /// directory". Empty while the file is healthy.
    QString reason;
    /// The number of lines of this process that never reached the file, over all failures.
    qint64 linesNotWritten = 0;
};
