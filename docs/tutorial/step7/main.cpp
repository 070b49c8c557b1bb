// Step 7: the whole machine, with the service screen on its display:
// step7 /tmp/machine step2/environment
// With a third argument it needs no display: it saves a picture there after the first cup.

#include "drink.h"
#include "linkedgrinder.h"
#include "machine.h"

#include <zeltools/crashreports/crashreports.h>
#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/logging/log.h>
#include <zeltools/path.h>
#include <zeltools/quick/viewedmachines.h>

#include <QGuiApplication>
#include <QPixmap>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QScreen>
#include <QTimer>

using zeltools::declarativestatemachine::DeclarativeStateMachine;
using namespace std::chrono_literals;

namespace
{

void savePicture(QQuickWindow* window, const QString& path)
{
    const QPixmap picture = window->screen()->grabWindow(window->winId());
    QCoreApplication::exit(picture.save(path) ? 0 : 1);
}

// Makes the next cup, or a picture when the screen has shown this one.
void afterCup(DeclarativeStateMachine& drink, QQuickWindow* window, const QString& picture)
{
    if (picture.isEmpty())
        QTimer::singleShot(3s, &drink, &DeclarativeStateMachine::start);
    else
        QTimer::singleShot(1s, window, [=] { savePicture(window, picture); });
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const Machine machine(arguments.value(1), arguments.value(2));
    zeltools::CrashReports::install(Path::instance()->debugLogsDir + QStringLiteral("crashes"));

    //! [run]
    const std::unique_ptr<Grinder> grinder = makeGrinder();
    DeclarativeStateMachine drink(Log::Beverage);
    const auto description = describeDrink(*grinder);
    drink.setDescription(description);
    zeltools::quick::ViewedMachines::offer(description.name, &drink, description);
    QObject::connect(grinder.get(), &Grinder::ready, &drink, &DeclarativeStateMachine::start);

    const QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/machine.qml")));
    auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
    if (window == nullptr)
        return 1;
    //! [run]
    QObject::connect(&drink, &DeclarativeStateMachine::finished, window,
                     [&] { afterCup(drink, window, arguments.value(3)); });
    return QCoreApplication::exec();
}
