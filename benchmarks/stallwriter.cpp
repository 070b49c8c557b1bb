// One logger under bench_stall: MODE FOLDER. It prints the times of its callers and the number of
// lines that it has lost.

#include "stallthreads.h"

#include <zeltools/logging/log.h>
#include <zeltools/logging/logdelivery.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/loglosses.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <spdlog/async.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <QFile>

#include <cstdlib>
#include <memory>
#include <string>

#include <signal.h>
#include <sys/prctl.h>

namespace
{

const QString s_drink = QStringLiteral("espresso");

// Ends the process if the mode is impossible.
size_t runZelTools(const QString& folder, LogDelivery::Mode mode)
{
    Path::instance()->init(folder + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager* manager = LogManager::instance();
    LogDelivery delivery;
    delivery.mode = mode;
    manager->setDelivery(delivery);
    LogManager::initialize();
    manager->enableLogToFile(true);
    if (manager->isBuffered() != (mode == LogDelivery::Buffered))
        std::exit(1);
    stall::run([] {
        LogFormatter(LogLevel::Info).log(Log::Beverage)
            << "Dispensed drink" << 42 << s_drink << "after seconds" << 25;
    });
    manager->flush(std::chrono::seconds(30));
    const quint64 lost = manager->losses().total;
    manager->finalizeLogFiles();
    return size_t(lost);
}

size_t runSpdlog(const std::string& folder, bool isAsynchronous)
{
    constexpr size_t fileSize = 1024 * 1024;
    const spdlog::sinks_init_list sinks{
        std::make_shared<spdlog::sinks::rotating_file_sink_mt>(folder + "/spdlog", fileSize, 1),
        std::make_shared<spdlog::sinks::stderr_sink_mt>()};
    std::shared_ptr<spdlog::logger> logger;
    if (isAsynchronous) {
        spdlog::init_thread_pool(spdlog::details::default_async_q_size, 1);
        logger = std::make_shared<spdlog::async_logger>("stall", sinks, spdlog::thread_pool());
    } else {
        logger = std::make_shared<spdlog::logger>("stall", sinks);
    }
    logger->set_pattern("%d/%m/%Y %H:%M:%S:%e| %-8l | %v");
    logger->flush_on(spdlog::level::trace);
    stall::run([&logger] {
        logger->info("{} {} \"{}\" {} {}", "Dispensed drink", 42, "espresso", "after seconds", 25);
    });
    return isAsynchronous ? spdlog::thread_pool()->overrun_counter() : 0;
}

} // namespace

int main(int argc, char** argv)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string mode = argc == 3 ? argv[1] : "";
    size_t lost = 0;
    if (mode == "clock")
        stall::run([] {});
    else if (mode == "buffered")
        lost = runZelTools(QFile::decodeName(argv[2]), LogDelivery::Buffered);
    else if (mode == "immediate")
        lost = runZelTools(QFile::decodeName(argv[2]), LogDelivery::Immediate);
    else if (mode == "async")
        lost = runSpdlog(argv[2], true);
    else if (mode == "sync")
        lost = runSpdlog(argv[2], false);
    else
        return 2;
    std::printf("%zu\n", lost);
    return 0;
}
