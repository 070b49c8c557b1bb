#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QPointer>

/// Deletes an object at the end of a scope: immediately, or through the event loop of its thread if
/// `later` is true. It does nothing for null and for an object that has already been deleted.
class ZELTOOLS_EXPORT QObjectDeleter
{
public:
    /// The object may be null.
    QObjectDeleter(QObject* object, bool later);
    /// Deletes the object if it still exists.
    ~QObjectDeleter();
    Q_DISABLE_COPY(QObjectDeleter)

private:
    QPointer<QObject> m_object;
    bool m_later;
};
