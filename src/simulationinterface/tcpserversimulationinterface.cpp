#include "simulationinterface/tcpserversimulationinterface.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/tcpsocket_p.h"

#include <QTimer>

#include <chrono>

namespace zeltools::simulationinterface
{

using namespace std::chrono_literals;

TcpServerSimulationInterface::TcpServerSimulationInterface(
    const SimulationInterfaceAddress& address, QObject* parent)
    : SimulationInterface(parent)
    , m_server(this)
    , m_address(TcpSimulationInterfaceCommon::parseAddress(address.address))
{
    if (!m_address)
        return;
    const auto& [host, port] = *m_address;
    if (!m_server.listen(host, port)) {
        LogFormatter(LogLevel::Warning).log(Log::Simulation).noquote()
            << "zeltools::simulationinterface::TcpServerSimulationInterface::"
               "TcpServerSimulationInterface(const "
               "zeltools::simulationinterface::SimulationInterfaceAddress&, QObject*)"
            << QStringLiteral("Failed listening on %1:%2").arg(host.toString()).arg(port);
        return;
    }
    connect(&m_server, &QTcpServer::newConnection, this,
            &TcpServerSimulationInterface::acceptConnection);
    // After such an error the server stays paused, even if the process lacked descriptors only for
    // a moment.
    connect(&m_server, &QTcpServer::acceptError, this,
            [this] { QTimer::singleShot(3000ms, &m_server, &QTcpServer::resumeAccepting); });
}

TcpServerSimulationInterface::~TcpServerSimulationInterface()
{
    if (m_client)
        m_client->close(this);
}

bool TcpServerSimulationInterface::isAddressValid() const
{
    return m_address.has_value();
}

bool TcpServerSimulationInterface::connected() const
{
    return m_client && (*m_client)->state() != QAbstractSocket::UnconnectedState;
}

QByteArray TcpServerSimulationInterface::incomingData()
{
    return m_client ? m_client->readAvailable() : QByteArray();
}

bool TcpServerSimulationInterface::writeSerializedData(const QByteArray& frame)
{
    return connected() && m_client->write(frame);
}

void TcpServerSimulationInterface::acceptConnection()
{
    QTcpSocket* const socket = m_server.nextPendingConnection();
    if (m_client) {
        socket->close();
        socket->deleteLater();
        return;
    }
    attach(socket);
    dropIncompleteFrame();
    Q_EMIT connectedChanged();
}

void TcpServerSimulationInterface::attach(QTcpSocket* socket)
{
    m_client = TcpSocket::share(socket); // no child of the server, which it may outlive
    connect(socket, &QTcpSocket::readyRead, this, &TcpServerSimulationInterface::processClient);
    connect(socket, &QTcpSocket::disconnected, this, [this] {
        // All messages of this client are emitted before the next one is accepted.
        if (m_client->isBeingProcessed())
            m_server.pauseAccepting();
        else
            m_client.reset();
        Q_EMIT connectedChanged();
    });
}

void TcpServerSimulationInterface::processClient()
{
    const std::shared_ptr<TcpSocket> kept = m_client;
    if (!kept->processWith(*this) || connected())
        return;
    m_client.reset();
    m_server.resumeAccepting();
}

} // namespace zeltools::simulationinterface
