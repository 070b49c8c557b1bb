#include "crashsimulator/crashsimulator.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "monitoredthreads/monitoredqthread.h"

#include <QCoreApplication>

using monitored_threads::AutoTick;
using monitored_threads::MonitoredQThread;

namespace crash_simulator
{

namespace
{

[[noreturn]] void sleepForever()
{
    constexpr unsigned long nap_s = 1000;
    for (;;)
        QThread::sleep(nap_s);
}

} // namespace

CrashSimulator::CrashSimulator(QObject* parent)
    : QObject(parent)
{
}

CrashSimulator::~CrashSimulator() = default;

void CrashSimulator::simulateStallSecondaryThread()
{
    auto* const thread =
        new MonitoredQThread(QStringLiteral("Secondary thread test"), AutoTick::On);
    // The thread is its own context, since the simulator may be destroyed before the thread runs.
    connect(
        thread, &QThread::started, thread,
        [] {
            LogFormatter(LogLevel::Info).log(Log::Global)
                << "Sleeping forever in secondary thread !";
            sleepForever();
        },
        Qt::DirectConnection);
    thread->start(QThread::InheritPriority);
}

void CrashSimulator::simulateStallMainThread()
{
    if (QThread::currentThread() != QCoreApplication::instance()->thread()) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void crash_simulator::CrashSimulator::simulateStallMainThread()"
            << "Not in main thread, aborting";
        return;
    }
    LogFormatter(LogLevel::Info).log(Log::Global) << "Sleeping forever in main thread !";
    stall();
}

// The sanitizer of undefined behaviour would report the read instead of letting it crash.
__attribute__((no_sanitize("undefined"))) void CrashSimulator::simulateApplicationCrash()
{
    // Volatile, since the compiler could leave out a read from an address that it knows to be null.
    const volatile qint32* volatile ptr = nullptr;
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): the crash is the purpose
    LogFormatter(LogLevel::Info).log(Log::Global) << "*ptr: " << qint32(*ptr);
}

void CrashSimulator::stall()
{
    sleepForever();
}

} // namespace crash_simulator
