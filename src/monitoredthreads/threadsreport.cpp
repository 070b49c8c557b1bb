#include "monitoredthreads/threadsreport_p.h"

#include "crashreports/crashreportwriter.h"
#include "monitoredthreads/stalldetector_p.h"

#include <algorithm>

namespace monitored_threads
{

// The mutex of the slots is not available to a signal handler. A slot that is released and taken
// meanwhile gives a line with a mixed name, which still ends within the slot.
void writeMonitoredThreads(zeltools::CrashReportWriter& writer)
{
    const qint64 now_ms = monitorNow_ms();
    for (const MonitorSlot& slot : MonitorSlots::all()) {
        if (slot.registration == 0 || slot.process != getpid())
            continue;
        char name[MonitorSlot::nameSize_B];
        std::replace_copy(std::begin(slot.name), std::end(slot.name), name, '|', '/');
        name[MonitorSlot::nameSize_B - 1] = '\0';
        writer.text(name).text("|").number(slot.thread).text("|").text(stateText(slot.state));
        writer.text("|").number(std::max<qint64>(now_ms - slot.ticked_ms, 0)).endLine();
    }
}

} // namespace monitored_threads
