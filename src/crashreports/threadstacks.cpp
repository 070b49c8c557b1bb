#include "crashreports/threadstacks_p.h"

#include "crashreports/crashreportwriter.h"
#include "crashreports/machinecontext_p.h"
#include "crashreports/memorymap_p.h"
#include "crashreports/stackrequest_p.h"
#include "crashreports/threadlist_p.h"

#include <algorithm>
#include <optional>

#include <execinfo.h>

namespace zeltools
{

namespace
{

constexpr int s_mostCalls = StackRequest::mostCalls;

void writeHeading(pid_t thread, const char* remark, CrashReportWriter& writer)
{
    writer.beginHeading().text("stack ").number(thread).text(" ");
    writer.text(ThreadName(thread).text).text(remark).endHeading();
}

void writeCall(const void* call, CrashReportWriter& writer)
{
    writer.hex(reinterpret_cast<quintptr>(call)).endLine();
}

// Writes the calls of this thread, beginning with that address; the calls of the handler come
// before it. Without that address, the unwinder knows nothing about the code there. All calls are
// written if the address is null.
void writeCallsFrom(const void* first, CrashReportWriter& writer)
{
    void* calls[s_mostCalls];
    void** const end = calls + backtrace(calls, s_mostCalls);
    void** const begin = first == nullptr ? calls : std::find(calls, end, first);
    if (begin == end)
        writeCall(first, writer);
    std::for_each(begin, end, [&writer](const void* call) { writeCall(call, writer); });
}

void writeInterruptedCalls(ucontext_t& context, CrashReportWriter& writer)
{
    const quintptr interrupted = programCounter(context);
    if (!isProcessorKnown || MemoryMap::isCode(interrupted))
        return writeCallsFrom(reinterpret_cast<const void*>(interrupted), writer);
    // A call of an address without code, such as null. The unwinder reads this context, and goes on
    // where the call would have returned.
    writeCall(reinterpret_cast<const void*>(interrupted), writer);
    writer.flush();
    const mcontext_t kept = context.uc_mcontext;
    if (returnFromCall(context) && MemoryMap::isCode(programCounter(context)))
        writeCallsFrom(reinterpret_cast<const void*>(programCounter(context)), writer);
    context.uc_mcontext = kept;
}

// A group of threads that are asked at the same time and share a deadline.
class StackGroup
{
public:
    static constexpr int mostThreads = 32;

    bool isFull() const { return m_count == mostThreads; }

    void add(pid_t thread)
    {
        m_threads[m_count] = thread;
        m_requests[m_count].emplace(thread);
        ++m_count;
    }

    void write(CrashReportWriter& writer)
    {
        constexpr int patience_ms = 500;
        const timespec deadline = monotonicDeadline(patience_ms);
        for (int i = 0; i < m_count; ++i) {
            quintptr calls[s_mostCalls];
            const int count = m_requests[i]->wait(deadline, calls);
            writeHeading(m_threads[i], "", writer);
            if (count == 0) {
                writer.text("no answer");
                writer.endLine();
            }
            std::for_each(calls, calls + count,
                          [&writer](quintptr call) { writer.hex(call).endLine(); });
            m_requests[i].reset();
        }
        m_count = 0;
    }

private:
    int m_count = 0;
    pid_t m_threads[mostThreads];
    std::optional<StackRequest> m_requests[mostThreads];
};

} // namespace

void writeCrashedStack(const Crash& crash, CrashReportWriter& writer)
{
    writeHeading(crash.thread, " crashed", writer);
    writer.flush();
    if (crash.context != nullptr)
        writeInterruptedCalls(*crash.context, writer);
    else
        writeCallsFrom(crash.caller, writer);
    writer.flush();
}

void writeOtherStacks(pid_t crashedThread, CrashReportWriter& writer)
{
    constexpr int duration_ms = 2000; // The last group may add 500, within the limit of a report.
    const timespec deadline = monotonicDeadline(duration_ms);
    ThreadList list;
    pid_t thread = list.next();
    while (thread != 0 && !hasPassed(deadline)) {
        StackGroup group;
        for (; thread != 0 && !group.isFull(); thread = list.next()) {
            if (thread != crashedThread)
                group.add(thread);
        }
        group.write(writer);
        writer.flush();
    }
    int missing = 0;
    for (; thread != 0; thread = list.next())
        missing += thread == crashedThread ? 0 : 1;
    if (missing > 0) {
        writer.beginHeading().text("section missing stacks").endHeading();
        writer.number(missing).text(" other threads").endLine();
    }
}

} // namespace zeltools
