#include "stalledmachine.h"

#include <zeltools/logging/log.h>
#include <zeltools/logging/logdelivery.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <chrono>
#include <cstdlib>
#include <thread>
#include <vector>

#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace
{

qint64 now_ns()
{
    const std::chrono::nanoseconds now = Clock::now().time_since_epoch();
    return now.count();
}

void store(int thread, const LineAcknowledgement& acknowledgement)
{
    constexpr off_t size = sizeof acknowledgement;
    if (pwrite(STDOUT_FILENO, &acknowledgement, size, thread * size) != size)
        std::abort();
}

void logByTheClock(int thread, Clock::time_point end)
{
    LineAcknowledgement acknowledgement;
    for (Clock::time_point due = Clock::now(); due < end; due += 2ms) {
        std::this_thread::sleep_until(due);
        acknowledgement.calledAt_ns = now_ns();
        store(thread, acknowledgement);
        LogFormatter(LogLevel::Info).log(Log::Beverage)
            << "The machine is at work, line" << thread << acknowledgement.count;
        acknowledgement.longestWait_ns =
            qMax(acknowledgement.longestWait_ns, now_ns() - acknowledgement.calledAt_ns);
        acknowledgement.calledAt_ns = 0;
        ++acknowledgement.count;
        store(thread, acknowledgement);
    }
}

} // namespace

int runStalledMachine(const QString& mode, const QString& folder)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    Path::instance()->init(folder + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogDelivery delivery;
    delivery.mode =
        mode == QLatin1String("immediate") ? LogDelivery::Immediate : LogDelivery::Buffered;
    LogManager* manager = LogManager::instance();
    manager->setDelivery(delivery);
    LogManager::initialize();
    manager->enableLogToFile(true);
    manager->setAppLogFileMaximumSizeMiB(16); // No line is lost by a rotation.

    std::vector<std::thread> threads;
    const Clock::time_point end = Clock::now() + 3500ms;
    for (int i = 0; i < stalledMachineThreads && mode != QLatin1String("restart"); ++i)
        threads.emplace_back(logByTheClock, i, end);
    for (std::thread& thread : threads)
        thread.join();
    manager->finalizeLogFiles();
    return 0;
}
