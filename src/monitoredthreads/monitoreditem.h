#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace monitored_threads
{

/// An item that the Monitor watches under a name. It does nothing, because the Monitor is switched
/// off.
class ZELTOOLS_EXPORT MonitoredItem : public QObject
{
    Q_OBJECT

public:
    MonitoredItem(QObject* parent, const QString& name);
    ~MonitoredItem() override;
};

} // namespace monitored_threads
