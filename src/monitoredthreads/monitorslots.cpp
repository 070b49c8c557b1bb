#include "monitoredthreads/monitorslots_p.h"

#include <algorithm>
#include <cstring>

namespace monitored_threads
{

namespace
{

std::array<MonitorSlot, MonitorSlots::count> s_slots;
std::mutex s_mutex;
quint64 s_registrations = 0; // under the mutex

// A pointer without a destructor makes a tick cheap.
thread_local MonitorSlot* t_slot = nullptr;

struct ReleaseAtEnd
{
    ~ReleaseAtEnd() { MonitorSlots::releaseOfThread(); }
    bool isUsed = false;
};
thread_local ReleaseAtEnd t_releaseAtEnd;

void setName(MonitorSlot& slot, const QString& name)
{
    const QByteArray utf8 = name.toUtf8();
    int size_B = std::min(int(utf8.size()), MonitorSlot::nameSize_B - 1);
    const auto isInsideCharacter = [&] { return (utf8[size_B] & 0xC0) == 0x80; };
    while (size_B > 0 && size_B < utf8.size() && isInsideCharacter())
        --size_B;
    std::memcpy(slot.name, utf8.constData(), size_t(size_B));
    slot.name[size_B] = '\0';
}

} // namespace

std::array<MonitorSlot, MonitorSlots::count>& MonitorSlots::all()
{
    return s_slots;
}

std::mutex& MonitorSlots::mutex()
{
    return s_mutex;
}

MonitorSlot* MonitorSlots::take(const Monitor* monitor, const QString& name, qint32 thread)
{
    const std::lock_guard<std::mutex> lock(s_mutex);
    auto* const slot = std::find_if(s_slots.begin(), s_slots.end(),
                                    [](const MonitorSlot& each) { return each.registration == 0; });
    if (slot == s_slots.end())
        return nullptr;
    setName(*slot, name);
    slot->monitor = monitor;
    slot->thread = thread;
    slot->process = getpid();
    slot->pausedUntil_ms = 0;
    slot->state = Monitor::State::OnTime;
    slot->tick();
    slot->registration = ++s_registrations;
    return slot;
}

void MonitorSlots::release(MonitorSlot* slot)
{
    if (slot->process != getpid())
        return;
    const std::lock_guard<std::mutex> lock(s_mutex);
    slot->registration = 0;
}

bool MonitorSlots::takeForThread(const Monitor* monitor, const QString& name)
{
    t_slot = take(monitor, name, gettid());
    t_releaseAtEnd.isUsed = true; // constructs the object, so that its destructor runs
    return t_slot != nullptr;
}

void MonitorSlots::releaseOfThread()
{
    if (t_slot != nullptr)
        release(t_slot);
    t_slot = nullptr;
}

bool MonitorSlots::isThreadRegistered()
{
    return t_slot != nullptr;
}

MonitorSlot* MonitorSlots::ofThread(const Monitor* monitor)
{
    MonitorSlot* const slot = t_slot;
    return slot != nullptr && slot->monitor.load(std::memory_order_relaxed) == monitor ? slot
                                                                                       : nullptr;
}

void MonitorSlots::tickFromThread(const Monitor* monitor)
{
    if (MonitorSlot* const slot = ofThread(monitor))
        slot->tick();
}

} // namespace monitored_threads
