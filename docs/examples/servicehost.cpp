// The program of an application that shows the service screen: servicehost FOLDER servicehost.qml

#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    Path::instance()->init(arguments.value(1), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize();
    QQmlApplicationEngine engine(arguments.value(2));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
