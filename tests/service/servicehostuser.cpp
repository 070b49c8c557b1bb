// The user of docs/examples/servicehost.cpp, which has the function main(): opens two pages by taps
// on the rail, and leaves by a tap on the close button.

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <QtTest>

namespace
{

QStringList s_taps{"rail.overview", "rail.switches", "header.close"};

// Items of a repeater are not children of its QObject.
QQuickItem* find(QQuickItem* parent, const QString& name)
{
    if (parent->objectName() == name)
        return parent;
    const auto items = parent->childItems();
    for (QQuickItem* const item : items) {
        if (QQuickItem* const found = find(item, name))
            return found;
    }
    return nullptr;
}

void tap(QQuickWindow* window)
{
    QQuickItem* const item = find(window->contentItem(), s_taps[0]);
    if (item == nullptr)
        return; // The page is not there yet; the test ends with its time limit if it never is.
    s_taps.removeFirst();
    const QPointF centre(item->width() / 2, item->height() / 2);
    QTest::mouseClick(window, Qt::LeftButton, {}, item->mapToScene(centre).toPoint());
}

void sitDown()
{
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, [] {
        const auto windows = QGuiApplication::topLevelWindows();
        if (!windows.isEmpty() && windows[0]->isExposed() && !s_taps.isEmpty())
            tap(static_cast<QQuickWindow*>(windows[0]));
    });
    timer->start(200);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(sitDown)
