#include "simulationinterface/serversimulationinterface.h"

#include "simulationinterface/admittingserver_p.h"
#include "simulationinterface/linksocket_p.h"

#include <QTimer>

#include <chrono>

namespace zeltools::simulationinterface
{

using namespace std::chrono_literals;

ServerSimulationInterface::ServerSimulationInterface(QObject* parent)
    : SimulationInterface(parent)
    , m_server(std::make_unique<AdmittingServer>(
          [this](int connection) { return admits(connection); }, this))
{
    connect(m_server.get(), &QTcpServer::newConnection, this,
            &ServerSimulationInterface::acceptConnection);
    // After such an error the server stays paused, even if the process lacked descriptors only for
    // a moment.
    connect(m_server.get(), &QTcpServer::acceptError, this,
            [this] { QTimer::singleShot(3000ms, m_server.get(), &QTcpServer::resumeAccepting); });
}

ServerSimulationInterface::~ServerSimulationInterface()
{
    if (m_client)
        m_client->close(this);
}

bool ServerSimulationInterface::connected() const
{
    return m_client && (*m_client)->state() != QAbstractSocket::UnconnectedState;
}

QByteArray ServerSimulationInterface::incomingData()
{
    return m_client ? m_client->readAvailable() : QByteArray();
}

bool ServerSimulationInterface::writeSerializedData(const QByteArray& frame)
{
    return countWritten(frame, connected() && m_client->write(frame));
}

QString ServerSimulationInterface::peerAddress() const
{
    return connected() ? m_client->peerAddress() : QString();
}

void ServerSimulationInterface::closeConnection()
{
    const std::shared_ptr<LinkSocket> kept = m_client; // disconnected() resets the pointer.
    if (kept)
        kept->close();
}

bool ServerSimulationInterface::isPeerAllowed(int)
{
    return true;
}

bool ServerSimulationInterface::admits(int connection)
{
    const bool isAdmitted = !m_client && isPeerAllowed(connection);
    if (!isAdmitted)
        countRefusedConnection();
    return isAdmitted;
}

void ServerSimulationInterface::acceptConnection()
{
    QTcpSocket* const socket = m_server->nextPendingConnection();
    if (!socket) // The connection was refused.
        return;
    attach(socket);
    dropIncompleteFrame();
    Q_EMIT connectedChanged();
}

void ServerSimulationInterface::attach(QTcpSocket* socket)
{
    m_client = LinkSocket::share(socket); // no child of the server, which it may outlive
    connect(socket, &QTcpSocket::readyRead, this, &ServerSimulationInterface::processClient);
    connect(socket, &QTcpSocket::disconnected, this, [this] {
        // All messages of this client are emitted before the next one is accepted.
        if (m_client->isBeingProcessed())
            m_server->pauseAccepting();
        else
            m_client.reset();
        Q_EMIT connectedChanged();
    });
}

void ServerSimulationInterface::processClient()
{
    const std::shared_ptr<LinkSocket> kept = m_client;
    if (!kept->processWith(*this) || connected())
        return;
    m_client.reset();
    m_server->resumeAccepting();
}

} // namespace zeltools::simulationinterface
