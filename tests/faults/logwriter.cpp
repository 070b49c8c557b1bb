// A machine application that only logs: what, it is told on its standard input. It answers every
// command, when done, with the length of its result, a line feed and the result. Ends with its
// input. Its arguments: FOLDER LIMIT_B PREDECESSORS.

#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/logging/rotatinglogfile.h>
#include <zeltools/path.h>

#include <QCoreApplication>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
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

QString nextText()
{
    return QString::fromStdString(next<std::string>());
}

// All lines of one length are equally long, so that a piece of one is never taken for a whole.
void writeLine(int thread, int number, int length)
{
    constexpr int others = 49; // prefix, thread, number, full stop, line feed
    LogFormatter(LogLevel::Info).log(Log::Global).noquote()
        << QString::asprintf("%d %08d ", thread, number) + QString(length - others, 'x') + '.';
}

QString writeLines()
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
    return {};
}

// Keeps the number of lines whose write has returned in a file, which outlives the process.
[[noreturn]] QString writeUntilKilled()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int counter = open(next<std::string>().c_str(), O_WRONLY | O_CLOEXEC);
    const int length = next();
    for (int number = 0, count = 1;; ++number, ++count) {
        writeLine(0, number, length);
        if (pwrite(counter, &count, sizeof count, 0) != sizeof count)
            std::abort();
    }
}

QString readHistory()
{
    const auto filter = static_cast<LogManager::EventModuleFilter>(next());
    const QString from = nextText();
    const QString to = nextText();
    const int page = next();
    return LogManager::instance()->exportEventsHistory(filter, from, to, page, next());
}

QString readPage()
{
    RotatingLogFile log({1, 1, false});
    log.setPrimaryFilename(nextText());
    log.file.open(QIODevice::Append);
    const auto order = static_cast<RotatingLogFile::Order>(next());
    const auto first = next<unsigned>();
    return log.pageContent(first, next<unsigned>(), order);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Path::instance()->init(QFile::decodeName(argv[1]) + "/app/bin", "default", "default");
    LogManager::initialize();
    LogManager* manager = LogManager::instance();
    manager->enableLogToFile(true);
    manager->setAppLogFileMaximumSizeMiB(std::stod(argv[2]) / (1024 * 1024));
    manager->setAppLogFileSecondaryFilesCount(std::stoi(argv[3]));

    const std::map<std::string, std::function<QString()>> commands{
        {"write", writeLines},
        {"forever", writeUntilKilled},
        {"history", readHistory},
        {"total", [=] { return manager->eventLogTotalContent(); }},
        {"page", readPage}};
    for (std::string command; std::cin >> command;) {
        const QByteArray result = commands.at(command)().toUtf8();
        std::cout << result.size() << '\n' << result.toStdString() << std::flush;
    }
    return 0;
}
