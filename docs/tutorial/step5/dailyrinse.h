#pragma once

#include <zeltools/envvar/envvarstring.h>
#include <zeltools/system/datetimemanager.h>

#include <memory>

namespace switches
{
extern zeltools::envvar::EnvVarString clock;
}

/// The clock of the machine: that of the system, or a simulated one if the switch CLOCK has the
/// address of its simulator.
std::unique_ptr<zeltools::system::DateTimeManager> makeClock();

//! [class]
/// Rinses the machine when a new day begins. A clock that is set back does not rinse.
class DailyRinse : public QObject
{
    Q_OBJECT

public:
    explicit DailyRinse(zeltools::system::DateTimeManager& clock);

Q_SIGNALS:
    void rinsed();

private:
    void onDateTimeChanged();

    zeltools::system::DateTimeManager& m_clock;
    QDate m_day;
};
//! [class]
