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

// The state and the ticket of the request are one value, so that a late answer to an earlier
// request is recognised. A free slot has the value 0.
struct StackRequest::Slot
{
    enum State : quintptr { Asked = 1, Writing, Answered, Abandoned, StateMask = 7 };
    static_assert(std::atomic<quintptr>::is_always_lock_free);

    bool change(quintptr from, quintptr to) { return value.compare_exchange_strong(from, to); }

    std::atomic<quintptr> value{0};
    void* calls[mostCalls];
    int count;
};

StackRequest::Slot StackRequest::s_slots[mostRequests];

namespace
{

constexpr quintptr s_placeFactor = 8;
constexpr quintptr s_numberFactor = s_placeFactor * StackRequest::mostRequests;
std::atomic<quintptr> s_lastNumber{0};

bool hasPassed(const timespec& deadline)
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec > deadline.tv_sec ||
           (now.tv_sec == deadline.tv_sec && now.tv_nsec >= deadline.tv_nsec);
}

// Removes the calls of the handler, which come before the interrupted instruction.
int removeHandler(void** calls, int count, quintptr interrupted)
{
    if (interrupted == 0)
        return count;
    void** const end = calls + count;
    void** const first = std::find(calls, end, reinterpret_cast<void*>(interrupted));
    if (first != end)
        return int(std::copy(first, end, calls) - calls);
    calls[0] = reinterpret_cast<void*>(interrupted); // the unwinder knows nothing about this code
    return 1;
}

bool sendRequest(pid_t thread, quintptr ticket)
{
    siginfo_t info{};
    info.si_signo = stackSignal();
    info.si_code = SI_QUEUE;
    info.si_pid = getpid();
    info.si_uid = getuid();
    info.si_value.sival_ptr = reinterpret_cast<void*>(ticket);
    return syscall(SYS_rt_tgsigqueueinfo, getpid(), thread, stackSignal(), &info) == 0;
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
{
    const quintptr number = ++s_lastNumber;
    for (int place = 0; place < mostRequests; ++place) {
        m_ticket = number * s_numberFactor + quintptr(place) * s_placeFactor;
        if (!s_slots[place].change(0, m_ticket | Slot::Asked))
            continue;
        if (sendRequest(thread, m_ticket))
            m_slot = &s_slots[place];
        else
            s_slots[place].value = 0;
        return;
    }
}

StackRequest::~StackRequest()
{
    if (m_slot != nullptr && !m_slot->change(m_ticket | Slot::Asked, 0) &&
        !m_slot->change(m_ticket | Slot::Writing, m_ticket | Slot::Abandoned))
        m_slot->value = 0;
}

void StackRequest::onSignal(int, siginfo_t* info, void* context)
{
    const int keptError = errno;
    const auto ticket = reinterpret_cast<quintptr>(info->si_value.sival_ptr);
    Slot& slot = s_slots[ticket / s_placeFactor % mostRequests];
    if (info->si_code == SI_QUEUE && slot.change(ticket | Slot::Asked, ticket | Slot::Writing)) {
        slot.count = removeHandler(slot.calls, backtrace(slot.calls, mostCalls),
                                   programCounter(*static_cast<const ucontext_t*>(context)));
        if (!slot.change(ticket | Slot::Writing, ticket | Slot::Answered))
            slot.value = 0; // abandoned
    }
    errno = keptError;
}

int StackRequest::wait(const timespec& deadline, quintptr (&calls)[mostCalls]) const
{
    if (m_slot == nullptr)
        return 0;
    while (m_slot->value != (m_ticket | Slot::Answered)) {
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

} // namespace zeltools
