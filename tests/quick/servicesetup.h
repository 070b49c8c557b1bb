#pragma once

#include "envvar/envvarint.h"

#include <QObject>
#include <QString>
#include <QTemporaryDir>

#include <array>
#include <memory>

class CoffeeMachine;
class StalledThread;
class QQmlEngine;

namespace zeltools::system
{
class DateTimeManager;
}

/// The machine behind the tests of the service screen: the real log manager, whose files lie in a
/// temporary folder. The tests know it as `setup`.
class ServiceSetup : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString folder READ folder CONSTANT)

public:
    ServiceSetup();
    ~ServiceSetup() override;

    QString folder() const { return m_folder.path(); }

    Q_INVOKABLE void logEvent(const QString& text) const;
    Q_INVOKABLE void log(const QString& text) const;
    Q_INVOKABLE void writeFile(const QString& name, const QString& content) const;
    Q_INVOKABLE QString readFile(const QString& name) const;
    /// The lines of events up to now.
    Q_INVOKABLE QString events() const;
    Q_INVOKABLE bool exists(const QString& name) const;
    Q_INVOKABLE bool removeFolder(const QString& name) const;
    /// Starts one of two coffee machines that offers itself to the screen and waits in its fourth
    /// drink.
    Q_INVOKABLE void startMachine(int number = 0);
    Q_INVOKABLE void removeMachine(int number = 0);
    /// Watches a thread that stands still from then on; only in a build that watches threads.
    Q_INVOKABLE void stallThread();
    /// A clock of the host, which a test may set.
    Q_INVOKABLE zeltools::system::DateTimeManager* makeClock() const;
    /// Lets the kernel log be the file, which only a board does. Returns whether it is captured.
    Q_INVOKABLE bool captureKernelLog(const QString& name) const;

public Q_SLOTS:
    void applicationAvailable() const;
    void qmlEngineAvailable(QQmlEngine* engine);

private:
    QTemporaryDir m_folder;
    std::array<std::unique_ptr<CoffeeMachine>, 2> m_machines;
    std::unique_ptr<StalledThread> m_thread;
    zeltools::envvar::EnvVarInt m_number{"PUMP_TIME", "Time of the pump in milliseconds",
                                         zeltools::envvar::Miscellaneous, zeltools::envvar::Visible,
                                         nullptr};
};
