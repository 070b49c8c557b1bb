// The code of docs/service-screen.md and docs/models.md: an application with a state machine and
// items of QML, whose files are the arguments.

#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QDir>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>
#include <QTextStream>
#include <QTimer>

//! [offer]
#include <zeltools/quick/viewedmachines.h>

using namespace zeltools::declarativestatemachine;

void startMachine(DeclarativeStateMachine& machine, const StateMachineDescription& description)
{
    machine.setDescription(description);
    zeltools::quick::ViewedMachines::offer(QStringLiteral("Drink"), &machine, description);
    machine.start();
}
//! [offer]

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    Path::instance()->init(QDir::currentPath() + QStringLiteral("/software/host"),
                           QStringLiteral("default"), QStringLiteral("default"));
    LogManager::initialize();
    DeclarativeStateMachine machine(Log::Beverage);
    startMachine(machine, {{{QStringLiteral("Heating")}, {QStringLiteral("Ready")}}});

    const QStringList files = QGuiApplication::arguments().mid(1);
    std::vector<std::unique_ptr<QQuickView>> views;
    for (const QString& file : files) {
        views.push_back(std::make_unique<QQuickView>(QUrl::fromLocalFile(file)));
        if (views.back()->rootObject() == nullptr)
            return 1;
        views.back()->rootObject()->setProperty("folder", QDir::currentPath());
        views.back()->show();
    }
    LogFormatter(LogLevel::Warning).log(Log::GrinderRegulation) << "The grinder is slow";
    QTimer::singleShot(1000, &application, [&views] {
        QTextStream out(stdout);
        for (const auto& view : views)
            out << view->rootObject()->property("count").toInt() << " rows\n";
        QGuiApplication::quit();
    });
    return QGuiApplication::exec();
}
