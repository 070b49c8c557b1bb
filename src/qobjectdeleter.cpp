#include "qobjectdeleter.h"

QObjectDeleter::QObjectDeleter(QObject* object, bool later)
    : m_object(object)
    , m_later(later)
{
}

QObjectDeleter::~QObjectDeleter()
{
    if (m_object.isNull())
        return;
    if (m_later)
        m_object->deleteLater();
    else
        delete m_object.data();
}
