#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace monitored_threads
{

/// Something that the Monitor would watch under this name, were it not switched off.
class ZELTOOLS_EXPORT MonitoredItem : public QObject
{
    Q_OBJECT

public:
    MonitoredItem(QObject* parent, const QString& name);
    ~MonitoredItem() override;
};

} // namespace monitored_threads
