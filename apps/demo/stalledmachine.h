#pragma once

#include <QString>
#include <QtGlobal>

/// What a thread of the machine below has done so far.
struct LineAcknowledgement
{
    qint64 count = 0;          ///< of the lines whose call has returned
    qint64 longestWait_ns = 0; ///< of such a call
    qint64 calledAt_ns = 0;    ///< by std::chrono::steady_clock; 0 outside a call
};

constexpr int stalledMachineThreads = 4;

/// The main function of a machine that only logs, in a process of its own: "immediate" or
/// "buffered" logs in several threads for some seconds, and "restart" only starts and ends. A line
/// ends with the numbers of its thread and of the line, such as "line 3 17". Standard output must
/// be a file; it keeps a LineAcknowledgement of each thread, also after a kill.
int runStalledMachine(const QString& mode, const QString& folder);
