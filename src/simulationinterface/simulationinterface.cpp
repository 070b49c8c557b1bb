#include "simulationinterface/simulationinterface.h"

#include "simulationinterface/simulationframe_p.h"

#include <QPointer>

#include <utility>

namespace zeltools::simulationinterface
{

SimulationInterface::SimulationInterface(QObject* parent)
    : QObject(parent)
{
}

SimulationInterface::~SimulationInterface() = default;

void SimulationInterface::write(const QByteArray& data)
{
    // Its memory serves the next message. Not a member: the endpoint may be deleted meanwhile.
    static thread_local QByteArray spare;
    QByteArray frame = std::exchange(spare, {});
    if (SimulationProtocol::serialize(data, frame))
        writeSerializedData(frame);
    spare.swap(frame);
}

void SimulationInterface::processIncomingData()
{
    const QByteArray bytes = incomingData();
    CompleteFrames frames = m_protocol.takeFrames(bytes);
    const QPointer<SimulationInterface> self(this); // a listener may delete it
    for (QByteArray message; self && frames.takeMessage(message);)
        Q_EMIT dataReceived(message);
}

} // namespace zeltools::simulationinterface
