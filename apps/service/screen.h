#pragma once

#include <QImage>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSize>
#include <QString>
#include <QVariant>

class DemoMachine;

/// The window with the service screen of the machine, as the QML host in main.qml builds it.
class Screen
{
public:
    /// Loads the window, which is not shown yet. Reports a failure on standard error.
    explicit Screen(DemoMachine& machine);
    ~Screen();
    Q_DISABLE_COPY(Screen)

    /// Null if the QML modules cannot be loaded.
    QQuickWindow* window() const { return m_window; }
    /// The item of the type Service in the window.
    QObject* service() const { return m_service; }

    /// Sets a property of the item Service, which must have it.
    void set(const char* property, const QVariant& value);
    void resize(QSize size);
    /// Frees what QML no longer uses, for a look at what remains.
    void collectGarbage() { m_engine.collectGarbage(); }
    /// The contents of the window. Works on the platform "offscreen" only.
    QImage image() const;

private:
    QQmlApplicationEngine m_engine;
    QQuickWindow* m_window = nullptr;
    QObject* m_service = nullptr;
};
