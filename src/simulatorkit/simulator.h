#pragma once

#include <zeltools/simulatorkit/simulatorscript.h>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <map>
#include <utility>

namespace zeltools::simulationinterface
{
class SimulationInterface;
}

namespace zeltools::simulatorkit
{

/// Runs a script as the simulator's end of a link. The counts of the script (`first N`) go on from
/// one connection to the next; actions that still wait for their time are dropped with their
/// connection.
///
/// At most 10,000 actions wait at once. Further ones are dropped, with one Warning a connection. An
/// object belongs to the thread of its link, and needs its event loop.
class ZELTOOLS_EXPORT Simulator : public QObject
{
    Q_OBJECT

public:
    /// The number of actions that may wait for their time.
    static constexpr size_t maximumWaiting = 10000;

    /// The link must outlive the object, but both may be deleted inside the signals of the link. A
    /// connection that it has already counts as a new one.
    Simulator(SimulatorScript script, simulationinterface::SimulationInterface& link,
              QObject* parent = nullptr);
    ~Simulator() override;

private:
    struct Waiting
    {
        int row;
        int repetitions; // 0: the row is triggered by its period
    };
    // The time in milliseconds, and a number that keeps the order of equal times.
    using Due = std::pair<qint64, quint64>;

    void onConnectedChanged();
    void onReceived(const QByteArray& message);
    bool takes(const SimulatorRow& row, const QByteArray& message) const;
    bool trigger(int row, qint64 now_ms);
    void addWaiting(qint64 due_ms, const Waiting& waiting);
    void runDue();
    void warnOnce();
    void runFirst();
    void act(const SimulatorRow& row);

    const SimulatorScript m_script;
    simulationinterface::SimulationInterface& m_link;
    QVector<qint64> m_triggered; // how often, for each row
    std::map<Due, Waiting> m_waiting;
    QElapsedTimer m_clock;
    QTimer m_timer;
    quint64 m_order = 0;
    bool m_isConnected = false;
    bool m_hasDropped = false;
    bool m_hasWarned = false;
};

} // namespace zeltools::simulatorkit
