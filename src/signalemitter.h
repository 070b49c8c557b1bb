#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace zeltools
{

/// A sender of signals for the application; the library neither emits nor connects them.
class ZELTOOLS_EXPORT SignalEmitter : public QObject
{
    Q_OBJECT

public:
    explicit SignalEmitter(QObject* parent = nullptr);
    ~SignalEmitter() override;

Q_SIGNALS:
    /// Emitted by the application for its own purpose.
    void notify();
};

} // namespace zeltools
