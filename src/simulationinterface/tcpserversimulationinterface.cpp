#include "simulationinterface/tcpserversimulationinterface.h"

#include "logging/log.h"
#include "logging/logformatter.h"

namespace zeltools::simulationinterface
{

TcpServerSimulationInterface::TcpServerSimulationInterface(
    const SimulationInterfaceAddress& address, QObject* parent)
    : ServerSimulationInterface(parent)
    , m_address(TcpSimulationInterfaceCommon::parseAddress(address.address))
{
    if (!m_address)
        return;
    const auto& [host, port] = *m_address;
    if (!server().listen(host, port)) {
        LogFormatter(LogLevel::Warning).log(Log::Simulation).noquote()
            << "zeltools::simulationinterface::TcpServerSimulationInterface::"
               "TcpServerSimulationInterface(const "
               "zeltools::simulationinterface::SimulationInterfaceAddress&, QObject*)"
            << QStringLiteral("Failed listening on %1:%2").arg(host.toString()).arg(port);
    }
}

TcpServerSimulationInterface::~TcpServerSimulationInterface() = default;

bool TcpServerSimulationInterface::isAddressValid() const
{
    return m_address.has_value();
}

QString TcpServerSimulationInterface::localAddress() const
{
    if (!server().isListening())
        return {};
    return SimulationInterfaceAddress::rawAddressOf(
        TcpServer, TcpSimulationInterfaceCommon::addressOf(m_address->first, port()));
}

quint16 TcpServerSimulationInterface::port() const
{
    return server().serverPort();
}

} // namespace zeltools::simulationinterface
