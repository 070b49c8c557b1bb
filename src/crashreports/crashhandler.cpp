#include "crashreports/crashhandler_p.h"

#include "crashreports/crash_p.h"
#include "crashreports/crashreason_p.h"
#include "crashreports/crashreportwriter.h"
#include "crashreports/stackrequest_p.h"
#include "fatalsignals.h"
#include "logging/fatalerror.h"
#include "stacksignal.h"
#include "timelimit.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <exception>
#include <iterator>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

struct PreviousHandlers
{
    struct sigaction actions[std::size(fatalSignals)];
    std::terminate_handler terminate;
};

PreviousHandlers s_previous;
std::atomic<int> s_file{-1};
pid_t s_process = 0;
timespec s_started;
std::atomic<pid_t> s_reporter{0}; // the thread that has crashed first
std::atomic<int> s_reportedSignal{0};
timespec s_patienceEnd; // set when the report is complete
std::atomic<bool> s_isReported{false};
bool s_isInstalled = false;
// The threads that have come to the previous handlers from this one.
std::atomic<pid_t> s_leavers[std::size(fatalSignals)];
std::atomic<pid_t> s_terminated{0};
// They are closed when they are needed: the crash may be a lack of descriptors.
int s_spareDescriptors[2]{-1, -1};

size_t placeOf(int number)
{
    return size_t(&fatalSignal(number) - fatalSignals);
}

void closeSpareDescriptors()
{
    for (int& each : s_spareDescriptors) {
        close(each);
        each = -1;
    }
}

// A previous handler of the application may call this one, which must not call it again.
bool isFirstVisit(std::atomic<pid_t>& visitor)
{
    pid_t before = 0;
    return visitor.compare_exchange_strong(before, gettid()) || before != gettid();
}

void write(Crash crash)
{
    closeSpareDescriptors();
    constexpr unsigned limit_s = 5;
    const TimeLimit limit(limit_s);
    CrashReportWriter writer(s_file);
    crash.started = s_started;
    writeCrash(crash, writer);
    fdatasync(s_file);
    constexpr int patience_ms = 6000;
    s_patienceEnd = monotonicDeadline(patience_ms);
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

// The thread that has crashed first ends the process, or is ended by its time limit. It may be in a
// handler of the application for some time after that.
void waitForReporter()
{
    const timespec pause{0, 10000000};
    while (!s_isReported || !hasPassed(s_patienceEnd))
        nanosleep(&pause, nullptr);
}

// Returns whether this thread has to write the report. Otherwise, another one has written it.
bool beginReport(int number)
{
    // A child process that shares the memory, as vfork() makes it, must leave the report alone.
    if (s_file < 0 || s_isReported || getpid() != s_process)
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
    if (!isFirstVisit(s_leavers[placeOf(number)]))
        endByDefault(number);
    sigaction(number, &s_previous.actions[placeOf(number)], nullptr);
    if (syscall(SYS_rt_tgsigqueueinfo, getpid(), gettid(), number, info) != 0)
        raise(number);
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
    if (s_previous.terminate != nullptr && isFirstVisit(s_terminated))
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

// A signal that is ignored must not use up the only report.
void installFor(const FatalSignal& signal)
{
    const struct sigaction action = fatalAction();
    const size_t place = placeOf(signal.number);
    struct sigaction& previous = s_previous.actions[place];
    s_leavers[place] = 0;
    sigaction(signal.number, &action, &previous);
    if (previous.sa_handler == SIG_IGN)
        sigaction(signal.number, &previous, nullptr);
}

} // namespace

void CrashHandler::install(int file)
{
    StackRequest::prepare();
    CrashReason::prepare();
    clock_gettime(CLOCK_BOOTTIME, &s_started);
    s_process = getpid();
    s_file = file;
    for (int& each : s_spareDescriptors)
        each = open("/dev/null", O_RDONLY | O_CLOEXEC);
    std::for_each(std::begin(fatalSignals), std::end(fatalSignals), installFor);
    s_terminated = 0;
    s_isInstalled = true;
    s_previous.terminate = std::set_terminate(onTerminate);
    setFatalErrorHandler(onFatalError);
}

void CrashHandler::uninstall()
{
    if (!s_isInstalled)
        return;
    s_isInstalled = false;
    closeSpareDescriptors();
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

void CrashHandler::waitForReport()
{
    if (s_reporter != 0 && s_reporter != gettid() && getpid() == s_process)
        waitForReporter();
}

void CrashHandler::forgetInChild()
{
    s_file = -1;
    s_reporter = 0;
    s_isReported = false;
}

} // namespace zeltools
