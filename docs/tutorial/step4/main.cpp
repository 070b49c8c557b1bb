// Step 4: a device that is asked and answers. Run it beside its simulator:
// zelctl sim serve step4/grinder.script tcpserver/127.0.0.1/8140
// GRINDER=tcpclient/127.0.0.1/8140 step4 /tmp/machine step2/environment

#include "drink.h"
#include "linkedgrinder.h"
#include "machine.h"

#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/logging/log.h>

#include <QCoreApplication>

using zeltools::declarativestatemachine::DeclarativeStateMachine;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const Machine machine(arguments.value(1), arguments.value(2));

    //! [run]
    const std::unique_ptr<Grinder> grinder = makeGrinder();
    DeclarativeStateMachine drink(Log::Beverage);
    drink.setDescription(describeDrink(*grinder));
    QObject::connect(grinder.get(), &Grinder::ready, &drink, &DeclarativeStateMachine::start);
    //! [run]
    QObject::connect(&drink, &DeclarativeStateMachine::finished, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
