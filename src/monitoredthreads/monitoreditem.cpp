#include "monitoredthreads/monitoreditem.h"

#include "monitoredthreads/activemonitor_p.h"

namespace monitored_threads
{

MonitoredItem::MonitoredItem(QObject* parent, const QString& name)
    : MonitoredItem(parent, name, *Monitor::instance())
{
}

MonitoredItem::MonitoredItem(QObject* parent, const QString& name, Monitor& monitor)
    : QObject(parent)
    , m_slot(monitor.isEnabled() ? monitor.active()->registerItem(name) : nullptr)
{
}

MonitoredItem::~MonitoredItem()
{
    if (m_slot != nullptr)
        MonitorSlots::release(m_slot);
}

void MonitoredItem::tick()
{
    if (m_slot != nullptr)
        m_slot->tick();
}

} // namespace monitored_threads
