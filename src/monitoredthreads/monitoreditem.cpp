#include "monitoredthreads/monitoreditem.h"

namespace monitored_threads
{

MonitoredItem::MonitoredItem(QObject* parent, const QString&)
    : QObject(parent)
{
}

MonitoredItem::~MonitoredItem() = default;

} // namespace monitored_threads
