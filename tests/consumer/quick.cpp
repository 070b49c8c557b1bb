#include <zeltools/path.h>
#include <zeltools/quick/access.h>

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

// A host places the service screen of the installed module, which sees the host's access level.
int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    Path::instance()->init(QString::fromLocal8Bit(argv[1]), QStringLiteral("default"),
                           QStringLiteral("default"));
    zeltools::quick::Access::instance()->setLevel(zeltools::quick::Access::Operator);
    QQmlEngine engine;
    engine.addImportPath(QString::fromLocal8Bit(argv[2]));
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.15\nimport ZelTools 1.0\nimport ZelTools.Service 1.0\n"
                      "Service { readonly property int level: Library.access.level }\n",
                      {});
    const std::unique_ptr<QObject> screen(component.create());
    if (screen == nullptr)
        qWarning("%s", qPrintable(component.errorString()));
    return screen != nullptr && screen->property("level") == 1 ? 0 : 1;
}
