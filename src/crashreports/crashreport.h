#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace zeltools
{

/// The report that a process has written about its own end, read back from its file.
///
/// A report may be cut anywhere by a power cut, and it may be forged. The reader takes what it can
/// use and leaves the rest out; `isComplete` is false then. Texts are as the process wrote them, so
/// they may hold control characters. Sections and fields that this version does not know are
/// skipped. Times are in milliseconds since 1970, UTC.
struct ZELTOOLS_EXPORT CrashReport
{
    /// The size of the largest file that is read.
    static constexpr qint64 largest_B = qint64(4) * 1024 * 1024;
    /// The lists have at most these numbers of entries.
    static constexpr int mostModules = 4096;
    static constexpr int mostStacks = 1024; ///< Also the limit of the monitored threads.
    static constexpr int mostCalls =
        256; ///< The calls of one stack; also the limit of the registers.
    static constexpr int mostLines = 1000; ///< The lines of the log, and of each section.
    /// The sections of the application; the library writes fewer of them.
    static constexpr int mostSections = 64;

    /// A register of the processor at the moment of the crash.
    struct Register
    {
        /// The name that the processor's manual gives it, in lower case: "rip", "pc".
        QString name;
        quint64 value = 0; ///< The content.
    };
    /// A program or library in the memory of the process.
    struct Module
    {
        quint64 base = 0;   ///< The number to add to addresses in the file; 0 for a fixed program.
        quint64 end = 0;    ///< The first address after the module.
        QByteArray buildId; ///< Bytes; empty if the file has none.
        QString path;       ///< The path of the file in the process's view.
    };
    /// The call stack of a thread.
    struct Stack
    {
        qint32 thread = 0;       ///< The kernel's id.
        QString name;            ///< The name that the kernel shows for the thread.
        bool hasCrashed = false; ///< Whether this thread has caused the crash.
        QVector<quint64> calls;  ///< The innermost first; empty if the thread gave no answer.
    };
    /// A thread or an item of the monitor.
    struct MonitoredThread
    {
        QString name;      ///< The name of the registration.
        qint32 thread = 0; ///< 0 for an item
        /// "on time", "late", "stalled" or "paused"; see monitored_threads::Monitor.
        QString state;
        /// The time from the last tick to the crash.
        qint64 sinceTick_ms = 0;
    };
    /// A block of text of the application.
    struct Section
    {
        QString name;      ///< The name in the heading.
        QStringList lines; ///< The text, without line feeds.
    };

    qint32 process = 0;    ///< The number of the process.
    QString program;       ///< The path of the program.
    QString library;       ///< The version of ZelTools.
    QString application;   ///< The version of the application.
    QString boot;          ///< The kernel's id of the boot.
    qint64 started_ms = 0; ///< The time of CrashReports::install().

    int signal = 0;     ///< 0 if no signal has ended the process, but an assertion.
    QString signalName; ///< The name of the signal, "SIGSEGV" for example.
    /// The code of the signal (si_code), which distinguishes the kinds of faults; see sigaction(2).
    int code = 0;
    /// The address of the fault, for the signals that have one.
    std::optional<quint64> address;
    qint32 thread = 0;    ///< The kernel's id of the crashed thread.
    qint64 time_ms = 0;   ///< The time of the crash; 0 if the report names none.
    qint64 uptime_ms = 0; ///< The time from CrashReports::install() to the crash.
    QString reason;       ///< The text of an exception or an assertion; empty for most signals.

    /// The registers of the crashed thread.
    QVector<Register> registers;
    /// The modules in the order of the kernel's list.
    QVector<Module> modules;
    QVector<Stack> stacks; ///< The stack of the crashed thread is the first.
    /// The states of the threads and items that the monitor watched.
    QVector<MonitoredThread> monitoredThreads;
    QStringList log; ///< The last lines, the oldest first.
    /// The sections that the application has added.
    QVector<Section> sections;
    /// Whether the report has its last line and all lines before it could be read.
    bool isComplete = false;

    /// Reads the content of a file. Returns nothing, and the reason in `error`, if the text is too
    /// large or does not begin as a report of this version.
    static std::optional<CrashReport> parse(const QByteArray& text, QString& error);

    /// The module that holds the address `place`, or a null pointer.
    const Module* moduleAt(quint64 place) const;
};

} // namespace zeltools
