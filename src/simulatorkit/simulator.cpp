#include "simulatorkit/simulator.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/simulationinterface.h"
#include "simulationinterface/simulationprotocol.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace zeltools::simulatorkit
{

using Action = SimulatorRow::Action;
using Trigger = SimulatorRow::Trigger;
using simulationinterface::SimulationInterface;
using simulationinterface::SimulationProtocol;

Simulator::Simulator(SimulatorScript script, SimulationInterface& link, QObject* parent)
    : QObject(parent)
    , m_script(std::move(script))
    , m_link(link)
    , m_triggered(m_script.rows.size())
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Simulator::runDue);
    connect(&link, &SimulationInterface::connectedChanged, this, &Simulator::onConnectedChanged);
    connect(&link, &SimulationInterface::dataReceived, this, &Simulator::onReceived);
    onConnectedChanged();
}

Simulator::~Simulator() = default;

void Simulator::onConnectedChanged()
{
    if (m_link.connected() == m_isConnected)
        return;
    m_isConnected = !m_isConnected;
    m_waiting.clear();
    m_hasDropped = m_hasWarned = false;
    if (!m_isConnected)
        return;
    m_clock.start();
    for (int row = 0; row < m_script.rows.size(); ++row) {
        if (m_script.rows[row].trigger == Trigger::Connected)
            trigger(row, 0);
        else if (m_script.rows[row].trigger == Trigger::Period)
            addWaiting(m_script.rows[row].period.count(), {row, 0});
    }
    runDue();
}

void Simulator::onReceived(const QByteArray& message)
{
    for (int row = 0; m_isConnected && row < m_script.rows.size(); ++row) {
        if (takes(m_script.rows[row], message) && trigger(row, m_clock.elapsed()))
            return runDue();
    }
}

bool Simulator::takes(const SimulatorRow& row, const QByteArray& message) const
{
    return row.trigger == Trigger::AnyMessage ||
           (row.trigger == Trigger::Message && message == row.triggerText) ||
           (row.trigger == Trigger::Beginning && message.startsWith(row.triggerText));
}

// Triggers a row and those with `also` behind it. Returns false if the row is used up.
bool Simulator::trigger(int row, qint64 now_ms)
{
    const auto& rows = m_script.rows;
    if (rows[row].maximumTriggers > 0 && m_triggered[row] == rows[row].maximumTriggers)
        return false;
    ++m_triggered[row];
    do {
        addWaiting(now_ms + rows[row].delay.count(), {row, rows[row].repetitions});
        ++row;
    } while (row < rows.size() && rows[row].trigger == Trigger::Also);
    return true;
}

void Simulator::addWaiting(qint64 due_ms, const Waiting& waiting)
{
    if (m_waiting.size() < maximumWaiting)
        m_waiting.emplace(Due(due_ms, m_order++), waiting);
    else
        m_hasDropped = true;
}

// A million repetitions must not keep the event loop from its other work. An action ends a
// connection, or logs a line, and a receiver of these signals may delete the object.
void Simulator::runDue()
{
    constexpr int batch = 1000;
    const QPointer<Simulator> self(this);
    const qint64 now_ms = m_clock.elapsed();
    for (int i = 0; i < batch && !m_waiting.empty(); ++i) {
        if (m_waiting.begin()->first.first > now_ms)
            break;
        runFirst();
        if (!self)
            return;
    }
    if (!m_waiting.empty())
        m_timer.start(static_cast<int>(
            std::max<qint64>(0, m_waiting.begin()->first.first - m_clock.elapsed())));
    warnOnce();
}

void Simulator::warnOnce()
{
    if (!m_hasDropped || std::exchange(m_hasWarned, true))
        return;
    LogFormatter(LogLevel::Warning).log(Log::Simulation)
        << "More than" << maximumWaiting << "actions of the simulator wait, dropping some";
}

// The next repetition is added before the action, which may end the connection.
void Simulator::runFirst()
{
    Due due = m_waiting.begin()->first;
    Waiting waiting = m_waiting.begin()->second;
    m_waiting.erase(m_waiting.begin());
    const SimulatorRow& row = m_script.rows[waiting.row];
    if (waiting.repetitions == 0) {
        trigger(waiting.row, due.first);
        const qint64 period_ms = row.period.count();
        const qint64 missed_ms = m_clock.elapsed() / period_ms * period_ms;
        m_waiting.emplace(Due(std::max(due.first, missed_ms) + period_ms, m_order++), waiting);
        return;
    }
    if (--waiting.repetitions > 0) {
        due.first += row.pause.count();
        m_waiting.emplace(due, waiting);
    }
    act(row);
}

void Simulator::act(const SimulatorRow& row)
{
    switch (row.action) {
    case Action::Answer:
        m_link.write(row.text);
        break;
    case Action::Raw:
        m_link.writeSerializedData(row.text);
        break;
    case Action::Half: {
        const QByteArray frame = SimulationProtocol::serializeOpt(row.text).value_or(QByteArray());
        m_link.writeSerializedData(frame.left(frame.size() / 2));
        break;
    }
    case Action::Silence:
        break;
    case Action::Disconnect: {
        const QPointer<Simulator> self(this);
        m_link.closeConnection();
        if (self)
            onConnectedChanged(); // A link that connects tells it only later.
        break;
    }
    }
}

} // namespace zeltools::simulatorkit
