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
    /// The lists take at most so many entries.
    static constexpr int mostModules = 4096;
    static constexpr int mostStacks = 1024; ///< also the limit of the monitored threads
    static constexpr int mostCalls = 256;   ///< of one stack; also the limit of the registers
    static constexpr int mostLines = 1000;  ///< of the log, and of each section
    static constexpr int mostSections = 64;

    struct Register
    {
        QString name;
        quint64 value = 0;
    };
    /// A program or library in the memory of the process.
    struct Module
    {
        quint64 base = 0; ///< what is added to the addresses in the file; 0 for a fixed program
        quint64 end = 0;
        QByteArray buildId; ///< bytes; empty if the file has none
        QString path;
    };
    struct Stack
    {
        qint32 thread = 0; ///< the kernel's id
        QString name;
        bool hasCrashed = false;
        QVector<quint64> calls; ///< the innermost first; empty if the thread gave no answer
    };
    /// A thread or an item of the monitor.
    struct MonitoredThread
    {
        QString name;
        qint32 thread = 0; ///< 0 for an item
        QString state;
        qint64 sinceTick_ms = 0;
    };
    /// A block of text of the application.
    struct Section
    {
        QString name;
        QStringList lines;
    };

    qint32 process = 0;
    QString program;
    QString library; ///< the version of ZelTools
    QString application;
    QString boot; ///< the kernel's id of the boot
    qint64 started_ms = 0;

    int signal = 0; ///< 0 if no signal has ended the process, but an assertion
    QString signalName;
    int code = 0;
    std::optional<quint64> address;
    qint32 thread = 0;
    qint64 time_ms = 0; ///< of the crash; 0 if the process wrote of none
    qint64 uptime_ms = 0;
    QString reason; ///< of an exception or an assertion; empty for most signals

    QVector<Register> registers;
    QVector<Module> modules;
    QVector<Stack> stacks; ///< the stack of the crashed thread is the first
    QVector<MonitoredThread> monitoredThreads;
    QStringList log; ///< the last lines, the oldest first
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
