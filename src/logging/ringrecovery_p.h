#pragma once

#include "logging/logrecovery.h"

class LogFileSet;
class SinkList;

/// Writes the lines that processes have left in their rings when they were killed. Each line
/// reaches its log file once, even if a recovery is killed, too; the line that was being printed
/// on standard error may appear there twice.
namespace ringrecovery
{

/// The folders of rings, where they are memory-backed.
QStringList memoryFolders();

/// Recovers all rings in `ringFolders` of ended processes whose log files lie in `logFolder` or
/// below it. The log files must not be open in this process, except those of `openFiles`.
LogRecovery recover(const QString& logFolder, const QStringList& ringFolders, SinkList& sinks,
                    LogFileSet* openFiles = nullptr);

} // namespace ringrecovery
