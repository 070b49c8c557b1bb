#include "simulationinterface/tcpserversimulationinterface.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/warninglimit_p.h"

#include <algorithm>

#include <sys/socket.h>

namespace zeltools::simulationinterface
{

namespace
{

// The address is null if the peer has already gone.
QHostAddress peerOf(int connection)
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    return ::getpeername(connection, generic, &size) == 0 ? QHostAddress(generic) : QHostAddress();
}

} // namespace

TcpServerSimulationInterface::TcpServerSimulationInterface(
    const SimulationInterfaceAddress& address, QObject* parent)
    : ServerSimulationInterface(parent)
    , m_refusalWarnings(new WarningLimit("The refused simulators", this))
    , m_address(TcpSimulationInterfaceCommon::parseAddress(address.address))
{
    if (!m_address)
        return;
    const auto& [host, port] = *m_address;
    if (!server().listen(host, port)) {
        setListenError(server().errorString());
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

void TcpServerSimulationInterface::setAllowedPeers(QVector<Subnet> subnets)
{
    m_allowedPeers.swap(subnets); // g++ suspects a null pointer in the assignment
}

bool TcpServerSimulationInterface::isPeerAllowed(int connection)
{
    if (m_allowedPeers.isEmpty())
        return true;
    const QHostAddress peer = peerOf(connection);
    if (std::any_of(m_allowedPeers.cbegin(), m_allowedPeers.cend(),
                    [&](const Subnet& subnet) { return peer.isInSubnet(subnet); }))
        return true;
    if (m_refusalWarnings->mayWarn())
        LogFormatter(LogLevel::Warning).log(Log::Simulation).noquote()
            << "Refused a connection from" << peer.toString() << "which is not an allowed peer";
    return false;
}

} // namespace zeltools::simulationinterface
