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

#include "../support/threads.h"

#include <QCoreApplication>
#include <QFile>

#include <chrono>
#include <cstdlib>
#include <cstring>
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
#include <unistd.h>

using zeltools::CrashReports;

namespace
{

int* volatile s_null = nullptr;
void (*volatile s_nullFunction)() = nullptr;
volatile int s_zero = 0;
bool s_crashesAtEnd = false;
QString s_folder;

} // namespace

// They are found by their names. None of them may end with a jump to the next function.
#define CRASH extern "C" [[gnu::noinline, gnu::used]] void

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
    volatile char frame[4096];
    frame[0] = char(s_zero);
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
    char* const first = static_cast<char*>(std::malloc(24));
    char* const second = static_cast<char*>(std::malloc(24));
    char* volatile end = second;
    std::memset(end - 16, 'x', 16); // the size of the second block
    std::free(second);
    std::free(first);
}

CRASH crash_abort()
{
    std::abort();
}

CRASH crash_in_signal()
{
    signal(SIGUSR1, [](int) { crash_null_read(); });
    raise(SIGUSR1);
    s_zero = 0;
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
    constexpr rlim_t limit_B = 1024 * 1024 * 1024;
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
    s_zero = 1 / s_zero;
}

CRASH crash_cut_file()
{
    const QByteArray path = QFile::encodeName(s_folder + "/mapped");
    const int file = open(path.constData(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (ftruncate(file, 4096) != 0)
        return;
    const auto* const memory =
        static_cast<const volatile char*>(mmap(nullptr, 4096, PROT_READ, MAP_SHARED, file, 0));
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

const std::map<std::string, void (*)()> s_kinds{
    {"null_read", crash_null_read},
    {"null_call", crash_null_call},
    {"stack_overflow", crash_stack_overflow},
    {"overflow_in_thread", crash_overflow_in_thread},
    {"heap_corruption", crash_heap_corruption},
    {"abort", crash_abort},
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
    {"nothing", [] {}},
    {"killed", [] { raise(SIGKILL); }},
};

void waitForEver(const char* name)
{
    prctl(PR_SET_NAME, name);
    for (;;)
        std::this_thread::sleep_for(std::chrono::hours(1));
}

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
    const bool isPlain = argc > 3;
    if (!isPlain && !CrashReports::install(s_folder + "/crashes"))
        return 2;
    CrashReports::addSection("tank", [](zeltools::CrashReportWriter& writer) {
        writer.text("water ").number(17).endLine();
    });
    const std::string kind = argv[2];
    if (kind != "nothing") {
        std::thread(waitForEver, "Grinder").detach();
        std::thread(waitForEver, "Pump").detach();
    }
    for (int i = 0; i < 300; ++i)
        LogFormatter(LogLevel::Info).log(Log::Global) << "Line" << i;
    LogFormatter(LogLevel::Info).log(Log::Global).noquote() << "Last words";
    s_kinds.at(kind)();
    return 0;
}
