// The part of WindowsTools that describes call stacks and reports crashes.
#include "windowstools.h"

#include "fatalsignals.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "timelimit.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <memory>

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>
#include <signal.h>
#include <string.h>
#include <sys/uio.h>
#include <unistd.h>

namespace
{

constexpr int s_mostCalls = 64;

QString demangled(const char* symbol)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(symbol, nullptr, nullptr, &status), &std::free);
    return QString::fromLocal8Bit(name ? name.get() : symbol);
}

QString withOffset(const QString& name, quintptr offset)
{
    return name + QLatin1String("+0x") + QString::number(offset, 16);
}

// Leaves out the calls below that address, which belong to WindowsTools.
QStringList describeCallsFrom(const void* returnAddress)
{
    void* calls[s_mostCalls];
    void** const end = calls + ::backtrace(calls, s_mostCalls);
    QStringList described;
    std::transform(std::find(calls, end, returnAddress), end, std::back_inserter(described),
                   WindowsTools::describeCall);
    return described;
}

ssize_t writeName(const char* name)
{
    const auto part = [](const char* text) {
        return iovec{const_cast<char*>(text), ::strlen(text)};
    };
    const iovec parts[]{part("\nFatal signal: "), part(name), part("\n")};
    return ::writev(STDERR_FILENO, parts, std::size(parts));
}

// The handler calls only functions that allocate no memory: writev(2), and, once the unwinder is
// loaded, backtrace() and backtrace_symbols_fd(). The latter two take the lock of the loader, which
// another thread may hold, and standard error may be a pipe that nobody reads. The time limit
// keeps a machine that crashes from hanging there.
void onFatalSignal(int number)
{
    constexpr unsigned limit_s = 5;
    const zeltools::TimeLimit limit(limit_s);
    void* calls[s_mostCalls];
    if (writeName(zeltools::fatalSignal(number).name) > 0)
        ::backtrace_symbols_fd(calls, ::backtrace(calls, s_mostCalls), STDERR_FILENO);
    // SA_RESETHAND has restored the default action, which is taken when this function returns.
    ::raise(number);
}

} // namespace

QString WindowsTools::describeCall(const void* returnAddress)
{
    // The address before the return address is part of the call itself; after a call that never
    // returns, another function may begin.
    const quintptr call = reinterpret_cast<quintptr>(returnAddress) - 1;
    Dl_info info;
    if (::dladdr(reinterpret_cast<void*>(call), &info) == 0)
        return withOffset(QStringLiteral("?"), call);
    const QString path = QString::fromLocal8Bit(info.dli_fname);
    const QString place = withOffset(path.mid(path.lastIndexOf(QLatin1Char('/')) + 1),
                                     call - reinterpret_cast<quintptr>(info.dli_fbase));
    const QString name = info.dli_sname == nullptr
                             ? QStringLiteral("?")
                             : withOffset(demangled(info.dli_sname),
                                          call - reinterpret_cast<quintptr>(info.dli_saddr));
    return name + QLatin1String(" (") + place + QLatin1Char(')');
}

QStringList WindowsTools::callStack()
{
    return describeCallsFrom(__builtin_return_address(0));
}

void WindowsTools::printCallStack()
{
    const QStringList calls = describeCallsFrom(__builtin_return_address(0));
    for (int i = 0; i < calls.size(); ++i)
        LogFormatter(LogLevel::Info).log(Log::Global).noquote().nospace()
            << "#" << i << " " << calls[i];
}

void WindowsTools::installSignalHandlers()
{
    void* call;
    ::backtrace(&call, 1); // loads the unwinder, which allocates memory

    static char stack[1024 * 1024]; // used when the usual stack overflows
    stack_t alternative{};
    alternative.ss_sp = stack;
    alternative.ss_size = sizeof stack;
    ::sigaltstack(&alternative, nullptr);

    struct sigaction action = {};
    action.sa_handler = onFatalSignal;
    action.sa_flags = SA_ONSTACK | static_cast<int>(SA_RESETHAND);
    for (const zeltools::FatalSignal& fatal : zeltools::fatalSignals) {
        if (fatal.number != SIGSYS && fatal.number != SIGTRAP) // Debuggers and sandboxes use them.
            ::sigaction(fatal.number, &action, nullptr);
    }
}
