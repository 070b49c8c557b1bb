#pragma once

#include <zeltools/simulationinterface/serversimulationinterface.h>
#include <zeltools/simulationinterface/simulationinterfaceaddress.h>
#include <zeltools/simulationinterface/tcpsimulationinterfacecommon.h>

#include <QPair>
#include <QVector>

namespace zeltools::simulationinterface
{

class WarningLimit;

/// Listens for simulators at a TCP port.
class ZELTOOLS_EXPORT TcpServerSimulationInterface : public ServerSimulationInterface
{
    Q_OBJECT

public:
    /// Starts to listen. It does nothing if TcpSimulationInterfaceCommon cannot parse the address.
    /// If it cannot listen, it logs a Warning and does not try again.
    TcpServerSimulationInterface(const SimulationInterfaceAddress& address, QObject* parent);
    ~TcpServerSimulationInterface() override;

    bool isAddressValid() const override;
    QString localAddress() const override;
    /// The port that is really used, which the system has chosen if the address names port 0.
    /// Returns 0 if the endpoint does not listen.
    quint16 port() const;

    /// An IP address and the number of its leading bits that count, as QHostAddress::parseSubnet()
    /// makes it from "192.168.1.0/24".
    using Subnet = QPair<QHostAddress, int>;
    /// Closes the later connections of peers outside of these subnets immediately, with at most ten
    /// Warnings a minute. A subnet that could not be parsed contains no address. An empty list, the
    /// default, allows all peers.
    void setAllowedPeers(QVector<Subnet> subnets);

protected:
    bool isPeerAllowed(int connection) override;

private:
    QVector<Subnet> m_allowedPeers;
    WarningLimit* const m_refusalWarnings;
    std::optional<TcpSimulationInterfaceCommon::HostAndPort> m_address;
};

} // namespace zeltools::simulationinterface
