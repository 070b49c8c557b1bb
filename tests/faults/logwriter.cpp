// A machine application that only logs, as its standard input tells it: FOLDER LIMIT_B
// PREDECESSORS [RING_FOLDER [late]]. It answers each command with the line "done" and ends with its
// input. With a folder for the ring, it logs in buffered delivery, which begins late if that is
// wanted: after the start of logging.

#include <zeltools/logging/journalsink.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/loginfile.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include "../support/threads.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{

template <typename T = int>
T next()
{
    T word{};
    std::cin >> word;
    return word;
}

// All lines have the given length, so that a piece of a line is not taken for a whole one.
QString text(int thread, int number, int length)
{
    constexpr int others = 49; // the prefix, thread, number, full stop and line feed
    return QString::asprintf("%d %08d ", thread, number) + QString(length - others, 'x') + '.';
}

void writeLine(int thread, int number, int length, LogLevel::Level level = LogLevel::Info)
{
    LogFormatter(level).log(Log::Global).noquote() << text(thread, number, length);
}

void writeLines()
{
    const int threadsCount = next();
    const int first = next();
    const int end = first + next();
    const int length = next();
    support::runInThreads(threadsCount, [=](int thread) {
        for (int number = first; number < end; ++number)
            writeLine(thread, number, length);
    });
}

// Threads count their lines in a file, which outlives the process. The last one of several threads
// writes to a trace file. The first one raises the signal, if it is not 0, after so many lines.
// Some lines have the given level.
[[noreturn]] void writeUntilKilled()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int file = open(next<std::string>().c_str(), O_RDWR | O_CLOEXEC);
    const int threadsCount = next();
    const int length = next();
    const std::chrono::microseconds pause(next());
    const int fatalSignal = next();
    const int lastNumber = next();
    const auto rareLevel = static_cast<LogLevel::Level>(next());
    constexpr int rareEvery = 700;
    const size_t size_B = size_t(threadsCount) * sizeof(int);
    auto* const counters = static_cast<std::atomic<int>*>(
        mmap(nullptr, size_B, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0));
    LogInFile trace(nullptr, "trace.log", Log::Global, {1, 99, false});
    trace.setLogInDebug(false);
    trace.setLogInFile(threadsCount > 1);
    const auto run = [&](int thread) {
        for (int number = 0;; ++number) {
            if (thread > 0 && thread == threadsCount - 1)
                trace.logString(text(thread, number, length));
            else
                writeLine(thread, number, length,
                          number % rareEvery == 0 ? rareLevel : LogLevel::Info);
            counters[thread] = number + 1;
            if (thread == 0 && fatalSignal != 0 && number == lastNumber)
                raise(fatalSignal);
            if (pause.count() > 0)
                std::this_thread::sleep_for(pause);
        }
    };
    const support::Threads others(threadsCount - 1, [&run](int i) { run(i + 1); });
    for (;;)
        run(0);
}

// Threads write lines at a steady rate, among them a few errors. The answer is the number of lines
// that were written and lost, and the longest call for an error and for any other line.
void writeSteadily()
{
    using Clock = std::chrono::steady_clock;
    const int threadsCount = next();
    const int linesPerSecond = next();
    const int count = next();
    const int length = next();
    std::atomic<qint64> longest_us[2] = {};
    support::runInThreads(threadsCount, [&](int thread) {
        const auto start = Clock::now();
        for (int number = 0; number < count; ++number) {
            std::this_thread::sleep_until(start + number * std::chrono::microseconds(1000000) /
                                                      linesPerSecond);
            const bool isUrgent = number % 1000 == 999;
            const auto before = Clock::now();
            writeLine(thread, number, length, isUrgent ? LogLevel::Error : LogLevel::Info);
            const qint64 wait_us = (Clock::now() - before) / std::chrono::microseconds(1);
            qint64 known_us = longest_us[isUrgent];
            while (wait_us > known_us &&
                   !longest_us[isUrgent].compare_exchange_weak(known_us, wait_us)) {
            }
        }
    });
    std::cout << qint64(threadsCount) * count << ' ' << LogManager::instance()->losses().total
              << ' ' << longest_us[1] << ' ' << longest_us[0] << std::endl;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Path::instance()->init(QFile::decodeName(argv[1]) + "/app/bin", "default", "default");
    LogManager* manager = LogManager::instance();
    static auto* const journal = new JournalSink(QStringLiteral("logwriter"));
    const bool hasJournal = qEnvironmentVariableIsSet("LOGWRITER_JOURNAL");
    if (hasJournal && dlopen("libsystemd.so.0", RTLD_LAZY | RTLD_NOLOAD) == nullptr)
        return 1; // write() would load it with the sinks locked.
    if (hasJournal)
        manager->addSink(journal);
    LogDelivery delivery;
    delivery.mode = LogDelivery::Buffered;
    const bool isLate = argc > 5;
    if (argc > 4)
        delivery.ringFolder = QFile::decodeName(argv[4]);
    if (argc > 4 && !isLate)
        manager->setDelivery(delivery);
    LogManager::initialize();
    manager->enableLogToFile(true);
    manager->setAppLogFileMaximumSizeMiB(std::stod(argv[2]) / (1024 * 1024));
    manager->setAppLogFileSecondaryFilesCount(std::stoi(argv[3]));
    if (isLate)
        manager->setDelivery(delivery);

    for (std::string command; std::cin >> command;) {
        if (command == "forever")
            writeUntilKilled();
        if (command == "steadily")
            writeSteadily();
        else
            writeLines();
        if (!hasJournal) // which may be stopped
            manager->flush(std::chrono::minutes(1));
        std::cout << "done" << std::endl;
    }
    return 0;
}
