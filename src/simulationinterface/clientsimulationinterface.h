#pragma once

#include <zeltools/simulationinterface/simulationinterface.h>

#include <QTcpSocket>
#include <QTimer>

#include <memory>

namespace zeltools::simulationinterface
{

class LinkSocket;

/// Connects to a simulator that listens. It tries immediately and every three seconds until it is
/// connected, and again after each disconnection; failed attempts are not logged. The next
/// connection waits until a listener has received all messages of the one before. Derived classes
/// open the connection.
class ZELTOOLS_EXPORT ClientSimulationInterface : public SimulationInterface
{
    Q_OBJECT

public:
    ~ClientSimulationInterface() override;

    /// Whether the connection to the simulator is established.
    bool connected() const override;
    QByteArray incomingData() override;
    /// Returns false, and the frame is lost, without a connection and while the simulator leaves
    /// 64 MiB unread.
    bool writeSerializedData(const QByteArray& frame) override;
    QString peerAddress() const override;
    /// The next attempt to connect follows after three seconds.
    void closeConnection() override;

protected:
    explicit ClientSimulationInterface(QObject* parent);

    /// Begins to connect. A derived class calls it at the end of its constructor.
    void start();
    /// Begins one attempt with an unconnected socket, whose connected() reports the success.
    virtual void openConnection(QTcpSocket& socket) = 0;

private:
    void connectSignals();
    void beginConnection();
    void tryToConnect();

    std::shared_ptr<LinkSocket> m_socket;
    QTimer m_reconnectTimer;
};

} // namespace zeltools::simulationinterface
