// Step 5: the clock and the history of events. Run it with the simulator of the clock:
// zelctl clock tcpclient/127.0.0.1/8141 --set "2024/03/01 23:59:58"
// CLOCK=tcpserver/127.0.0.1/8141 step5 /tmp/machine step2/environment

#include "dailyrinse.h"
#include "drink.h"
#include "linkedgrinder.h"
#include "machine.h"

#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logmanager.h>

#include <QCoreApplication>
#include <QTextStream>

using zeltools::declarativestatemachine::DeclarativeStateMachine;
using zeltools::system::DateTimeManager;

namespace
{

//! [history]
void printHistory()
{
    LogManager* const manager = LogManager::instance();
    constexpr int page = 0, eventsPerPage = 10; // the newest page
    manager->updateEventsText(LogManager::AllEvent, {}, {}, page, eventsPerPage);
    QTextStream(stdout) << "The history of this machine:\n" << manager->eventsText() << '\n';
}
//! [history]

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const Machine machine(arguments.value(1), arguments.value(2));

    const std::unique_ptr<Grinder> grinder = makeGrinder();
    DeclarativeStateMachine drink(Log::Beverage);
    drink.setDescription(describeDrink(*grinder));
    QObject::connect(grinder.get(), &Grinder::ready, &drink, &DeclarativeStateMachine::start);
    QObject::connect(&drink, &DeclarativeStateMachine::finished, &QCoreApplication::quit);
    QCoreApplication::exec(); // one cup

    //! [run]
    const std::unique_ptr<DateTimeManager> clock = makeClock();
    const DailyRinse rinse(*clock);
    QObject::connect(&rinse, &DailyRinse::rinsed, &QCoreApplication::quit);
    QCoreApplication::exec();
    printHistory();
    //! [run]
}
