#include "shellcommand_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "timedprocess.h"

#include <unistd.h>

namespace zeltools
{

namespace
{

constexpr qint64 s_pieceSize_B = 4096;

// Gives the shell a process group of its own, so that the time limit also ends its children.
void leaveGroup()
{
    ::setpgid(0, 0);
}

// Logs the complete lines, and an incomplete one that has reached the given size.
void logOutput(QProcess& process, Utf8Decoder& decoder, qint64 atLeast_B)
{
    char piece[s_pieceSize_B + 1];
    while (process.canReadLine() || process.bytesAvailable() >= atLeast_B) {
        const qint64 size_B = process.readLine(piece, sizeof piece);
        QString text = decoder.decode(piece, static_cast<int>(size_B));
        if (text.endsWith(QLatin1Char('\n')))
            text.chop(1);
        if (!text.isEmpty())
            LogFormatter(LogLevel::Debug).log(Log::Global).noquote() << text;
    }
}

// Returns an empty text if the command ended by itself, otherwise the reason why it did not.
QString run(TimedProcess& process, Utf8Decoder& decoder, const QString& command,
            std::chrono::milliseconds timeLimit)
{
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process,
                     [&] { logOutput(process, decoder, s_pieceSize_B); });
    process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command}, QIODevice::ReadOnly);
    QString failure = process.waitForEnd(timeLimit);
    logOutput(process, decoder, 1);
    if (process.isOverdue())
        return QStringLiteral("still running after %1 ms").arg(timeLimit.count());
    if (failure.isEmpty() && process.exitStatus() != QProcess::NormalExit)
        return QStringLiteral("killed by signal %1").arg(process.exitCode());
    return failure;
}

} // namespace

bool runInShell(const QString& command, const QString& workingDirectory, int* exitCode,
                std::chrono::milliseconds timeLimit)
{
    Utf8Decoder decoder; // outlives the process, which may emit its last output at its end
    TimedProcess process(leaveGroup);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(workingDirectory);
    const QString failure = run(process, decoder, command, timeLimit);
    *exitCode = failure.isEmpty() ? process.exitCode() : -1;
    if (!failure.isEmpty())
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "bool WindowsTools::runCommand(const QString&, const QString&, int*)"
            << "Failed to run" << command << ":" << failure;
    return *exitCode == 0;
}

} // namespace zeltools
