#pragma once

#include <zeltools/simulationinterface/serversimulationinterface.h>
#include <zeltools/simulationinterface/simulationinterfaceaddress.h>
#include <zeltools/simulationinterface/tcpsimulationinterfacecommon.h>

namespace zeltools::simulationinterface
{

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

private:
    std::optional<TcpSimulationInterfaceCommon::HostAndPort> m_address;
};

} // namespace zeltools::simulationinterface
