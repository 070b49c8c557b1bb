#include "windowstools.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "qtversion.h"

#include <QDeadlineTimer>
#include <QMutex>

#include <algorithm>
#include <utility>

#include <signal.h>
#include <unistd.h>

namespace
{

constexpr qint64 s_pieceSize_B = 4096;

struct ReplacedRunner
{
    QMutex mutex;
    WindowsTools::CommandRunner runner;
};

// Never destroyed: commands may run until the process ends.
ReplacedRunner& replacedRunner()
{
    static auto* replaced = new ReplacedRunner;
    return *replaced;
}

// Gives a child a group of its own, so that the time limit ends the children of the shell too.
void leaveGroup()
{
    ::setpgid(0, 0);
}

class ShellProcess final : public zeltools::ChildProcess
{
public:
    explicit ShellProcess(std::chrono::milliseconds timeLimit);

    /// Empty when the command ended by itself, otherwise why it did not.
    QString run(const QString& command);

private:
    void onOutput();
    void logOutput(qint64 atLeast_B);
    void killGroup();

    std::chrono::milliseconds m_timeLimit;
    QDeadlineTimer m_deadline;
    bool m_isOverdue = false;
    zeltools::Utf8Decoder m_decoder;
};

ShellProcess::ShellProcess(std::chrono::milliseconds timeLimit)
    : ChildProcess(leaveGroup)
    , m_timeLimit(timeLimit)
    , m_deadline(timeLimit)
{
    setStandardInputFile(nullDevice());
    setProcessChannelMode(MergedChannels);
    connect(this, &QProcess::readyReadStandardOutput, this, &ShellProcess::onOutput);
}

QString ShellProcess::run(const QString& command)
{
    start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command}, ReadOnly);
    waitForFinished(static_cast<int>(m_timeLimit.count()));
    if (state() != NotRunning) {
        killGroup();
        waitForFinished();
    }
    logOutput(1);
    if (m_isOverdue)
        return QStringLiteral("still running after %1 ms").arg(m_timeLimit.count());
    if (error() == FailedToStart)
        return errorString();
    if (exitStatus() != NormalExit)
        return QStringLiteral("killed by signal %1").arg(exitCode());
    return QString();
}

void ShellProcess::onOutput()
{
    logOutput(s_pieceSize_B);
    // The wait does not look at the time while there is always something to read.
    if (m_deadline.hasExpired())
        killGroup();
}

// Logs whole lines, and an unfinished one that has reached the given size.
void ShellProcess::logOutput(qint64 atLeast_B)
{
    char piece[s_pieceSize_B + 1];
    while (canReadLine() || bytesAvailable() >= atLeast_B) {
        const qint64 size_B = readLine(piece, sizeof piece);
        QString text = m_decoder.decode(piece, static_cast<int>(size_B));
        if (text.endsWith(QLatin1Char('\n')))
            text.chop(1);
        if (!text.isEmpty())
            LogFormatter(LogLevel::Debug).log(Log::Global).noquote() << text;
    }
}

void ShellProcess::killGroup()
{
    m_isOverdue = true;
    const auto group = static_cast<pid_t>(processId());
    if (group > 0)
        ::kill(-group, SIGKILL);
    kill(); // also a shell that has changed its group
}

} // namespace

bool WindowsTools::runCommand(const QString& command, const QString& workingDirectory,
                              int* exitCode)
{
    CommandRunner runner;
    {
        const QMutexLocker locker(&replacedRunner().mutex);
        runner = replacedRunner().runner;
    }
    int code = -1;
    const bool isDone = runner ? runner(command, workingDirectory, &code)
                               : runInShell(command, workingDirectory, &code, commandTimeLimit);
    if (exitCode != nullptr)
        *exitCode = code;
    return isDone;
}

bool WindowsTools::runCommands(const QStringList& commands, const QString& workingDirectory)
{
    return std::all_of(commands.begin(), commands.end(), [&](const QString& command) {
        return runCommand(command, workingDirectory);
    });
}

WindowsTools::CommandRunner WindowsTools::setCommandRunner(CommandRunner runner)
{
    const QMutexLocker locker(&replacedRunner().mutex);
    return std::exchange(replacedRunner().runner, std::move(runner));
}

bool WindowsTools::runInShell(const QString& command, const QString& workingDirectory,
                              int* exitCode, std::chrono::milliseconds timeLimit)
{
    ShellProcess process(timeLimit);
    process.setWorkingDirectory(workingDirectory);
    const QString failure = process.run(command);
    if (!failure.isEmpty()) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "bool WindowsTools::runCommand(const QString&, const QString&, int*)"
            << "Failed to run" << command << ":" << failure;
        *exitCode = -1;
        return false;
    }
    *exitCode = process.exitCode();
    return *exitCode == 0;
}

bool WindowsTools::setEnv(const QString& name, const QString& value)
{
    return qputenv(name.toUtf8().constData(), value.toUtf8());
}

bool WindowsTools::unsetEnv(const QString& name)
{
    return qunsetenv(name.toUtf8().constData());
}
