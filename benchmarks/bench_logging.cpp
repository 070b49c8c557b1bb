// The cost of a log line, beside other loggers that do the same work and beside the bare system
// calls. Standard error goes to /dev/null, files to a temporary folder; every logger writes a line
// of the same form to both and flushes each line.

#include "ratiotable.h"
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <log4cplus/consoleappender.h>
#include <log4cplus/fileappender.h>
#include <log4cplus/initializer.h>
#include <log4cplus/layout.h>
#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>
#include <spdlog/async.h>
#include <spdlog/async_logger.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace
{

constexpr int s_fileSize = 1024 * 1024;
const QString s_drink = QStringLiteral("espresso");
const std::string s_drink8 = "espresso";
const char s_line[] = "21/11/2026 08:24:39:200| Info     | Dispensed drink 42 \"espresso\" after "
                      "seconds 25\n";

std::string folder()
{
    static const QTemporaryDir temporary;
    return temporary.path().toStdString();
}

struct BareFile
{
    BareFile()
        : descriptor(open((folder() + "/bare.log").c_str(),
                          O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644))
    {
    }
    void writeLine()
    {
        written += write(descriptor, s_line, sizeof s_line - 1);
        if (written > s_fileSize)
            written = ftruncate(descriptor, 0);
    }
    int descriptor;
    ssize_t written = 0;
};

void zelInfo()
{
    LogFormatter(LogLevel::Info).log(Log::Beverage)
        << "Dispensed drink" << 42 << s_drink << "after seconds" << 25;
}

template <typename FileSink, typename ErrorSink>
std::shared_ptr<spdlog::logger> makeSpdlog(const char* name)
{
    auto logger = std::make_shared<spdlog::logger>(
        name,
        spdlog::sinks_init_list{std::make_shared<FileSink>(folder() + '/' + name, s_fileSize, 1),
                                std::make_shared<ErrorSink>()});
    logger->set_pattern("%d/%m/%Y %H:%M:%S:%e| %-8l | %v");
    logger->flush_on(spdlog::level::trace);
    return logger;
}

spdlog::logger& spdlogSingle()
{
    static const auto logger =
        makeSpdlog<spdlog::sinks::rotating_file_sink_st, spdlog::sinks::stderr_sink_st>("st.log");
    return *logger;
}

spdlog::logger& spdlogMulti()
{
    static const auto logger =
        makeSpdlog<spdlog::sinks::rotating_file_sink_mt, spdlog::sinks::stderr_sink_mt>("mt.log");
    return *logger;
}

void spdlogInfo(spdlog::logger& logger)
{
    logger.info("{} {} \"{}\" {} {}", "Dispensed drink", 42, s_drink8, "after seconds", 25);
}

log4cplus::Logger& log4()
{
    static log4cplus::Logger logger = [] {
        using namespace log4cplus;
        Logger made = Logger::getInstance(LOG4CPLUS_TEXT("bench"));
        const SharedAppenderPtr appenders[]{
            SharedAppenderPtr(new RollingFileAppender(folder() + "/log4.log", s_fileSize, 1, true)),
            SharedAppenderPtr(new ConsoleAppender(true, true))};
        for (SharedAppenderPtr appender : appenders) {
            appender->setLayout(std::make_unique<PatternLayout>(
                LOG4CPLUS_TEXT("%D{%d/%m/%Y %H:%M:%S:%q}| %-8p | %m%n")));
            made.addAppender(appender);
        }
        made.setAdditivity(false);
        return made;
    }();
    return logger;
}

void log4Info()
{
    LOG4CPLUS_INFO(log4(),
                   "Dispensed drink " << 42 << " \"" << s_drink8 << "\" after seconds " << 25);
}

// The output of a Qt application that has no logging library.
void plainHandler(QtMsgType, const QMessageLogContext&, const QString& message)
{
    static QFile file(QString::fromStdString(folder() + "/qt.log"));
    if (!file.isOpen())
        file.open(QIODevice::WriteOnly);
    const QByteArray line =
        (QDateTime::currentDateTime().toString(QStringLiteral("dd/MM/yyyy hh:mm:ss:zzz")) +
         QStringLiteral("| Info     | ") + message + QLatin1Char('\n'))
            .toLocal8Bit();
    fwrite(line.constData(), 1, size_t(line.size()), stderr);
    fflush(stderr);
    file.write(line);
    file.flush();
    if (file.pos() > s_fileSize)
        file.resize(0);
}

void qtInfo()
{
    qInfo() << "Dispensed drink" << 42 << s_drink << "after seconds" << 25;
}

// 8 threads of 50,000 lines; the time of one line is the time of all lines divided by their number.
template <typename Work>
void inEightThreads(benchmark::State& state, Work&& work)
{
    constexpr int threadsCount = 8;
    constexpr int linesCount = 50000;
    for (auto _ : state) {
        std::vector<std::thread> threads;
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < threadsCount; ++i) {
            threads.emplace_back([&work] {
                for (int line = 0; line < linesCount; ++line)
                    work();
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(elapsed.count() / (threadsCount * linesCount));
    }
}

// The time of a call in the threads that log: bursts that fit into the queue of each logger, with
// pauses in which it is emptied.
template <typename Work, typename Drain>
void inBursts(benchmark::State& state, int threadsCount, Work&& work, Drain&& drain)
{
    constexpr int linesCount = 4000;
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        std::atomic<qint64> spent_ns{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < threadsCount; ++i) {
            threads.emplace_back([&] {
                const Clock::time_point start = Clock::now();
                for (int line = 0; line < linesCount / threadsCount; ++line)
                    work();
                spent_ns += std::chrono::nanoseconds(Clock::now() - start).count();
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        state.SetIterationTime(double(spent_ns) / 1e9 / linesCount);
        drain();
    }
}

void zelBuffered(benchmark::State& state, int threadsCount)
{
    LogDelivery delivery;
    delivery.mode = LogDelivery::Buffered;
    LogManager* const manager = LogManager::instance();
    if (!manager->setDelivery(delivery))
        state.SkipWithError("no buffered delivery");
    inBursts(state, threadsCount, zelInfo, [=] { manager->flush(std::chrono::minutes(1)); });
    if (manager->losses().total > 0)
        state.SkipWithError("lines were lost");
    manager->setDelivery(LogDelivery());
}

void spdlogAsync(benchmark::State& state, int threadsCount)
{
    constexpr int queueSize = 8192; // the default of spdlog
    static const auto pool = std::make_shared<spdlog::details::thread_pool>(queueSize, 1);
    static const auto logger = [] {
        const auto sinks = spdlogMulti().sinks();
        auto made =
            std::make_shared<spdlog::async_logger>("async", sinks.begin(), sinks.end(), pool);
        made->set_pattern("%d/%m/%Y %H:%M:%S:%e| %-8l | %v");
        return made;
    }();
    inBursts(
        state, threadsCount, [] { spdlogInfo(*logger); },
        [] {
            while (pool->queue_size() > 0)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        });
}

void zelDebug()
{
    LogFormatter(LogLevel::Debug).log(Log::Recipe)
        << "Dispensed drink" << 42 << s_drink << "after seconds" << 25;
}

QString eventsFile(bool isPredecessor)
{
    return Path::instance()->eventLogsDir +
           (isPredecessor ? QLatin1String("zel_events.log.1") : QLatin1String("zel_events.log"));
}

void writeEvents(int size)
{
    for (const bool isPredecessor : {true, false}) {
        QFile file(eventsFile(isPredecessor));
        file.open(QIODevice::WriteOnly);
        for (int i = 0; file.pos() < size / 2; ++i) {
            const qint64 day = (isPredecessor ? 1 : 15) + file.pos() * 28 / size;
            file.write(
                QStringLiteral("%1/11/2026 08:24:39:200| %2| espresso number %3, paid in coins\n")
                    .arg(day, 2, 10, QLatin1Char('0'))
                    .arg(i % 2 == 0 ? QStringLiteral("DispensedDrinkEvent")
                                    : QStringLiteral("MenuAccess"))
                    .arg(i)
                    .toUtf8());
        }
    }
}

void readAll(benchmark::State& state, int size)
{
    writeEvents(size);
    for (auto _ : state) {
        for (const bool isPredecessor : {true, false}) {
            QFile file(eventsFile(isPredecessor));
            file.open(QIODevice::ReadOnly);
            benchmark::DoNotOptimize(file.readAll().count('\n'));
        }
    }
}

void updateEvents(benchmark::State& state, int size)
{
    writeEvents(size);
    for (auto _ : state) {
        LogManager::instance()->updateEventsText(LogManager::DispensedDrinkFilter,
                                                 QStringLiteral("05/11/2026"),
                                                 QStringLiteral("20/11/2026"), 0, 20);
    }
    if (LogManager::instance()->eventsTextList().size() != 20)
        state.SkipWithError("the page is not full");
}

void addAll()
{
    add("Info line to stderr and file/ZelTools", [](auto& s) { repeat(s, zelInfo); });
    add("Info line to stderr and file/two bare write(2)", [](auto& s) {
        BareFile file;
        const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
        repeat(s, [&] {
            file.writeLine();
            benchmark::DoNotOptimize(write(null, s_line, sizeof s_line - 1));
        });
        close(null);
        close(file.descriptor);
    });
    add("Info line to stderr and file/spdlog, rotating + stderr sink (st)",
        [](auto& s) { repeat(s, [] { spdlogInfo(spdlogSingle()); }); });
    add("Info line to stderr and file/spdlog, rotating + stderr sink (mt)",
        [](auto& s) { repeat(s, [] { spdlogInfo(spdlogMulti()); }); });
    add("Info line to stderr and file/log4cplus, rolling + console",
        [](auto& s) { repeat(s, log4Info); });
    add("Info line to stderr and file/plain Qt message handler",
        [](auto& s) { repeat(s, qtInfo); });

    add("Debug line of a module that is off/ZelTools", [](auto& s) { repeat(s, zelDebug); });
    add("Debug line of a module that is off/spdlog, level off", [](auto& s) {
        spdlog::logger& logger = spdlogMulti();
        repeat(s, [&logger] {
            logger.debug("{} {} \"{}\" {} {}", "Dispensed drink", 42, s_drink8, "after seconds",
                         25);
        });
    });
    add("Debug line of a module that is off/QDebug formatting alone", [](auto& s) {
        repeat(s, [] {
            QString text;
            QDebug(&text) << "Dispensed drink" << 42 << s_drink << "after seconds" << 25;
            benchmark::DoNotOptimize(text);
        });
    });

    const auto threaded = [](const char* name, auto work) {
        add(name, [work](auto& s) { inEightThreads(s, work); })->UseManualTime()->Iterations(1);
    };
    threaded("8 threads of 50000 lines, per line/ZelTools", zelInfo);
    threaded("8 threads of 50000 lines, per line/spdlog (mt)", [] { spdlogInfo(spdlogMulti()); });

    for (const int threadsCount : {1, 8}) {
        const std::string group =
            "Info line in the caller, threads: " + std::to_string(threadsCount);
        const auto bursts = [&](const char* name, auto work) {
            add((group + name).c_str(), [=](auto& s) { work(s, threadsCount); })
                ->UseManualTime()
                ->Iterations(10);
        };
        bursts("/ZelTools, buffered", zelBuffered);
        bursts("/spdlog, async", spdlogAsync);
        bursts("/two bare write(2)", [](auto& s, int count) {
            inBursts(
                s, count,
                [] {
                    static const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
                    static const int file = BareFile().descriptor;
                    benchmark::DoNotOptimize(write(file, s_line, sizeof s_line - 1));
                    benchmark::DoNotOptimize(write(null, s_line, sizeof s_line - 1));
                },
                [] {});
        });
    }

    add("updateEventsText, 2 MiB/ZelTools", [](auto& s) { updateEvents(s, 2 << 20); });
    add("updateEventsText, 2 MiB/reading the files and counting line feeds",
        [](auto& s) { readAll(s, 2 << 20); });
    add("updateEventsText, 2 MiB/four times the bytes", [](auto& s) { updateEvents(s, 8 << 20); });
}

} // namespace

int main(int argc, char** argv)
{
    const QString application = QString::fromStdString(folder()) + QLatin1String("/opt/bin");
    Path::instance()->init(application, QStringLiteral("default"), QStringLiteral("default"));
    LogManager::initialize();
    LogManager::instance()->enableLogToFile(true);
    qInstallMessageHandler(plainHandler);
    const log4cplus::Initializer initializer;
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
    addAll();
    return RatioTable::run(argc, argv);
}
