#include "quick/clock.h"

#include "quick/access.h"
#include "quick/systemclock_p.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QTime>

#include <cstdlib>

namespace zeltools::quick
{

using system::DateTimeManager;

Clock::Clock(QObject* parent)
    : QObject(parent)
{
    follow();
}

Clock::~Clock() = default;

void Clock::setDateTimeManager(DateTimeManager* manager)
{
    if (manager == m_manager)
        return;
    source()->disconnect(this);
    m_manager = manager;
    follow();
    Q_EMIT dateTimeManagerChanged();
    Q_EMIT dateTimeChanged();
}

DateTimeManager* Clock::source() const
{
    return m_manager ? m_manager.data() : systemClock();
}

void Clock::follow()
{
    connect(source(), &DateTimeManager::dateTimeChanged, this, &Clock::dateTimeChanged);
    if (!m_manager)
        return;
    connect(m_manager, &QObject::destroyed, this, [this] {
        m_manager.clear();
        follow();
        Q_EMIT dateTimeManagerChanged();
        Q_EMIT dateTimeChanged();
    });
}

QDateTime Clock::dateTime() const
{
    return source()->currentDateTime();
}

QString Clock::timeZone() const
{
    return source()->timeZoneHelper()->currentTimeZone();
}

QString Clock::offsetText() const
{
    const int offset_s = dateTime().offsetFromUtc();
    const QTime offset = QTime(0, 0).addSecs(std::abs(offset_s));
    return QLatin1String(offset_s < 0 ? "UTC-" : "UTC+") + offset.toString(QStringLiteral("hh:mm"));
}

QString Clock::set(const QDateTime& dateTime)
{
    const Access& access = *Access::instance();
    QString refusal = access.refusal(Access::Operator);
    if (!refusal.isEmpty())
        return refusal;
    if (!dateTime.isValid())
        return tr("This is not a date and time.");
    const QDateTime before = this->dateTime();
    QElapsedTimer timer;
    timer.start();
    source()->setDateTime(dateTime, true);
    // The application's manager may set a clock of its own, so that only the result counts.
    constexpr qint64 longestCall_ms = 2000;
    if (std::abs(dateTime.msecsTo(this->dateTime())) > longestCall_ms)
        return tr("The clock could not be set.");
    // A developer's computer keeps its time, which may be the wanted one.
    constexpr qint64 leastChange_ms = 100;
    if (std::abs(before.msecsTo(this->dateTime()) - timer.elapsed()) < leastChange_ms)
        return {};
    const auto text = [](const QDateTime& time) {
        return QLocale::c().toString(time, QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    };
    access.recordChange(
        QStringLiteral("Clock set from %1 to %2").arg(text(before), text(dateTime)));
    return {};
}

QString Clock::setTimeZone(const QString& timeZone)
{
    const Access& access = *Access::instance();
    QString refusal = access.refusal(Access::Operator);
    if (!refusal.isEmpty())
        return refusal;
    const QString before = this->timeZone();
    if (!source()->timeZoneHelper()->trySetCurrentTimeZone(timeZone))
        return tr("The time zone could not be switched.");
    if (timeZone != before)
        access.recordChange(
            QStringLiteral("Time zone switched from %1 to %2").arg(before, timeZone));
    return {};
}

} // namespace zeltools::quick
