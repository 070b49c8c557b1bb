// The wait of threads that log while the storage stalls for two of four seconds, beside other
// loggers and beside threads that only read the clock. Each logger runs in a process of its own,
// with its files on a file system that is frozen meanwhile; standard error goes to /dev/null.

#include "../apps/demo/freezablestorage.h"
#include "tracingdaemon.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include <stdlib.h>

namespace
{

constexpr int s_rounds = 3;
constexpr int s_wait_ms = 60000;

// The output of a process: four numbers of the calls, four of the waits, and the lost lines.
constexpr int s_p50 = 0, s_p99 = 1, s_p9999 = 2, s_maximum = 3, s_waitP9999 = 6, s_lost = 8,
              s_numbersCount = 9;
using Numbers = std::vector<double>;

struct Logger
{
    const char* name;
    const char* program;
    const char* mode;
    std::vector<Numbers> rounds = {};
};

Numbers parse(const QByteArray& line)
{
    Numbers numbers;
    for (const QByteArray& word : line.simplified().split(' '))
        numbers.push_back(word.toDouble());
    return numbers;
}

// Freezes the storage from the second to the third second of the four.
Numbers measure(const Logger& logger, const QString& folder, FreezableStorage& storage)
{
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QCoreApplication::applicationDirPath() + QLatin1Char('/') +
                      QLatin1String(logger.program),
                  {QLatin1String(logger.mode), folder});
    if (!process.waitForReadyRead(s_wait_ms) || process.readLine() != "started\n")
        return {};
    QThread::sleep(1);
    const bool isFrozen = storage.freeze();
    QThread::sleep(2);
    const bool isThawed = storage.thaw();
    if (!process.waitForFinished(s_wait_ms) || process.exitCode() != 0 || !isFrozen || !isThawed)
        return {};
    return parse(process.readAllStandardOutput());
}

void runRound(Logger& logger, const QString& folder, FreezableStorage& storage,
              TracingDaemon& daemon)
{
    QDir().mkdir(folder);
    const bool isTraced = qstrcmp(logger.mode, "lttng") == 0;
    if (isTraced && !daemon.startSession(folder))
        return;
    Numbers numbers = measure(logger, folder, storage);
    if (isTraced)
        numbers.push_back(daemon.endSession());
    if (numbers.size() == s_numbersCount)
        logger.rounds.push_back(numbers);
}

double median(const Logger& logger, int number)
{
    std::vector<double> values;
    for (const Numbers& round : logger.rounds)
        values.push_back(round[size_t(number)]);
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double worst(const Logger& logger, int number)
{
    double value = 0;
    for (const Numbers& round : logger.rounds)
        value = std::max(value, round[size_t(number)]);
    return value;
}

void printTable(const std::vector<Logger>& loggers)
{
    const char* const dashes = "-----------------------------";
    std::printf(
        "\n| %-29s |     p50 |     p99 |    p99.99 |   maximum |   p99.99 since due | lost |\n"
        "|-%s-|--------:|--------:|----------:|----------:|-------------------:|-----:|\n",
        "us, storage stalls for 2 s", dashes);
    const Logger& clock = loggers.front();
    for (const Logger& logger : loggers) {
        if (logger.rounds.size() < s_rounds) {
            std::printf("| %-29s | did not run\n", logger.name);
            continue;
        }
        const double sinceDue = median(logger, s_waitP9999);
        std::printf("| %-29s | %7.1f | %7.1f | %9.1f | %9.1f | %8.0f = %7.2f | %4.0f |\n",
                    logger.name, median(logger, s_p50), median(logger, s_p99),
                    median(logger, s_p9999), worst(logger, s_maximum), sinceDue,
                    sinceDue / median(clock, s_waitP9999), worst(logger, s_lost));
    }
    const Logger& buffered = loggers[1];
    if (buffered.rounds.size() == s_rounds && clock.rounds.size() == s_rounds)
        std::printf("ZelTools, buffered, to the clock at p99.99 (goal: at most 2): %.2f since due, "
                    "%.0f of the calls alone\n",
                    median(buffered, s_waitP9999) / median(clock, s_waitP9999),
                    median(buffered, s_p9999) / median(clock, s_p9999));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir temporary;
    const QString folder = temporary.filePath(QStringLiteral("disk"));
    QDir().mkdir(folder);
    FreezableStorage storage(folder);
    if (!storage.isMounted()) {
        std::printf("\nA stalled storage: skipped, since it takes root and a loop device.\n");
        return 0;
    }
    setenv("LTTNG_HOME", temporary.path().toLocal8Bit().constData(), 1);
    TracingDaemon daemon;

    std::vector<Logger> loggers{{"only the clock", "stallwriter", "clock"},
                                {"ZelTools, buffered", "stallwriter", "buffered"},
                                {"ZelTools, immediate", "stallwriter", "immediate"},
                                {"spdlog, async, queue of 8192", "stallwriter", "async"},
                                {"spdlog, sync", "stallwriter", "sync"},
                                {"LTTng-UST, --shm-path", "stalllttng", "lttng"}};
    for (int round = 0; round < s_rounds; ++round) {
        for (Logger& logger : loggers) {
            const QString place =
                folder + QStringLiteral("/%1%2").arg(QLatin1String(logger.mode)).arg(round);
            runRound(logger, place, storage, daemon);
        }
    }
    printTable(loggers);
    return 0;
}
