// Reads arbitrary bytes as a crash report, and as what follows the first line of one. No list may
// exceed its limit, and a report that is cut is never complete.

#include "fuzz.h"
#include <zeltools/crashreports/crashreport.h>

using zeltools::CrashReport;

namespace
{

void checkLimits(const CrashReport& report)
{
    require(report.process >= 0 && report.signal >= 0 && report.time_ms >= 0);
    require(report.registers.size() <= CrashReport::mostCalls);
    require(report.modules.size() <= CrashReport::mostModules);
    require(report.stacks.size() <= CrashReport::mostStacks);
    require(report.monitoredThreads.size() <= CrashReport::mostStacks);
    require(report.log.size() <= CrashReport::mostLines);
    require(report.sections.size() <= CrashReport::mostSections);
    for (const CrashReport::Stack& stack : report.stacks) {
        require(stack.calls.size() <= CrashReport::mostCalls);
        for (const quint64 call : stack.calls) {
            const CrashReport::Module* const module = report.moduleAt(call);
            require(module == nullptr || (call >= module->base && call < module->end));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = toBytes(data, size);
    QString error;
    const std::optional<CrashReport> arbitrary = CrashReport::parse(bytes, error);
    require(arbitrary.has_value() == error.isEmpty());

    const QByteArray text = "ZelTools crash report 1\n" + bytes;
    const std::optional<CrashReport> report = CrashReport::parse(text, error);
    require(report.has_value());
    checkLimits(*report);
    if (!report->isComplete)
        return 0;
    const auto end = text.indexOf("\n[end]\n");
    require(end >= 0);
    require(!CrashReport::parse(text.left(end + 6), error)->isComplete);
    return 0;
}
