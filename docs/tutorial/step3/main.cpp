// Step 3: a drink as a state machine. Run it like step 2: step3 /tmp/machine step2/environment
// With a third argument it also writes the machine there, in the language of Graphviz.

#include "drink.h"
#include "machine.h"
#include "timedgrinder.h"

#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/declarativestatemachine/descriptioncheck.h>
#include <zeltools/declarativestatemachine/dotwriter.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>

#include <QCoreApplication>
#include <QFile>

using namespace zeltools::declarativestatemachine;

namespace
{

bool writePicture(const StateMachineDescription& description, const QString& path)
{
    QFile file(path);
    const QByteArray dot = toDot(description).toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(dot) == dot.size();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const Machine machine(arguments.value(1), arguments.value(2));

    //! [run]
    TimedGrinder grinder;
    const StateMachineDescription description = describeDrink(grinder);
    const QStringList problems = findProblems(description);
    for (const QString& problem : problems)
        LogFormatter(LogLevel::Error).log(Log::Beverage).noquote() << problem;

    DeclarativeStateMachine drink(Log::Beverage);
    drink.setDescription(description);
    QObject::connect(&grinder, &Grinder::ready, &drink, &DeclarativeStateMachine::start);
    QObject::connect(&drink, &DeclarativeStateMachine::finished, &QCoreApplication::quit);
    QCoreApplication::exec();
    //! [run]

    const QString picture = arguments.value(3);
    return picture.isEmpty() || writePicture(description, picture) ? 0 : 1;
}
