#include "dailyrinse.h"

#include <zeltools/logging/logformatter.h>
#include <zeltools/system/simulateddatetimemanager.h>

using namespace zeltools::envvar;
using zeltools::system::DateTimeManager;
using zeltools::system::SimulatedDateTimeManager;

EnvVarString switches::clock("CLOCK",
                             "Address of the simulated clock, e.g. tcpserver/127.0.0.1/8141",
                             General, Visible, nullptr);

//! [make]
std::unique_ptr<DateTimeManager> makeClock()
{
    if (switches::clock().isEmpty())
        return std::make_unique<DateTimeManager>();
    return std::make_unique<SimulatedDateTimeManager>(switches::clock());
}
//! [make]

//! [rinse]
DailyRinse::DailyRinse(DateTimeManager& clock)
    : m_clock(clock)
    , m_day(clock.currentDateTime().date())
{
    connect(&clock, &DateTimeManager::dateTimeChanged, this, &DailyRinse::onDateTimeChanged);
}

void DailyRinse::onDateTimeChanged()
{
    const QDate day = m_clock.currentDateTime().date();
    const bool isNewDay = day > m_day;
    m_day = day;
    if (!isNewDay)
        return;
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::CleaningEvent).noquote()
        << "Rinsed on" << day.toString(Qt::ISODate);
    Q_EMIT rinsed();
}
//! [rinse]
