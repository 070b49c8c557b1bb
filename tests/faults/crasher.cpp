// A machine application that crashes: FOLDER KIND [plain]. It installs crash reports in
// FOLDER/crashes unless it is plain, logs the line "Last words", and crashes in the function
// "crash_KIND". The kind "nothing" ends well.

#include <zeltools/crashreports/crashreports.h>
#include <zeltools/crashreports/crashreportwriter.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>
#include <zeltools/system/simulateddatetimemanager.h>
#include <zeltools/windowstools.h>

#include "../support/threads.h"

#include <QCoreApplication>
#include <QFile>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using zeltools::CrashReports;

namespace
{

int* volatile s_null = nullptr;
void (*volatile s_nullFunction)() = nullptr;
volatile int s_zero = 0;
volatile int s_many = 17;
bool s_crashesAtEnd = false;
QString s_folder;

} // namespace

// They are found by their names. None of them may end with a jump to the next function. The
// errors are deliberate, so that a sanitizer must not end the process before.
#define CRASH extern "C" __attribute__((noinline, used, no_sanitize("undefined"))) void

CRASH crash_null_read()
{
    s_zero = *s_null;
}

CRASH crash_null_call()
{
    s_nullFunction();
    s_zero = 0;
}

void (*volatile s_recursion)() = nullptr;

CRASH crash_stack_overflow()
{
    volatile uchar frame[4096];
    frame[0] = uchar(s_zero);
    s_recursion = crash_stack_overflow;
    s_recursion();
    s_zero = frame[0];
}

CRASH crash_overflow_in_thread()
{
    std::thread([] {
        CrashReports::prepareThread();
        crash_stack_overflow();
    }).join();
}

CRASH crash_heap_corruption()
{
    static void* volatile block = std::malloc(24);
    std::memset(static_cast<char*>(block) - 16, 'x', 16); // the size of the block
    std::free(block);
    s_zero = 0;
}

CRASH crash_in_signal()
{
    signal(SIGUSR1, [](int) { crash_null_read(); });
    raise(SIGUSR1);
    s_zero = 0;
}

CRASH crash_wild_read()
{
    s_zero = *reinterpret_cast<volatile int*>(0xdead000000000000);
}

CRASH crash_static_destructor()
{
    s_crashesAtEnd = true;
    std::exit(0);
}

CRASH crash_in_destructor()
{
    s_zero = *s_null;
}

// The log manager emits the signal while it holds the lock of the events file.
CRASH crash_held_lock()
{
    QObject::connect(LogManager::instance(), &LogManager::eventLogged, [] { crash_null_read(); });
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::CleaningEvent) << "Last words";
}

CRASH crash_eight_threads()
{
    support::runInThreads(8, [](int) { crash_null_read(); });
}

CRASH crash_out_of_memory()
{
    std::ifstream statistics("/proc/self/statm");
    rlim_t pages = 0;
    statistics >> pages;
    const rlim_t limit_B = pages * rlim_t(sysconf(_SC_PAGESIZE)) + rlim_t(64) * 1024 * 1024;
    const rlimit limit{limit_B, limit_B};
    setrlimit(RLIMIT_AS, &limit);
    for (std::vector<std::string> all;;)
        all.emplace_back(1024 * 1024, 'x');
}

CRASH crash_exception()
{
    throw std::runtime_error("no milk");
}

CRASH crash_qfatal()
{
    qFatal("no water");
}

CRASH crash_assertion()
{
    const zeltools::system::SimulatedDateTimeManager manager(QStringLiteral("no address"));
    s_zero = 0;
}

CRASH crash_division()
{
    s_zero = s_many / s_zero;
}

CRASH crash_cut_file()
{
    const QByteArray path = QFile::encodeName(s_folder + "/mapped");
    const int file = open(path.constData(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (ftruncate(file, 4096) != 0)
        return;
    const auto* const memory =
        static_cast<const volatile uchar*>(mmap(nullptr, 4096, PROT_READ, MAP_SHARED, file, 0));
    if (ftruncate(file, 0) == 0)
        s_zero = memory[0];
}

namespace
{

struct CrashingObject
{
    ~CrashingObject()
    {
        if (s_crashesAtEnd)
            crash_in_destructor();
    }
} s_crashingObject;

std::atomic<int> s_waiting{0};

void waitForEver(const char* name)
{
    prctl(PR_SET_NAME, name);
    ++s_waiting;
    for (;;)
        std::this_thread::sleep_for(std::chrono::hours(1));
}

struct sigaction s_wrapped;

void wrapHandler(int number, siginfo_t* info, void* context)
{
    s_wrapped.sa_sigaction(number, info, context);
}

const std::map<std::string, void (*)()> s_kinds{
    {"wild_read", crash_wild_read},
    {"without_descriptors",
     [] {
         while (open("/dev/null", O_RDONLY) >= 0) {
         }
         crash_null_read();
     }},
    {"at_exit", // The main thread ends the process while another thread writes the report.
     [] {
         CrashReports::addSection("slow", [](zeltools::CrashReportWriter&) { sleep(1); });
         std::thread(crash_null_read).detach();
         std::this_thread::sleep_for(std::chrono::milliseconds(300));
         std::exit(0);
     }},
    {"mute_threads",
     [] {
         sigset_t all;
         sigfillset(&all);
         pthread_sigmask(SIG_BLOCK, &all, nullptr);
         for (int i = 0; i < 300; ++i)
             std::thread(waitForEver, "Mute").detach();
         pthread_sigmask(SIG_UNBLOCK, &all, nullptr);
         std::abort();
     }},
    {"wrapped",
     [] {
         struct sigaction action = {};
         action.sa_sigaction = wrapHandler;
         action.sa_flags = SA_SIGINFO;
         sigaction(SIGSEGV, &action, &s_wrapped);
         signal(SIGTRAP, SIG_IGN);
         CrashReports::install(s_folder + "/crashes");
         raise(SIGTRAP);
         crash_null_read();
     }},
    {"in_child",
     [] {
         if (fork() == 0) {
             prctl(PR_SET_PDEATHSIG, SIGKILL);
             CrashReports::install(s_folder + "/crashes");
             crash_exception();
         }
         int status = 0;
         wait(&status);
         CrashReports::uninstall();
         raise(WTERMSIG(status));
     }},
    {"exit_in_handler",
     [] {
         struct sigaction action = {};
         action.sa_handler = std::exit;
         action.sa_flags = SA_ONSTACK;
         sigaction(SIGUSR1, &action, nullptr);
         raise(SIGUSR1);
     }},
    {"null_read", crash_null_read},
    {"null_call", crash_null_call},
    {"stack_overflow", crash_stack_overflow},
    {"overflow_in_thread", crash_overflow_in_thread},
    {"heap_corruption", crash_heap_corruption},
    {"in_signal", crash_in_signal},
    {"static_destructor", crash_static_destructor},
    {"held_lock", crash_held_lock},
    {"eight_threads", crash_eight_threads},
    {"out_of_memory", crash_out_of_memory},
    {"exception", crash_exception},
    {"qfatal", crash_qfatal},
    {"assertion", crash_assertion},
    {"division", crash_division},
    {"cut_file", crash_cut_file},
    {"second_fault",
     [] {
         CrashReports::addSection("broken", [](zeltools::CrashReportWriter&) { std::abort(); });
         crash_null_read();
     }},
    {"second_read",
     [] {
         CrashReports::addSection("broken",
                                  [](zeltools::CrashReportWriter&) { crash_null_read(); });
         crash_null_read();
     }},
    {"too_long",
     [] {
         CrashReports::addSection("slow", [](zeltools::CrashReportWriter&) { sleep(60); });
         crash_null_read();
     }},
    {"nothing", [] {}},
    {"killed", [] { raise(SIGKILL); }},
};

} // namespace

int main(int argc, char* argv[])
{
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion("4.2.1");
    s_folder = QFile::decodeName(argv[1]);
    Path::instance()->init(s_folder + "/app/bin", "default", "default");
    LogManager::initialize();
    qInstallMessageHandler(LogManager::qtMessageHandler);
    const std::string kind = argv[2];
    if (kind == "division")
        WindowsTools::installSignalHandlers();
    const bool isPlain = argc > 3;
    if (!isPlain && !CrashReports::install(s_folder + "/crashes"))
        return 2;
    CrashReports::addSection("tank", [](zeltools::CrashReportWriter& writer) {
        writer.text("water ").number(17).endLine();
    });
    if (kind != "nothing") {
        std::thread(waitForEver, "Grinder").detach();
        std::thread(waitForEver, "Pump").detach();
        while (s_waiting < 2)
            std::this_thread::yield();
    }
    for (int i = 0; i < 300; ++i)
        LogFormatter(LogLevel::Info).log(Log::Global) << "Line" << i;
    LogFormatter(LogLevel::Info).log(Log::Global).noquote() << "Last words";
    s_kinds.at(kind)();
    return 0;
}
