// A machine application that only logs, as its standard input tells it: FOLDER LIMIT_B
// PREDECESSORS. It answers each command with the line "done" and ends with its input.

#include <zeltools/logging/journalsink.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QCoreApplication>
#include <QFile>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <signal.h>
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
void writeLine(int thread, int number, int length, LogLevel::Level level = LogLevel::Info)
{
    constexpr int others = 49; // the prefix, thread, number, full stop and line feed
    LogFormatter(level).log(Log::Global).noquote()
        << QString::asprintf("%d %08d ", thread, number) + QString(length - others, 'x') + '.';
}

void writeLines()
{
    const int threadsCount = next();
    const int first = next();
    const int end = first + next();
    const int length = next();
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadsCount; ++thread)
        threads.emplace_back([=] {
            for (int number = first; number < end; ++number)
                writeLine(thread, number, length);
        });
    for (std::thread& thread : threads)
        thread.join();
}

// Writes the number of lines that are logged to a file, which outlives the process. Slow lines come
// a millisecond after each other, and some of them have the given level.
[[noreturn]] void writeUntilKilled(bool isSlow)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int counter = open(next<std::string>().c_str(), O_WRONLY | O_CLOEXEC);
    const int length = next();
    const auto rareLevel = static_cast<LogLevel::Level>(isSlow ? next() : int(LogLevel::Info));
    constexpr int rareEvery = 700;
    for (int number = 0, count = 1;; ++number, ++count) {
        writeLine(0, number, length, number % rareEvery == 0 ? rareLevel : LogLevel::Info);
        if (pwrite(counter, &count, sizeof count, 0) != sizeof count)
            std::abort();
        if (isSlow)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Path::instance()->init(QFile::decodeName(argv[1]) + "/app/bin", "default", "default");
    LogManager::initialize();
    LogManager* manager = LogManager::instance();
    static auto* const journal = new JournalSink(QStringLiteral("logwriter"));
    if (qEnvironmentVariableIsSet("LOGWRITER_JOURNAL"))
        manager->addSink(journal);
    manager->enableLogToFile(true);
    manager->setAppLogFileMaximumSizeMiB(std::stod(argv[2]) / (1024 * 1024));
    manager->setAppLogFileSecondaryFilesCount(std::stoi(argv[3]));

    for (std::string command; std::cin >> command;) {
        if (command == "forever" || command == "slowly")
            writeUntilKilled(command == "slowly");
        writeLines();
        std::cout << "done" << std::endl;
    }
    return 0;
}
