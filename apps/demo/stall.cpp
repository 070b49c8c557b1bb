#include "stall.h"

#include "barpicture.h"
#include "freezablestorage.h"
#include "machineprocess.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>

namespace
{

// Stops the storage for two seconds while both log. At the end of them one is killed.
bool stall(MachineProcess& immediate, MachineProcess& buffered, FreezableStorage& storage)
{
    for (MachineProcess* machine : {&immediate, &buffered}) {
        if (storage.isMounted())
            machine->process().setStandardErrorFile(QProcess::nullDevice());
        machine->start();
    }
    if (!immediate.waitForAllThreads() || !buffered.waitForAllThreads())
        return false;
    QThread::msleep(300);
    const bool isFrozen = !storage.isMounted() || storage.freeze();
    QThread::sleep(2);
    buffered.kill();
    const bool isThawed = !storage.isMounted() || storage.thaw();
    // The call also reads the standard error stream of the machine.
    return buffered.waitForEnd() && immediate.waitForEnd() && isFrozen && isThawed;
}

bool showWaits(const MachineProcess& immediate, const MachineProcess& buffered,
               const QString& pictureFolder, QTextStream& out)
{
    const QVector<Bar> bars{{QStringLiteral("immediate"), immediate.longestWait_ms()},
                            {QStringLiteral("buffered"), buffered.longestWait_ms()}};
    out << "The longest wait of a thread that logs meanwhile:\n" << barsAsText(bars);
    constexpr double stall_ms = 1000; // Standard error takes some lines before it stalls.
    const bool isRight = bars[0].value_ms > stall_ms && bars[1].value_ms < stall_ms;
    if (pictureFolder.isEmpty())
        return isRight;
    QDir().mkpath(pictureFolder);
    QFile picture(pictureFolder + QLatin1String("/stall.svg"));
    const QByteArray svg =
        barsAsSvg(QStringLiteral("The longest wait of a thread that logs while the storage stalls"),
                  bars)
            .toUtf8();
    const bool isDrawn = picture.open(QIODevice::WriteOnly) && picture.write(svg) == svg.size();
    out << (isDrawn ? "Drew " : "Cannot draw ") << picture.fileName() << '\n';
    return isRight && isDrawn;
}

// Whether each acknowledged line is there once, and besides them at most the one line of each
// thread that the kill has met before its acknowledgement.
bool isComplete(const MachineProcess::LineCounts& lines,
                const MachineProcess::Acknowledgements& acknowledgements)
{
    qint64 extra = 0;
    for (auto line = lines.cbegin(); line != lines.cend(); ++line) {
        const qint64 acknowledged = acknowledgements[size_t(line.key().first)].count;
        if (line.value() != 1 || line.key().second > acknowledged)
            return false;
        extra += line.key().second == acknowledged;
    }
    qint64 sum = 0;
    for (const LineAcknowledgement& thread : acknowledgements)
        sum += thread.count;
    return lines.size() - extra == sum;
}

bool showRecovery(const MachineProcess& killed, MachineProcess& restarted, QTextStream& out)
{
    const int before = killed.linesInFile().size();
    restarted.start();
    const bool hasEnded = restarted.waitForEnd() && restarted.process().exitCode() == 0;
    const QString printed = QString::fromLocal8Bit(restarted.process().readAllStandardError());
    const QRegularExpression message(
        QStringLiteral("Recovered (\\d+) lines of process %1, which").arg(killed.processId()));
    const int recovered = message.match(printed).captured(1).toInt();
    const MachineProcess::LineCounts lines = killed.linesInFile();
    qint64 acknowledged = 0;
    for (const LineAcknowledgement& thread : killed.acknowledgements())
        acknowledged += thread.count;
    out << "The buffered machine was killed (SIGKILL) during the stall. Lines acknowledged: "
        << acknowledged << "; found in its files: " << before
        << "; recovered by the next start: " << recovered << ".\n";
    if (lines.size() > acknowledged)
        out << "Lines whose call had not returned yet: " << lines.size() - acknowledged << ".\n";
    return hasEnded && recovered > 0 && before + recovered == lines.size() &&
           isComplete(lines, killed.acknowledgements());
}

} // namespace

bool showStall(const QString& pictureFolder, QTextStream& out)
{
    const QTemporaryDir temporary;
    const QString disk = temporary.filePath(QStringLiteral("disk"));
    QDir().mkdir(disk);
    FreezableStorage storage(disk);
    out << '\n'
        << (storage.isMounted()
                ? "The storage of two machines, a file system of their own, is frozen for 2 s.\n"
                : "There is no root or no loop device to freeze storage. Instead, nobody reads the "
                  "standard error stream of two machines for 2 s.\n");
    out.flush();
    const QString folder = disk + QLatin1String("/machine-");
    MachineProcess immediate(QStringLiteral("immediate"), folder + QLatin1String("1"),
                             temporary.path());
    MachineProcess buffered(QStringLiteral("buffered"), folder + QLatin1String("2"),
                            temporary.path());
    MachineProcess restarted(QStringLiteral("restart"), folder + QLatin1String("2"),
                             temporary.path());
    if (!stall(immediate, buffered, storage))
        return false;
    const bool areWaitsRight = showWaits(immediate, buffered, pictureFolder, out);
    const bool isRecovered = showRecovery(buffered, restarted, out);
    out.flush();
    return areWaitsRight && isRecovered;
}
