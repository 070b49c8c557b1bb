#pragma once

#include <zeltools/simulationinterface/simulationinterface.h>
#include <zeltools/simulationinterface/simulationinterfaceaddress.h>
#include <zeltools/simulationinterface/tcpsimulationinterfacecommon.h>

#include <QTcpServer>

#include <memory>

namespace zeltools::simulationinterface
{

class TcpSocket;

/// Listens for a simulator and serves one at a time: while one is attached, others are closed at
/// once. After it has gone the next one waits until a listener has taken all of its messages.
class ZELTOOLS_EXPORT TcpServerSimulationInterface : public SimulationInterface
{
    Q_OBJECT

public:
    /// Does nothing for an address that TcpSimulationInterfaceCommon cannot read. Where it cannot
    /// listen, which gives a Warning, it never connects: there is no second attempt.
    TcpServerSimulationInterface(const SimulationInterfaceAddress& address, QObject* parent);
    ~TcpServerSimulationInterface() override;

    bool isAddressValid() const override;
    bool connected() const override;
    QByteArray incomingData() override;
    /// False while no simulator is attached, and while it leaves 64 MiB unread: the frame is lost.
    bool writeSerializedData(const QByteArray& frame) override;

private:
    void acceptConnection();
    void attach(QTcpSocket* socket);
    void processClient();

    QTcpServer m_server;
    std::shared_ptr<TcpSocket> m_client; // null, or gone but not all processed: none is attached
    std::optional<TcpSimulationInterfaceCommon::HostAndPort> m_address;
};

} // namespace zeltools::simulationinterface
