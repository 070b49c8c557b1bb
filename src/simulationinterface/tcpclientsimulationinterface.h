#pragma once

#include <zeltools/simulationinterface/simulationinterface.h>
#include <zeltools/simulationinterface/simulationinterfaceaddress.h>
#include <zeltools/simulationinterface/tcpsimulationinterfacecommon.h>

#include <QTimer>

#include <memory>

namespace zeltools::simulationinterface
{

class TcpSocket;

/// Connects to a simulator that listens. It tries immediately and every three seconds until it is
/// connected, and again after each disconnection; failed attempts are not logged. The next
/// connection waits until a listener has received all messages of the one before.
class ZELTOOLS_EXPORT TcpClientSimulationInterface : public SimulationInterface
{
    Q_OBJECT

public:
    /// Starts to connect. It does nothing if TcpSimulationInterfaceCommon cannot parse the address.
    TcpClientSimulationInterface(const SimulationInterfaceAddress& address, QObject* parent);
    ~TcpClientSimulationInterface() override;

    bool isAddressValid() const override;
    bool connected() const override;
    QByteArray incomingData() override;
    /// Returns false, and the frame is lost, without a connection and while the simulator leaves
    /// 64 MiB unread.
    bool writeSerializedData(const QByteArray& frame) override;

private:
    void connectSignals();
    void beginConnection();
    void tryToConnect();

    std::shared_ptr<TcpSocket> m_socket;
    QTimer m_reconnectTimer;
    std::optional<TcpSimulationInterfaceCommon::HostAndPort> m_address;
};

} // namespace zeltools::simulationinterface
