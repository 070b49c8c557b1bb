#pragma once

#include <zeltools/dmesg/dmesgprocess.h>
#include <zeltools/logging/rotatinglogfile.h>
#include <zeltools/qtversion.h>
#include <zeltools/system.h>

#include <QMutex>
#include <QObject>
#include <QStringList>

#include <memory>

class TestDiagnostics;

namespace dmesg
{

/// Captures the kernel log while the application runs: a process follows it (DmesgProcess), the
/// last lines are kept in memory, and all of them are written to "dmesg.log" in
/// `Path::debugLogsDir` if that is switched on. Off at first.
///
/// The process runs `dmesg` under `script`, which makes it write each line at once.
///
/// Lines arrive in the thread of the process. One lock guards the lines and the file, and it is
/// held while changed() and newLine() are emitted: a directly connected receiver of these must not
/// call back. No log line is written with the lock held. In another thread each line is one queued
/// event; a screen better follows changed() with a timer.
/// Every method may be called from any thread. Configuration and command belong to one thread, and
/// only while nothing is captured: otherwise a release assertion fails and the process ends with
/// exit status 1.
class ZELTOOLS_EXPORT Dmesg : public QObject
{
    Q_OBJECT

public:
    struct Config
    {
        RotatingLogFileConfiguration logFile{1.0F, 5, true};
        bool logToFile = false;
        /// How much is kept in memory. In spite of its name it counts the characters of the lines
        /// (UTF-16 code units): memory is about twice that and 50 bytes a line.
        qint64 maxRamSize_B = qint64(5) * 1024 * 1024;
    };
    enum Order { OlderFirst = 0, NewerFirst = 1 };
    Q_ENUM(Order)

    /// The one capture, created by the first call and destroyed when the process ends. The path
    /// layout must be there before lines go to a file.
    static Dmesg* instance();
    /// Stops the capture, which may take as long as DmesgProcess::stopSlot() waits.
    ~Dmesg() override;

    /// Starts the capture on the board, as DmesgProcess::start(). On the desktop, whose kernel log
    /// is of no interest, it does nothing.
    void start();

    /// The log file is opened anew. A smaller limit takes effect with the next line.
    void setConfig(const Config& config);
    /// What start() runs in place of `script` and `dmesg`.
    void setCommand(const System::Command& command);
    static RotatingLogFileConfiguration makeLogFileConfig(float maximumSizeMiB,
                                                          int secondaryFilesCount, bool compressed);

    /// The lines in memory, oldest first.
    QStringList lines();
    /// The last lines, all when `maxLines` is 0, with a line feed between them. Costs what these
    /// lines cost, however many there are in memory.
    QString linesToString(int maxLines, Order order);

    /// As RotatingLogFile::filename(). Fails a release assertion, which ends the process, when
    /// lines do not go to a file.
    QString logFileName(int index) const;
    /// Hands what is written to the operating system, as RotatingLogFile::sync(); not to storage.
    void syncLogFile();

    /// Whether this process may write kernel log lines of its own.
    static bool isKmsgWrittable();
    /// Whether the kernel shows its log to privileged processes only.
    static bool isDmesgRestricted();

public Q_SLOTS:
    /// Takes lines as if the process had printed them.
    void onProcessNewLines(const QStringList& lines);

Q_SIGNALS:
    /// After changed(), for each line that was added.
    void newLine(const QString& line);
    /// A line was longer than all that is kept in memory, and is not there.
    void tooLongLine();
    void changed();

private:
    friend class ::TestDiagnostics;

    Dmesg();

    void initLogFile();
    void appendLine(const QString& line, zeltools::MutexLocker& locker);
    void removeOldestLine();
    void logLine(const QString& line);

    Config m_config;
    QStringList m_lines; // oldest first; takes its first line off without moving the others
    qint64 m_dataSize_B = 0;
    mutable QMutex m_mutex; // for the lines, their size and the file
    std::unique_ptr<RotatingLogFile> m_logFile;
    DmesgProcess m_process;
};

} // namespace dmesg
