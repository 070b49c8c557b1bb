#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace monitored_threads
{

class Monitor;
struct MonitorSlot;

/// An item that the Monitor watches under a name while it lives, such as a job that moves between
/// threads. Something has to call tick() in each tick period; the tick period and the limits are
/// those of the threads. It does nothing if the Monitor is switched off.
class ZELTOOLS_EXPORT MonitoredItem : public QObject
{
    Q_OBJECT

public:
    /// Registers the item under the name until its destruction.
    MonitoredItem(QObject* parent, const QString& name);
    /// Removes the item from the monitor.
    ~MonitoredItem() override;

public Q_SLOTS:
    /// Reports that the item works. Any thread may call it while the item lives.
    void tick();

protected:
    /// Registers the item with another monitor.
    MonitoredItem(QObject* parent, const QString& name, Monitor& monitor);

private:
    MonitorSlot* const m_slot; // null if the item is not watched
};

} // namespace monitored_threads
