#include "logging/ringwriter_p.h"

#include "logging/ringwarning_p.h"
#include "signalsblocked.h"

#include <system_error>
#include <utility>

#include <linux/futex.h>
#include <linux/time_types.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace
{

// While lines keep coming, the writer looks for them by itself, so that no caller needs a system
// call to wake it. It looks less and less often, and after so many rounds it sleeps until it is
// woken.
constexpr int s_longSleep = 7;

thread_local bool s_isHere = false;

void waitForChange(std::atomic<quint32>& word, quint32 expected, std::chrono::milliseconds timeout)
{
    // This system call takes the kernel's own record of a time. On 32 bits, that of the C library
    // may have wider seconds.
    const __kernel_old_timespec time = {__kernel_old_time_t(timeout.count() / 1000),
                                        long(timeout.count() % 1000 * 1000000)};
    syscall(SYS_futex, &word, FUTEX_WAIT, expected, timeout.count() > 0 ? &time : nullptr, nullptr,
            0);
}

} // namespace

RingWriter::RingWriter(RingFile& ring, RingPlaces& places, SinkList& sinks,
                       std::function<void()> damaged)
    : m_ring(ring)
    , m_places(places)
    , m_sinks(sinks)
    , m_damaged(std::move(damaged))
{
}

bool RingWriter::start(QString& error)
{
    const zeltools::SignalsBlocked blocked;
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error& failure) {
        error = QString::fromLocal8Bit(failure.what());
        return false;
    }
    pthread_setname_np(m_thread.native_handle(), "Log writer");
    return true;
}

void RingWriter::end()
{
    m_isEnded = true;
    wake();
    m_thread.join();
}

bool RingWriter::isHere()
{
    return s_isHere;
}

void RingWriter::wake()
{
    std::atomic<quint32>& asleep = m_ring.header().isWriterAsleep;
    asleep = 0;
    syscall(SYS_futex, &asleep, FUTEX_WAKE, 1, nullptr, nullptr, 0);
}

void RingWriter::wakeFromLongSleep()
{
    if (m_ring.header().isWriterAsleep != 0)
        wake();
}

void RingWriter::run()
{
    s_isHere = true;
    RingDrain drain(m_ring, m_places, m_sinks);
    int idleRounds = 0;
    std::atomic<quint32>& asleep = m_ring.header().isWriterAsleep;
    while (!m_isEnded) {
        const bool isLong = idleRounds >= s_longSleep;
        asleep = isLong ? 1 : 0; // before the look into the ring, so that no line is missed
        const RingDrain::Result result = drain.deliverNext();
        if (result == RingDrain::Result::Damage) {
            m_isEnded = true;
            return m_damaged();
        }
        if (result == RingDrain::Result::Delivered)
            idleRounds = 0;
        else if (isLong)
            waitForChange(asleep, 1, m_hasNewLosses ? 100ms : 0ms);
        else
            waitForChange(asleep, 0, 1ms * (1 << idleRounds++));
        if (m_hasNewLosses)
            tellLosses();
    }
}

// At most one line a second, and only where half of the ring is free.
void RingWriter::tellLosses()
{
    const auto now = std::chrono::steady_clock::now();
    if (m_ring.lines().used() > m_ring.capacity() / 2 || (now < m_lossesTold + 1s && !m_isInHurry))
        return;
    m_lossesTold = now;
    m_hasNewLosses = false;
    if (!ringwarning::addLosses(m_ring))
        m_hasNewLosses = true;
}
