#pragma once

#include <zeltools/simulationinterface/simulationinterface.h>

#include <QTcpServer>

#include <memory>

namespace zeltools::simulationinterface
{

class LinkSocket;

/// Listens for simulators and serves one at a time: while one is attached, the connections of
/// others are closed immediately. After it has disconnected, the next one waits until a listener
/// has received all of its messages. Derived classes open the socket that listens.
class ZELTOOLS_EXPORT ServerSimulationInterface : public SimulationInterface
{
    Q_OBJECT

public:
    ~ServerSimulationInterface() override;

    /// Whether a simulator is attached, including one whose connection is just being closed.
    bool connected() const override;
    QByteArray incomingData() override;
    /// Returns false, and the frame is lost, without an attached simulator and while it leaves
    /// 64 MiB unread.
    bool writeSerializedData(const QByteArray& frame) override;
    QString peerAddress() const override;
    void closeConnection() override;
    /// Why the endpoint with a valid address does not listen; empty if it does.
    QString listenError() const { return m_listenError; }

protected:
    explicit ServerSimulationInterface(QObject* parent);

    /// The server for the subclass that listens.
    QTcpServer& server() const { return *m_server; }
    /// Notes why the subclass could not listen.
    void setListenError(const QString& error) { m_listenError = error; }
    /// Whether the peer of a new connection, whose descriptor is given, may attach: by default any.
    virtual bool isPeerAllowed(int connection);

private:
    bool admits(int connection);
    void acceptConnection();
    void attach(QTcpSocket* socket);
    void processClient();

    const std::unique_ptr<QTcpServer> m_server;
    QString m_listenError;
    // No simulator is attached if this is null, or disconnected with unprocessed messages.
    std::shared_ptr<LinkSocket> m_client;
};

} // namespace zeltools::simulationinterface
