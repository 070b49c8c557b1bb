// The time from a fault to the end of the process: of one with 20 threads that writes a crash
// report, and of the same process without handlers.

#include "ratiotable.h"
#include <zeltools/crashreports/crashreports.h>
#include <zeltools/logging/logtail.h>
#include <zeltools/path.h>

#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using Clock = std::chrono::steady_clock;
using zeltools::CrashReports;

namespace
{

constexpr int s_threads = 20; // with the main thread
constexpr int s_depth = 20;   // calls

// Shared with the child process.
Clock::rep* s_faultTime = nullptr;

void waitDeeply(int depth, std::atomic<int>& waiting)
{
    if (depth > 0) {
        waitDeeply(depth - 1, waiting);
    } else {
        ++waiting;
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
    benchmark::ClobberMemory(); // no tail call
}

[[noreturn]] void crash(const QString& folder)
{
    if (!folder.isEmpty() && !CrashReports::install(folder))
        std::_Exit(1);
    for (int i = 0; i < LogTail::mostLines; ++i)
        LogTail::add("22/11/2026 08:54:09:635| Info     | The grinder is at work\n", 56);
    static std::atomic<int> waiting{0};
    for (int i = 1; i < s_threads; ++i)
        std::thread(waitDeeply, s_depth, std::ref(waiting)).detach();
    while (waiting < s_threads - 1)
        std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    volatile int* volatile null = nullptr;
    *s_faultTime = Clock::now().time_since_epoch().count();
    *null = 0;
    std::_Exit(1);
}

void crashChild(benchmark::State& state, const QString& folder)
{
    for (auto _ : state) {
        const pid_t child = fork();
        if (child == 0)
            crash(folder);
        int status = 0;
        waitpid(child, &status, 0);
        const Clock::time_point end = Clock::now();
        if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGSEGV)
            return state.SkipWithError("the child has not crashed");
        const Clock::time_point fault{Clock::duration(*s_faultTime)};
        state.SetIterationTime(std::chrono::duration<double>(end - fault).count());
    }
    if (!folder.isEmpty() && CrashReports::reports(folder).isEmpty())
        state.SkipWithError("there is no report");
}

} // namespace

int main(int argc, char** argv)
{
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    s_faultTime = static_cast<Clock::rep*>(mmap(
        nullptr, sizeof *s_faultTime, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    const QTemporaryDir folder;
    Path::instance()->init(folder.filePath("app/bin"), "default", "default");
    add("from the fault to the end/with a report of 20 threads", [&](benchmark::State& state) {
        crashChild(state, folder.path());
    })->UseManualTime();
    add("from the fault to the end/without handlers", [](benchmark::State& state) {
        crashChild(state, QString());
    })->UseManualTime();
    return RatioTable::run(argc, argv);
}
