#pragma once

#include <zeltools/simulationinterface/simulationinterface.h>
#include <zeltools/simulationinterface/simulationinterfaceaddress.h>
#include <zeltools/simulationinterface/tcpsimulationinterfacecommon.h>

#include <QTcpServer>

#include <memory>

namespace zeltools::simulationinterface
{

class TcpSocket;

/// Listens for simulators and serves one at a time: while one is attached, the connections of
/// others are closed immediately. After it has disconnected, the next one waits until a listener
/// has received all of its messages.
class ZELTOOLS_EXPORT TcpServerSimulationInterface : public SimulationInterface
{
    Q_OBJECT

public:
    /// Starts to listen. It does nothing if TcpSimulationInterfaceCommon cannot parse the address.
    /// If it cannot listen, it logs a Warning and does not try again.
    TcpServerSimulationInterface(const SimulationInterfaceAddress& address, QObject* parent);
    ~TcpServerSimulationInterface() override;

    bool isAddressValid() const override;
    bool connected() const override;
    QByteArray incomingData() override;
    /// Returns false, and the frame is lost, without an attached simulator and while it leaves
    /// 64 MiB unread.
    bool writeSerializedData(const QByteArray& frame) override;

private:
    void acceptConnection();
    void attach(QTcpSocket* socket);
    void processClient();

    QTcpServer m_server;
    // No simulator is attached if this is null, or disconnected with unprocessed messages.
    std::shared_ptr<TcpSocket> m_client;
    std::optional<TcpSimulationInterfaceCommon::HostAndPort> m_address;
};

} // namespace zeltools::simulationinterface
