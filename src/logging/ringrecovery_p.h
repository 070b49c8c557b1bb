#pragma once

#include <QString>
#include <QStringList>

class LogFileSet;
class SinkList;

/// Writes the lines that processes have left in their rings when they were killed. Each line
/// reaches its log file once, even if a recovery is killed, too; the line that was being printed
/// on standard error may appear there twice.
namespace ringrecovery
{

struct Report
{
    quint64 linesCount = 0;
    QStringList problems; ///< A text for each ring that could not be recovered.
};

/// The folders of rings, where they are memory-backed.
QStringList memoryFolders();

/// Recovers all rings in `ringFolders` of ended processes whose log files lie in `logFolder` or
/// below it. The log files must not be open in this process, except those of `openFiles`.
Report recover(const QString& logFolder, const QStringList& ringFolders, SinkList& sinks,
               LogFileSet* openFiles = nullptr);

} // namespace ringrecovery
