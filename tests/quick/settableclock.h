#pragma once

#include "system/datetimemanager.h"

#include <QElapsedTimer>

/// The clock of a host that keeps a time of its own, which starts at a fixed moment. Setting it
/// leaves the clock of the system alone.
class SettableClock : public zeltools::system::DateTimeManager
{
    Q_OBJECT

public:
    SettableClock() { m_sinceBase.start(); }

    QDateTime currentDateTime() const override { return m_base.addMSecs(m_sinceBase.elapsed()); }
    void setDateTime(const QDateTime& dateTime, bool syncRtc) override
    {
        Q_UNUSED(syncRtc)
        m_base = dateTime;
        m_sinceBase.start();
        Q_EMIT dateTimeChanged();
    }

private:
    QDateTime m_base{QDate(2024, 1, 31), QTime(9, 58)};
    QElapsedTimer m_sinceBase;
};
