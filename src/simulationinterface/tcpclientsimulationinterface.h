#pragma once

#include <zeltools/simulationinterface/clientsimulationinterface.h>
#include <zeltools/simulationinterface/simulationinterfaceaddress.h>
#include <zeltools/simulationinterface/tcpsimulationinterfacecommon.h>

namespace zeltools::simulationinterface
{

/// Connects to a simulator that listens at a TCP port.
class ZELTOOLS_EXPORT TcpClientSimulationInterface : public ClientSimulationInterface
{
    Q_OBJECT

public:
    /// Starts to connect. It does nothing if TcpSimulationInterfaceCommon cannot parse the address.
    TcpClientSimulationInterface(const SimulationInterfaceAddress& address, QObject* parent);
    ~TcpClientSimulationInterface() override;

    bool isAddressValid() const override;
    QString localAddress() const override;

protected:
    void openConnection(QTcpSocket& socket) override;

private:
    std::optional<TcpSimulationInterfaceCommon::HostAndPort> m_address;
};

} // namespace zeltools::simulationinterface
