#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>
#include <QStringList>

/// The lines that ended processes have left in the rings of buffered delivery.
struct ZELTOOLS_EXPORT LogRecovery
{
    quint64 linesCount = 0; ///< The lines that were written to their files.
    QStringList problems;   ///< A text for each ring that could not be recovered; such rings stay.

    /// Writes the lines of all ended processes whose log files lie in the folder or below it. Lines
    /// that have no file, since LogManager::enableLogToFile() was off, go to standard error. Each
    /// line reaches its file once, even if this process or an earlier recovery is killed. Rings of
    /// running processes are left alone.
    ///
    /// LogManager::initialize() does this by itself. The function is for programs that have no
    /// LogManager. It looks for rings where LogDelivery::ringFolder says that they are by default,
    /// and in `ringFolders`. It blocks while it writes; one thread at a time may call it.
    static LogRecovery run(const QString& logFolder, const QStringList& ringFolders = {});
};
