#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>
#include <QStringList>

namespace zeltools
{

class CrashReportWriter;

/// Leaves a report in a folder when this process crashes, and collects the reports of earlier runs
/// when it starts. A report has the reason, the registers, the loaded modules, the last lines of
/// the log and the call stacks of all threads; docs/format-crash.md describes it.
///
/// These ends give a report: the signals SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGSYS and
/// SIGTRAP, std::terminate(), qFatal() and a failed assertion of the library that ends the process.
/// The process then ends as it would have without a report, with the same status and core dump.
/// Only if the report takes more than five seconds, SIGALRM ends it. A signal that is ignored when
/// install() is called stays ignored. A forked child process writes no report unless it calls
/// install() itself.
///
/// Call install() and uninstall() in the main thread, while no other thread calls them.
class ZELTOOLS_EXPORT CrashReports
{
public:
    CrashReports() = delete;

    /// The limits of the folder. The newest report is always kept.
    struct Limits
    {
        int mostReports = 10;                       ///< The number of files.
        qint64 mostBytes = qint64(4) * 1024 * 1024; ///< The sum of their sizes.
    };

    /// Collects the reports of earlier runs and removes the oldest ones beyond the limits. Each new
    /// report is a Critical line and an event of the kind WarningEvent. A run that has left no
    /// report without ending by exit() is a Warning: it was killed, or the power was cut.
    ///
    /// Then it prepares the report of this run and installs the handlers; those that are there
    /// continue to be called afterwards. Returns false, with an Error line, if the folder takes no
    /// file; a missing folder is created. A second call takes the place of the first one.
    ///
    /// Call it after LogManager::initialize() and WindowsTools::installSignalHandlers().
    static bool install(const QString& folder);
    /// Sets other limits than the default ones.
    static bool install(const QString& folder, Limits limits);
    /// Restores the handlers and removes the prepared report, as the end of the process does. If
    /// another thread writes its report at this time, both wait for that thread to end the process.
    static void uninstall();
    /// The folder of install(), or an empty text while it is not installed.
    static QString folder();

    /// Gives the calling thread a stack for the handler until the thread ends, so that an overflow
    /// of the thread's own stack is reported. install() gives one to the main thread.
    static void prepareThread();

    /// Writes a part of the report. It runs in the signal handler, so it must not take locks or
    /// memory; if it crashes, the report ends there.
    using Section = void (*)(CrashReportWriter& writer);
    /// Adds a section at the end of each report of this process. The name is a literal without
    /// control characters; "threads" is the section of the library's thread monitor. A name that
    /// was added before gets the new function. Returns false if there are 16 sections already. Any
    /// thread may call it, at any time.
    static bool addSection(const char* name, Section write);

    /// The paths of the reports in the folder, the newest first by the clock of their crashes.
    static QStringList reports(const QString& folder);
};

} // namespace zeltools
