#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QPointer>

/// Deletes an object at the end of a scope: at once, or through the event loop of its thread when
/// `later` is true. Does nothing for null, nor for an object that somebody else has deleted.
class ZELTOOLS_EXPORT QObjectDeleter
{
public:
    QObjectDeleter(QObject* object, bool later);
    ~QObjectDeleter();
    Q_DISABLE_COPY(QObjectDeleter)

private:
    QPointer<QObject> m_object;
    bool m_later;
};
