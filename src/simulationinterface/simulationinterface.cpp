#include "simulationinterface/simulationinterface.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/simulationframe_p.h"

#include <QPointer>
#include <QTimer>

#include <chrono>
#include <utility>

namespace zeltools::simulationinterface
{

using namespace std::chrono_literals;

namespace
{

constexpr int maximumWarnings = 10; // in a minute

} // namespace

SimulationInterface::SimulationInterface(QObject* parent)
    : QObject(parent)
{
}

SimulationInterface::~SimulationInterface()
{
    endMinuteOfWarnings();
}

QString SimulationInterface::localAddress() const
{
    return {};
}

QString SimulationInterface::peerAddress() const
{
    return {};
}

void SimulationInterface::closeConnection() {}

bool SimulationInterface::write(const QByteArray& data)
{
    // The next message uses the same memory. It is no member, since the endpoint may be deleted
    // during the call.
    static thread_local QByteArray spare;
    QByteArray frame = std::exchange(spare, {});
    const bool isAccepted =
        SimulationProtocol::serialize(data, frame) && writeSerializedData(frame);
    spare.swap(frame);
    return isAccepted;
}

void SimulationInterface::processIncomingData()
{
    const QByteArray bytes = incomingData();
    CompleteFrames frames = m_protocol.takeFrames(bytes);
    if (frames.fault != FrameFault::None && mayWarn())
        SimulationProtocol::warnOf(frames.fault);
    const QPointer<SimulationInterface> self(this); // A receiver may delete the endpoint.
    for (QByteArray message; self && frames.takeMessage(message);)
        Q_EMIT dataReceived(message);
}

void SimulationInterface::dropIncompleteFrame()
{
    m_protocol.clear();
}

// The limit belongs to the endpoint and not to the connection, so that a simulator that connects
// again does not evade it.
bool SimulationInterface::mayWarn()
{
    if (++m_faults == 1)
        QTimer::singleShot(1min, this, &SimulationInterface::endMinuteOfWarnings);
    return m_faults <= maximumWarnings;
}

void SimulationInterface::endMinuteOfWarnings()
{
    const int faults = std::exchange(m_faults, 0);
    if (faults > maximumWarnings)
        LogFormatter(LogLevel::Warning).log(Log::Simulation)
            << "The data of the simulator caused" << faults - maximumWarnings << "more warnings";
}

} // namespace zeltools::simulationinterface
