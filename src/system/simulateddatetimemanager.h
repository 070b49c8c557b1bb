#pragma once

#include <zeltools/system/datetimemanager.h>

#include <QElapsedTimer>

namespace zeltools::simulationinterface
{
class SimulationInterface;
}

namespace zeltools::system
{

/// A clock that a simulator drives over a simulation interface. The simulator sends
/// "2024/03/01 08:30:00" in local time to set it, and receives each request of the machine with
/// `syncRtc` in the same form in UTC. Only the simulator changes this clock; requests change
/// neither this clock nor another one on the board, and changes of the system's clock are ignored.
class ZELTOOLS_EXPORT SimulatedDateTimeManager : public DateTimeManager
{
    Q_OBJECT

public:
    /// Starts with the time of the system. An invalid address ends the process with exit status 1,
    /// after a release assertion.
    explicit SimulatedDateTimeManager(const QString& address, QObject* parent = nullptr);
    ~SimulatedDateTimeManager() override;

    static QString dateFormat();     ///< "yyyy/MM/dd"
    static QString timeFormat();     ///< "hh:mm:ss"
    static QString dateTimeFormat(); ///< "yyyy/MM/dd hh:mm:ss"

    /// The simulated time. After a message that is not a date and time, it is invalid until the
    /// next valid message.
    QDateTime currentDateTime() const override;
    void setCurrentDateTime(const QDateTime& dateTime);
    /// Sends the unchanged time; does nothing while no simulator is connected.
    void sendDateTime(const QDateTime& dateTime);

public Q_SLOTS:
    /// Handles a message of the simulator. A zero byte ends its text.
    void processIncomingData(const QByteArray& data);

private:
    simulationinterface::SimulationInterface* m_interface;
    QDateTime m_base;
    QElapsedTimer m_sinceBase;
};

} // namespace zeltools::system
