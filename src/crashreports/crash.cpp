#include "crashreports/crash_p.h"

#include "crashreports/crashreportwriter.h"
#include "crashreports/crashsections_p.h"
#include "crashreports/machinecontext_p.h"
#include "crashreports/moduletable_p.h"
#include "crashreports/threadstacks_p.h"
#include "fatalsignals.h"
#include "logging/logtail.h"

#include <iterator>

#include <time.h>

namespace zeltools
{

namespace
{

qint64 milliseconds(const timespec& time)
{
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

qint64 now_ms(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return milliseconds(now);
}

// Whether the signal comes from an instruction of the process, and not from kill() or abort(), and
// the processor has told the address. It tells none for a pointer that no process can have.
bool hasAddress(const siginfo_t& signal)
{
    return signal.si_code > 0 && signal.si_code != SI_KERNEL && signal.si_signo != SIGABRT &&
           signal.si_signo != SIGSYS;
}

void writeSignal(const siginfo_t& signal, CrashReportWriter& writer)
{
    writer.text("signal ").number(signal.si_signo);
    writer.text(" ").text(fatalSignal(signal.si_signo).name).endLine();
    writer.text("code ").number(signal.si_code).endLine();
    if (hasAddress(signal))
        writer.text("address ").hex(reinterpret_cast<quintptr>(signal.si_addr)).endLine();
}

void writeSummary(const Crash& crash, CrashReportWriter& writer)
{
    writer.beginHeading().text("crash").endHeading();
    if (crash.signal != nullptr)
        writeSignal(*crash.signal, writer);
    writer.text("thread ").number(crash.thread).endLine();
    writer.text("time ").number(now_ms(CLOCK_REALTIME)).endLine();
    writer.text("uptime ").number(now_ms(CLOCK_BOOTTIME) - milliseconds(crash.started)).endLine();
    if (*crash.reason != '\0')
        writer.text("reason ").text(crash.reason).endLine();
}

void writeRegisters(const ucontext_t& context, CrashReportWriter& writer)
{
    writer.beginHeading().text("registers").endHeading();
    for (size_t i = 0; i < std::size(registerNames); ++i)
        writer.text(registerNames[i]).text(" ").hex(registerValue(context, i)).endLine();
}

void writeLog(CrashReportWriter& writer)
{
    writer.beginHeading().text("log").endHeading();
    LogTail::read(
        [](void* argument, const char* line, int size) {
            static_cast<CrashReportWriter*>(argument)->text(line, size_t(size)).endLine();
        },
        &writer);
}

} // namespace

void writeCrash(const Crash& crash, CrashReportWriter& writer)
{
    writeSummary(crash, writer);
    writer.flush();
    if (crash.context != nullptr)
        writeRegisters(*crash.context, writer);
    writer.flush();
    writer.beginHeading().text("modules").endHeading();
    writeModules(writer);
    writer.flush();
    writeLog(writer);
    writer.flush();
    writeCrashedStack(crash, writer);
    writeOtherStacks(crash.thread, writer);
    CrashSections::write(writer);
    writer.beginHeading().text("end").endHeading();
    writer.flush();
}

} // namespace zeltools
