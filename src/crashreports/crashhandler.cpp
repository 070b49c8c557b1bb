#include "crashreports/crashhandler_p.h"

#include "crashreports/crash_p.h"
#include "crashreports/crashreason_p.h"
#include "crashreports/crashreportwriter.h"
#include "crashreports/stackrequest_p.h"
#include "crashreports/timelimit_p.h"
#include "logging/fatalerror.h"
#include "stacksignal.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <exception>
#include <iterator>

#include <sys/syscall.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

struct PreviousHandlers
{
    struct sigaction actions[std::size(fatalSignals)];
    std::terminate_handler terminate = nullptr;
};

PreviousHandlers s_previous;
std::atomic<int> s_file{-1};
timespec s_started;
std::atomic<pid_t> s_reporter{0}; // the thread that has crashed first
std::atomic<int> s_reportedSignal{0};
std::atomic<bool> s_isReported{false};

size_t placeOf(int number)
{
    const auto* const found =
        std::find_if(std::begin(fatalSignals), std::end(fatalSignals),
                     [number](const FatalSignal& each) { return each.number == number; });
    return size_t(found - fatalSignals);
}

void write(Crash crash)
{
    constexpr unsigned limit_s = 5;
    const TimeLimit limit(limit_s);
    CrashReportWriter writer(s_file);
    crash.started = s_started;
    writeCrash(crash, writer);
    fdatasync(s_file);
    s_isReported = true;
}

// Ends the process by its first signal, so that the status is the one of the crash itself.
void endByDefault(int number)
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(number, &action, nullptr);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, number);
    pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
    syscall(SYS_tgkill, getpid(), gettid(), number);
}

void sleepFor(long duration_ms)
{
    constexpr long millisecond_ns = 1000000;
    const timespec pause{duration_ms / 1000, duration_ms % 1000 * millisecond_ns};
    nanosleep(&pause, nullptr);
}

// The thread that has crashed first ends the process, or is ended by its time limit. It may be in a
// handler of the application for some time after that.
void waitForReporter()
{
    constexpr int pauses = 600;
    constexpr long pause_ms = 10;
    while (!s_isReported)
        sleepFor(pause_ms);
    for (int i = 0; i < pauses; ++i)
        sleepFor(pause_ms);
}

// Returns whether this thread has to write the report. Otherwise, another one has written it.
bool beginReport(int number)
{
    if (s_file < 0 || s_isReported)
        return false;
    pid_t reporter = 0;
    if (s_reporter.compare_exchange_strong(reporter, gettid())) {
        s_reportedSignal = number;
        return true;
    }
    if (reporter != gettid())
        waitForReporter();
    else // a second fault, while the report was written
        endByDefault(s_reportedSignal != 0 ? s_reportedSignal.load() : number);
    return false;
}

// The previous action is taken as soon as this handler returns, as if it had not been there: the
// same signal, with its address and its code, waits for that.
void leaveToPrevious(int number, siginfo_t* info)
{
    sigaction(number, &s_previous.actions[placeOf(number)], nullptr);
    syscall(SYS_rt_tgsigqueueinfo, getpid(), gettid(), number, info);
}

void onFatalSignal(int number, siginfo_t* info, void* context)
{
    const int keptError = errno;
    if (beginReport(number)) {
        const char* const reason = number == SIGABRT ? CrashReason::of(gettid()) : "";
        write({gettid(), reason, info, static_cast<ucontext_t*>(context), nullptr, {}});
    }
    leaveToPrevious(number, info);
    errno = keptError;
}

void onFatalError(const char* reason, FatalEnd end)
{
    CrashReason::note(reason);
    if (end == FatalEnd::Exit && beginReport(0))
        write({gettid(), reason, nullptr, nullptr, __builtin_return_address(0), {}});
}

[[noreturn]] void onTerminate()
{
    CrashReason::noteException();
    if (s_previous.terminate != nullptr)
        s_previous.terminate();
    std::abort();
}

struct sigaction fatalAction()
{
    struct sigaction action = {};
    action.sa_sigaction = onFatalSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigfillset(&action.sa_mask);
    sigdelset(&action.sa_mask, stackSignal());
    sigdelset(&action.sa_mask, SIGALRM);
    for (const FatalSignal& each : fatalSignals)
        sigdelset(&action.sa_mask, each.number);
    return action;
}

} // namespace

void CrashHandler::install(int file)
{
    StackRequest::prepare();
    clock_gettime(CLOCK_BOOTTIME, &s_started);
    s_file = file;
    const struct sigaction action = fatalAction();
    for (const FatalSignal& each : fatalSignals)
        sigaction(each.number, &action, &s_previous.actions[placeOf(each.number)]);
    s_previous.terminate = std::set_terminate(onTerminate);
    setFatalErrorHandler(onFatalError);
}

void CrashHandler::uninstall()
{
    setFatalErrorHandler(nullptr);
    if (std::get_terminate() == onTerminate)
        std::set_terminate(s_previous.terminate);
    for (const FatalSignal& each : fatalSignals) {
        struct sigaction current;
        sigaction(each.number, nullptr, &current);
        if (current.sa_sigaction == onFatalSignal)
            sigaction(each.number, &s_previous.actions[placeOf(each.number)], nullptr);
    }
    s_file = -1;
}

bool CrashHandler::hasBegun()
{
    return s_reporter != 0;
}

void CrashHandler::forgetInChild()
{
    s_file = -1;
}

} // namespace zeltools
