#pragma once

#include <QtGlobal>

#include <signal.h>
#include <time.h>

namespace zeltools
{

/// Asks a thread of this process for its call stack. The thread is interrupted by stackSignal() and
/// writes the addresses into memory that has been set aside. Several threads can be asked at once.
///
/// After prepare(), all functions are async-signal-safe: they take no lock and no memory.
class StackRequest
{
public:
    static constexpr int mostCalls = 64;
    static constexpr int mostRequests = 64; ///< at the same time

    /// Loads the unwinder and installs the handler of the signal.
    static void prepare();

    explicit StackRequest(pid_t thread);
    /// A thread that answers later does no harm.
    ~StackRequest();
    Q_DISABLE_COPY(StackRequest)

    /// Waits until the moment of CLOCK_MONOTONIC for the answer. Writes the addresses, the
    /// innermost first, and returns their number. Returns 0 without an answer: the thread has
    /// ended, blocks the signal or hangs in the kernel, or there are too many requests.
    ///
    /// The first address is that of the interrupted instruction, the others are return addresses.
    int wait(const timespec& deadline, quintptr (&calls)[mostCalls]) const;

private:
    struct Slot;

    static void onSignal(int number, siginfo_t* info, void* context);

    static Slot s_slots[mostRequests];

    const pid_t m_thread;
    Slot* m_slot = nullptr;
};

/// The moment of CLOCK_MONOTONIC that is so many milliseconds away.
timespec monotonicDeadline(int delay_ms);
/// Whether that moment of CLOCK_MONOTONIC has come.
bool hasPassed(const timespec& deadline);

} // namespace zeltools
