#include "crashreports/stackrequest_p.h"

#include "crashreports/machinecontext_p.h"
#include "stacksignal.h"

#include <algorithm>
#include <atomic>
#include <cerrno>

#include <execinfo.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zeltools
{

// The thread and the state are one value. A free slot has the value 0.
struct StackRequest::Slot
{
    enum State : quint64 { Asked = 1, Writing, Answered, Abandoned };
    static_assert(std::atomic<quint64>::is_always_lock_free);

    static quint64 value(pid_t thread, State state) { return quint64(thread) << 3 | state; }
    bool change(quint64 from, quint64 to) { return content.compare_exchange_strong(from, to); }

    std::atomic<quint64> content{0};
    // Zero like the rest, so that no code runs at the start.
    void* calls[mostCalls]{};
    int count = 0;
};

StackRequest::Slot StackRequest::s_slots[mostRequests];

namespace
{

// Makes the interrupted instruction the first call. It comes after the calls of the handler, or not
// at all if the unwinder knows nothing about the code there. In that case the handler's own calls
// stay, since a sanitizer puts calls of its own between them and the calls of the thread.
int beginWith(quintptr interrupted, void** calls, int count)
{
    if (interrupted == 0 || count == 0)
        return count;
    void** const end = calls + count;
    void** const first = std::find(calls, end, reinterpret_cast<void*>(interrupted));
    if (first != end)
        return int(std::copy(first, end, calls) - calls);
    calls[0] = reinterpret_cast<void*>(interrupted);
    return count;
}

} // namespace

void StackRequest::prepare()
{
    void* call = nullptr;
    backtrace(&call, 1); // loads the unwinder, which allocates memory

    struct sigaction action = {};
    action.sa_sigaction = onSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_RESTART;
    sigaction(stackSignal(), &action, nullptr);
}

StackRequest::StackRequest(pid_t thread)
    : m_thread(thread)
{
    const auto isTaken = [this](Slot& slot) {
        return slot.change(0, Slot::value(m_thread, Slot::Asked));
    };
    Slot* const slot = std::find_if(s_slots, s_slots + mostRequests, isTaken);
    if (slot == s_slots + mostRequests)
        return;
    m_slot = slot;
    if (syscall(SYS_tgkill, getpid(), m_thread, stackSignal()) == 0)
        return;
    m_slot->content = 0;
    m_slot = nullptr;
}

StackRequest::~StackRequest()
{
    if (m_slot != nullptr && !m_slot->change(Slot::value(m_thread, Slot::Asked), 0) &&
        !m_slot->change(Slot::value(m_thread, Slot::Writing),
                        Slot::value(m_thread, Slot::Abandoned)))
        m_slot->content = 0;
}

// One signal may come for several requests.
void StackRequest::onSignal(int, siginfo_t*, void* context)
{
    const int keptError = errno;
    const auto thread = pid_t(syscall(SYS_gettid));
    const quintptr interrupted = programCounter(*static_cast<const ucontext_t*>(context));
    for (Slot& slot : s_slots) {
        if (!slot.change(Slot::value(thread, Slot::Asked), Slot::value(thread, Slot::Writing)))
            continue;
        slot.count = beginWith(interrupted, slot.calls, backtrace(slot.calls, mostCalls));
        if (!slot.change(Slot::value(thread, Slot::Writing), Slot::value(thread, Slot::Answered)))
            slot.content = 0; // abandoned
    }
    errno = keptError;
}

int StackRequest::wait(const timespec& deadline, quintptr (&calls)[mostCalls]) const
{
    if (m_slot == nullptr)
        return 0;
    while (m_slot->content != Slot::value(m_thread, Slot::Answered)) {
        if (hasPassed(deadline))
            return 0;
        const timespec pause{0, 100000};
        nanosleep(&pause, nullptr);
    }
    std::transform(m_slot->calls, m_slot->calls + m_slot->count, calls,
                   [](void* call) { return reinterpret_cast<quintptr>(call); });
    return m_slot->count;
}

timespec monotonicDeadline(int delay_ms)
{
    constexpr long second_ns = 1000000000;
    constexpr long millisecond_ns = 1000000;
    timespec deadline;
    clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_sec += delay_ms / 1000;
    deadline.tv_nsec += delay_ms % 1000 * millisecond_ns;
    deadline.tv_sec += deadline.tv_nsec / second_ns;
    deadline.tv_nsec %= second_ns;
    return deadline;
}

bool hasPassed(const timespec& deadline)
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec > deadline.tv_sec ||
           (now.tv_sec == deadline.tv_sec && now.tv_nsec >= deadline.tv_nsec);
}

} // namespace zeltools
