// The cost of keeping the kernel log in memory and of showing its end.

#include "ratiotable.h"
#include <zeltools/dmesg/dmesg.h>
#include <zeltools/logging/lognode.h>

#include <QCoreApplication>
#include <QTemporaryFile>

#include <atomic>
#include <cstring>
#include <vector>

using dmesg::Dmesg;
using dmesg::DmesgProcess;

namespace
{

constexpr int s_lines = 500000;
constexpr int s_lineLength = 80;
constexpr int s_batch = 800; // lines in a full pipe
constexpr int s_kept = 5 * 1024 * 1024 / s_lineLength;

QString line(int number)
{
    return QStringLiteral("[Sat Nov 21 14:00:00 2026] ") +
           QString::number(number).rightJustified(s_lineLength - 27, QLatin1Char('.'));
}

const QStringList& batch()
{
    static const QStringList lines = [] {
        QStringList some;
        for (int i = 0; i < s_batch; ++i)
            some.append(line(i));
        return some;
    }();
    return lines;
}

void setLimit(int lines)
{
    Dmesg::Config config;
    config.maxRamSize_B = qint64(lines) * s_lineLength;
    Dmesg::instance()->setConfig(config);
}

// The buffer takes lines that are there already.
void fill(int lines)
{
    for (int taken = 0; taken < lines; taken += s_batch)
        Dmesg::instance()->onProcessNewLines(batch());
}

void takeLines(benchmark::State& state)
{
    setLimit(s_kept);
    repeat(state, [] { fill(s_lines); });
    if (Dmesg::instance()->lines().size() != s_kept)
        state.SkipWithError("the buffer has not kept its limit");
}

// The container of the buffer alone, without a lock, a limit of characters or signals.
void appendToList(benchmark::State& state)
{
    QStringList kept;
    repeat(state, [&] {
        for (int taken = 0; taken < s_lines; taken += s_batch) {
            for (const QString& each : batch()) {
                if (kept.size() >= s_kept)
                    kept.removeFirst();
                kept.append(each);
            }
        }
    });
}

// The characters alone, around a buffer of the same size.
void copyCharacters(benchmark::State& state)
{
    std::vector<QChar> ring(size_t{s_kept} * s_lineLength);
    repeat(state, [&] {
        int place = 0;
        for (int taken = 0; taken < s_lines; ++taken) {
            std::memcpy(static_cast<void*>(&ring[size_t(place) * s_lineLength]),
                        batch()[taken % s_batch].constData(), s_lineLength * sizeof(QChar));
            place = place + 1 == s_kept ? 0 : place + 1;
        }
        benchmark::ClobberMemory();
    });
}

QString writeLog(QTemporaryFile& file)
{
    if (file.open()) {
        for (int i = 0; i < s_lines; ++i)
            file.write(line(i).toLatin1() + '\n');
        file.flush();
    }
    return file.fileName();
}

// From a process to the buffer.
void followProcess(benchmark::State& state)
{
    setLimit(s_kept);
    QTemporaryFile file;
    DmesgProcess process;
    std::atomic<int> arrived{0};
    QObject::connect(&process, &DmesgProcess::newLines, Dmesg::instance(),
                     &Dmesg::onProcessNewLines, Qt::DirectConnection);
    QObject::connect(&process, &DmesgProcess::newLines,
                     [&](const QStringList& lines) { arrived += lines.size(); });
    process.setCommand({QStringLiteral("cat"), {writeLog(file)}});
    repeat(state, [&] {
        arrived = 0;
        process.start();
        while (process.isRunning())
            QThread::usleep(100);
        if (arrived != s_lines)
            state.SkipWithError("lines are missing");
    });
}

// A line at a time, in this thread, kept nowhere.
void readLines(benchmark::State& state)
{
    QTemporaryFile file;
    QProcess process;
    process.setProgram(QStringLiteral("cat"));
    process.setArguments({writeLog(file)});
    repeat(state, [&] {
        int arrived = 0;
        process.start();
        while (process.waitForReadyRead()) {
            for (; process.canReadLine(); ++arrived)
                benchmark::DoNotOptimize(QString::fromUtf8(process.readLine().trimmed()));
        }
        if (arrived != s_lines)
            state.SkipWithError("lines are missing");
    });
}

// The same file through a pipe, its bytes seen and left.
void readPipe(benchmark::State& state)
{
    QTemporaryFile file;
    const std::string command = "cat " + writeLog(file).toStdString();
    repeat(state, [&] {
        FILE* const pipe = popen(command.c_str(), "r");
        static char piece[64 * 1024];
        size_t size_B = 0;
        for (size_t read = 1; read > 0; size_B += read)
            read = fread(piece, 1, sizeof piece, pipe);
        pclose(pipe);
        if (size_B != size_t{s_lines} * (s_lineLength + 1))
            state.SkipWithError("bytes are missing");
    });
}

auto showEnd(int kept)
{
    return [kept](benchmark::State& state) {
        setLimit(kept);
        fill(kept + s_batch);
        repeat(state, [] {
            benchmark::DoNotOptimize(Dmesg::instance()->linesToString(100, Dmesg::NewerFirst));
        });
    };
}

void joinHundred(benchmark::State& state)
{
    const QStringList lines = batch().mid(0, 100);
    repeat(state, [&] { benchmark::DoNotOptimize(lines.join(QLatin1Char('\n'))); });
}

void joinEnd(benchmark::State& state)
{
    setLimit(s_kept);
    fill(s_kept + s_batch);
    const QStringList lines = Dmesg::instance()->lines();
    repeat(state, [&] {
        const QString all = lines.join(QLatin1Char('\n'));
        benchmark::DoNotOptimize(all.right(100 * (s_lineLength + 1) - 1));
    });
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    LogNode::instance(); // takes the lines about the process
    add("500,000 lines into 5 MiB/ZelTools", takeLines);
    add("500,000 lines into 5 MiB/QStringList: append, removeFirst", appendToList);
    add("500,000 lines into 5 MiB/memcpy of the characters", copyCharacters);
    add("500,000 lines from a process/ZelTools", followProcess);
    add("500,000 lines from a process/QProcess::readLine", readLines);
    add("500,000 lines from a process/reading the pipe alone", readPipe);
    add("The last 100 lines/ZelTools, of 65,536", showEnd(s_kept));
    add("The last 100 lines/ZelTools, of 1,000", showEnd(1000));
    add("The last 100 lines/QStringList::join of 100", joinHundred);
    add("The last 100 lines/joining all, the right end", joinEnd);
    return RatioTable::run(argc, argv);
}
