#include "simulationinterface/tcpclientsimulationinterface.h"

namespace zeltools::simulationinterface
{

TcpClientSimulationInterface::TcpClientSimulationInterface(
    const SimulationInterfaceAddress& address, QObject* parent)
    : ClientSimulationInterface(parent)
    , m_address(TcpSimulationInterfaceCommon::parseAddress(address.address))
{
    if (m_address)
        start();
}

TcpClientSimulationInterface::~TcpClientSimulationInterface() = default;

bool TcpClientSimulationInterface::isAddressValid() const
{
    return m_address.has_value();
}

QString TcpClientSimulationInterface::localAddress() const
{
    if (!m_address)
        return {};
    return SimulationInterfaceAddress::rawAddressOf(
        TcpClient, TcpSimulationInterfaceCommon::addressOf(m_address->first, m_address->second));
}

void TcpClientSimulationInterface::openConnection(QTcpSocket& socket)
{
    socket.connectToHost(m_address->first, m_address->second);
}

} // namespace zeltools::simulationinterface
