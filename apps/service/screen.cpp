#include "screen.h"

#include "demomachine.h"

#include <zeltools/path.h>

#include <QCoreApplication>
#include <QPixmap>
#include <QScreen>
#include <QUrl>

Screen::Screen(DemoMachine& machine)
{
    // The modules of the build that the program belongs to.
    m_engine.addImportPath(QCoreApplication::applicationDirPath() + QLatin1String("/../../qml"));
    const Path* const path = Path::instance();
    m_engine.setInitialProperties({
        {QStringLiteral("environmentFile"), path->environmentFile},
        {QStringLiteral("folders"), QStringList{path->debugLogsDir, path->eventLogsDir}},
        {QStringLiteral("bundleFolder"), machine.bundleFolder()},
    });
    m_engine.load(QUrl(QStringLiteral("qrc:/service/main.qml")));
    if (m_engine.rootObjects().isEmpty())
        return;
    m_window = qobject_cast<QQuickWindow*>(m_engine.rootObjects().constFirst());
    m_service = m_window->property("service").value<QObject*>();
}

Screen::~Screen() = default;

void Screen::set(const char* property, const QVariant& value)
{
    if (!m_service->setProperty(property, value))
        qFatal("The service screen has no property \"%s\"", property);
}

void Screen::resize(QSize size)
{
    m_window->resize(size);
}

// QQuickWindow::grabWindow() gives no image on this platform with Qt 5.
QImage Screen::image() const
{
    return m_window->screen()->grabWindow(m_window->winId()).toImage();
}
