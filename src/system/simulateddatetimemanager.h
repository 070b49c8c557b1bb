#pragma once

#include <zeltools/system/datetimemanager.h>

#include <QElapsedTimer>

namespace zeltools::simulationinterface
{
class SimulationInterface;
}

namespace zeltools::system
{

/// A clock that a simulator drives over a simulation interface: it sends "2024/03/01 08:30:00" to
/// set it, as local time, and hears of each change that the machine asks for in the same form, as
/// UTC. Asking does not move this clock, nor any other on the board: only the simulator does.
class ZELTOOLS_EXPORT SimulatedDateTimeManager : public DateTimeManager
{
    Q_OBJECT

public:
    /// Begins with the time of the system. An address that leads to no simulator ends the process
    /// with exit status 1, after a release assertion.
    explicit SimulatedDateTimeManager(const QString& address, QObject* parent = nullptr);
    ~SimulatedDateTimeManager() override;

    static QString dateFormat(); ///< "yyyy/MM/dd"
    static QString timeFormat(); ///< "hh:mm:ss"
    static QString dateTimeFormat();

    /// Invalid after the simulator has sent what is no date and time, until it sends one again.
    QDateTime currentDateTime() const override;
    void setCurrentDateTime(const QDateTime& dateTime);
    /// Sends it as it is; does nothing while no simulator is connected.
    void sendDateTime(const QDateTime& dateTime);

public Q_SLOTS:
    /// What follows a zero byte does not count.
    void processIncomingData(const QByteArray& data);

private:
    simulationinterface::SimulationInterface* m_interface;
    QDateTime m_base;
    QElapsedTimer m_sinceBase;
};

} // namespace zeltools::system
