#pragma once

#include <zeltools/dmesg/dmesgprocess.h>
#include <zeltools/logging/rotatinglogfile.h>
#include <zeltools/machine.h>
#include <zeltools/qtversion.h>
#include <zeltools/system.h>

#include <QMutex>
#include <QObject>
#include <QStringList>

#include <memory>

namespace dmesg
{

class LineBuffer;

/// Captures the kernel log while the application runs. A process follows the log (DmesgProcess),
/// and the last lines are kept in memory. If configured, all lines are also written to "dmesg.log"
/// in `Path::debugLogsDir`, which is off by default.
///
/// The process runs `dmesg` under `script`, which makes it write each line immediately. Where these
/// programs are missing, the capture can read the kernel log itself; see setSource().
///
/// Lines arrive in the thread of the process. One lock guards the lines. It is held
/// while changed() and newLine() are emitted, so that a directly connected receiver must not call
/// back. No log line is written with the lock held. For a receiver in another thread, each line is
/// one queued event; a screen should follow changed() with a timer.
///
/// Any thread may call every method. Configuration and command belong to one thread and may only be
/// set while nothing is captured: otherwise a release assertion fails and the process ends with
/// exit status 1.
class ZELTOOLS_EXPORT Dmesg : public QObject
{
    Q_OBJECT

public:
    /// The settings of the capture, see setConfig().
    struct Config
    {
        /// The limits of "dmesg.log": 1 MiB and five compressed predecessors by default.
        RotatingLogFileConfiguration logFile{1.0F, 5, true};
        bool logToFile = false; ///< Whether all lines are also written to "dmesg.log".
        /// The limit of the lines in memory. In spite of its name it counts characters (UTF-16 code
        /// units): the memory is about twice that and 50 bytes per line.
        qint64 maxRamSize_B = qint64(5) * 1024 * 1024;
    };
    /// The order of linesToString().
    enum Order { OlderFirst = 0, NewerFirst = 1 };
    Q_ENUM(Order)
    /// Where the lines come from.
    enum Source {
        Command = 0,      ///< The command.
        KernelDevice = 1, ///< /dev/kmsg
        Automatic = 2     ///< /dev/kmsg if the program of the command is not installed
    };
    Q_ENUM(Source)

    /// The only capture, created by the first call and destroyed when the process ends. The path
    /// layout must exist before lines go to a file.
    static Dmesg* instance();
    /// Stops the capture, which may take as long as DmesgProcess::stopSlot() waits.
    ~Dmesg() override;

    /// Starts the capture on the board like DmesgProcess::start(). On the desktop, whose kernel log
    /// is irrelevant to the machine, it does nothing.
    Q_INVOKABLE void start();
    /// Works like DmesgProcess::isRunning().
    bool isRunning() const { return m_process.isRunning(); }

    /// Sets the configuration and reopens the log file. A smaller limit takes effect with the next
    /// line.
    void setConfig(const Config& config);
    /// Sets the command that start() runs instead of `script` and `dmesg`.
    void setCommand(const System::Command& command);
    /// Sets where the lines come from, which is the command by default. They have the same form
    /// from both sources. `Automatic` is decided by this call and by setCommand(); the command that
    /// is set by default also needs `dmesg`.
    void setSource(Source source);
    /// Sets whether a capture that ends by itself is started again; see
    /// DmesgProcess::setRestarting(). It is off by default.
    void setRestarting(bool isRestarting);
    /// The settings of a log file for Config::logFile. A count of 0 lets the file grow without
    /// limit.
    static RotatingLogFileConfiguration makeLogFileConfig(float maximumSizeMiB,
                                                          int secondaryFilesCount, bool compressed);

    /// The lines in memory, oldest first.
    Q_INVOKABLE QStringList lines();
    /// The lines in memory that came after the first `number` lines, at most the last `mostLines`
    /// of them and oldest first. Sets the number to that of all lines so far, so that the next call
    /// gives the lines after these.
    QStringList linesAfter(quint64& number, int mostLines);
    /// The last lines, or all of them if `maxLines` is 0, with a line feed between them. The cost
    /// depends on these lines only, not on the number of lines in memory.
    Q_INVOKABLE QString linesToString(int maxLines, dmesg::Dmesg::Order order);

    /// Works like RotatingLogFile::filename(). If lines do not go to a file, a release assertion
    /// fails, which ends the process.
    QString logFileName(int index) const;
    /// Passes written data to the operating system like RotatingLogFile::sync(), but does not force
    /// it to storage.
    void syncLogFile();

    /// Whether this process may write kernel log lines of its own.
    Q_INVOKABLE static bool isKmsgWrittable();
    /// Whether the kernel shows its log to privileged processes only.
    Q_INVOKABLE static bool isDmesgRestricted();

public Q_SLOTS:
    /// Handles lines as if the process had printed them.
    void onProcessNewLines(const QStringList& lines);

Q_SIGNALS:
    /// Emitted after changed() for each added line.
    void newLine(const QString& line);
    /// Announces that a line was longer than the limit in memory and was not kept there.
    void tooLongLine();
    /// Announces each line that is added to lines().
    void changed();
    /// Announces that isRunning() may have changed. Emitted in the thread of the process.
    void runningChanged();

protected:
    /// Constructs a capture for another machine.
    explicit Dmesg(const zeltools::Machine& machine);

private:
    Dmesg();

    void chooseSource();
    void initLogFile();
    void appendLine(const QString& line, zeltools::MutexLocker& locker);
    void logLine(const QString& line, zeltools::MutexLocker& locker);

    const bool m_isBoard;
    const QString m_kernelMessageFile;
    System::Command m_command;
    Source m_source = Command;
    Config m_config;
    std::unique_ptr<LineBuffer> m_buffer;
    mutable QMutex m_mutex; // for the configuration, the buffer and the pointer to the file
    std::shared_ptr<RotatingLogFile> m_logFile; // written without the lock
    DmesgProcess m_process;
};

} // namespace dmesg
