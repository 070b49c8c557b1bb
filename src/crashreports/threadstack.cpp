#include "crashreports/threadstack.h"

#include "crashreports/stackrequest_p.h"
#include "windowstools.h"

#include <algorithm>
#include <mutex>

namespace zeltools
{

static_assert(ThreadStack::mostCalls == StackRequest::mostCalls);

ThreadStack ThreadStack::of(qint32 thread, std::chrono::milliseconds patience)
{
    static std::once_flag isPrepared;
    std::call_once(isPrepared, StackRequest::prepare);
    ThreadStack stack;
    stack.thread = thread;
    quintptr calls[StackRequest::mostCalls];
    const StackRequest request(thread);
    const int count = request.wait(monotonicDeadline(int(patience.count())), calls);
    std::copy_n(calls, count, std::back_inserter(stack.calls));
    return stack;
}

QStringList ThreadStack::described() const
{
    QStringList described;
    for (const quintptr call : calls) {
        // The first address is not a return address: the call before it may be in another function.
        const quintptr returnAddress = described.isEmpty() ? call + 1 : call;
        described.append(WindowsTools::describeCall(reinterpret_cast<void*>(returnAddress)));
    }
    return described;
}

} // namespace zeltools
