#include "simulationinterface/simulationinterface.h"

#include <QPointer>

namespace zeltools::simulationinterface
{

SimulationInterface::SimulationInterface(QObject* parent)
    : QObject(parent)
{
}

SimulationInterface::~SimulationInterface() = default;

void SimulationInterface::write(const QByteArray& data)
{
    if (const std::optional<QByteArray> frame = SimulationProtocol::serializeOpt(data))
        writeSerializedData(*frame);
}

void SimulationInterface::processIncomingData()
{
    const QVector<QByteArray> messages = m_protocol.deserialize(incomingData());
    const QPointer<SimulationInterface> self(this);
    for (const QByteArray& message : messages) {
        Q_EMIT dataReceived(message);
        if (!self)
            return; // a listener deleted it
    }
}

} // namespace zeltools::simulationinterface
