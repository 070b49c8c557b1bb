// One cycle by QStateMachine and by a description. Both heat once and end.

#include "boiler.h"

#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/declarativestatemachine/descriptioncheck.h>
#include <zeltools/logging/log.h>

#include <QCoreApplication>
#include <QFinalState>
#include <QState>
#include <QStateMachine>
#include <QTextStream>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;

namespace
{

void runQtMachine(Boiler& boiler)
{
    //! [there]
    QStateMachine machine;
    auto* const heating = new QState(&machine);
    auto* const resting = new QState(&machine);
    auto* const failed = new QFinalState(&machine);
    auto* const done = new QFinalState(&machine);
    QTimer rest;
    rest.setSingleShot(true);
    rest.setInterval(20);

    QObject::connect(heating, &QState::entered, &boiler, &Boiler::heat);
    heating->addTransition(&boiler, &Boiler::hot, resting);
    heating->addTransition(&boiler, &Boiler::failed, failed);
    QObject::connect(resting, &QState::entered, &rest, qOverload<>(&QTimer::start));
    QObject::connect(resting, &QState::exited, &rest, &QTimer::stop);
    resting->addTransition(&rest, &QTimer::timeout, done);

    machine.setInitialState(heating);
    machine.start();
    //! [there]
    QObject::connect(&machine, &QStateMachine::finished, &QCoreApplication::quit);
    QCoreApplication::exec();
}

void runDescription(Boiler& boiler)
{
    //! [here]
    using Transition = TransitionDescription;
    const QString heating = QStringLiteral("Heating");
    const QString resting = QStringLiteral("Resting");
    const QString failed = QStringLiteral("Failed");
    const QString done = QStringLiteral("Done");

    const StateMachineDescription description{
        {{heating,
          [&boiler] { boiler.heat(); },
          {Transition::on(&boiler, SIGNAL(hot()), resting),
           Transition::on(&boiler, SIGNAL(failed()), failed)}},
         {resting, {}, {Transition::after(20ms, done)}},
         {failed, {}, {}, {}, {}, StateDescription::Final},
         {done}}};
    Q_ASSERT(findProblems(description).isEmpty());

    DeclarativeStateMachine machine(Log::Beverage);
    machine.setDescription(description);
    machine.start();
    //! [here]
    QObject::connect(&machine, &DeclarativeStateMachine::finished, &QCoreApplication::quit);
    QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Boiler boiler;
    runQtMachine(boiler);
    runDescription(boiler);
    QTextStream(stdout) << boiler.heatings() << " heatings\n";
}
