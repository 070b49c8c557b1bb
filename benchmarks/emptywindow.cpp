// The least program with a window in QML. Prints the time to its first frame.

#include "startmeter.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick 2.15\nimport QtQuick.Window 2.15\n"
                    "Window { width: 1280; height: 800; Rectangle { anchors.fill: parent } }");
    auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
    if (window == nullptr)
        return 1;
    const StartMeter meter(window);
    window->show();
    return QGuiApplication::exec();
}
