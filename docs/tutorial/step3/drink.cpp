#include "drink.h"

#include "grinder.h"
#include "machine.h"

#include <zeltools/logging/logformatter.h>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using Transition = TransitionDescription;

namespace
{

void logDrink()
{
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::DispensedDrinkEvent)
        << "Coffee of" << switches::dose_g() << "g";
}

void logJam()
{
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::WarningEvent) << "The grinder is jammed";
}

} // namespace

//! [describe]
StateMachineDescription describeDrink(Grinder& grinder)
{
    const QString heating = QStringLiteral("Heating");
    const QString grinding = QStringLiteral("Grinding");
    const QString brewing = QStringLiteral("Brewing");
    const QString jammed = QStringLiteral("Jammed");
    const QString ready = QStringLiteral("Ready");

    return {{{heating, {}, {Transition::after(20ms, grinding)}},
             {grinding,
              [&grinder] { grinder.grind(switches::dose_g()); },
              {Transition::on(&grinder, SIGNAL(ground()), brewing),
               Transition::on(&grinder, SIGNAL(jammed()), jammed)}},
             {brewing, {}, {Transition::after(40ms, ready)}},
             {jammed, logJam, {}, {}, {}, StateDescription::Final},
             {ready, logDrink}},
            QStringLiteral("A cup of coffee"),
            {{&grinder, SIGNAL(ground())}, {&grinder, SIGNAL(jammed())}}};
}
//! [describe]
