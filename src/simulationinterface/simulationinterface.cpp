#include "simulationinterface/simulationinterface.h"

#include "simulationinterface/simulationframe_p.h"
#include "simulationinterface/warninglimit_p.h"

#include <QPointer>

#include <utility>

namespace zeltools::simulationinterface
{

SimulationInterface::SimulationInterface(QObject* parent)
    : QObject(parent)
    , m_faultWarnings(new WarningLimit("The data of the simulator", this))
{
}

SimulationInterface::~SimulationInterface() = default;

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
    // The next message uses the same memory. It is not a member, since the endpoint may be deleted
    // during the call.
    static thread_local QByteArray spare;
    QByteArray frame = std::exchange(spare, {});
    const bool isFrame = SimulationProtocol::serialize(data, frame);
    if (!isFrame)
        ++m_counters.framesRefused;
    const bool isAccepted = isFrame && writeSerializedData(frame);
    spare.swap(frame);
    return isAccepted;
}

void SimulationInterface::processIncomingData()
{
    const QByteArray bytes = incomingData();
    m_counters.bytesReceived += quint64(bytes.size());
    CompleteFrames frames = m_protocol.takeFrames(bytes);
    if (frames.fault != FrameFault::None) {
        ++m_counters.resynchronizations;
        if (m_faultWarnings->mayWarn())
            SimulationProtocol::warnOf(frames.fault);
    }
    const QPointer<SimulationInterface> self(this); // A receiver may delete the endpoint.
    for (QByteArray message; self && frames.takeMessage(message);) {
        ++m_counters.framesReceived;
        Q_EMIT dataReceived(message);
    }
}

void SimulationInterface::dropIncompleteFrame()
{
    m_protocol.clear();
}

bool SimulationInterface::countWritten(const QByteArray& frame, bool isAccepted)
{
    if (isAccepted) {
        ++m_counters.framesSent;
        m_counters.bytesSent += quint64(frame.size());
    } else {
        ++m_counters.framesRefused;
    }
    return isAccepted;
}

} // namespace zeltools::simulationinterface
