#include "simulationinterface/tcpserversimulationinterface.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/tcpsocket_p.h"

#include <QPointer>
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
    // The server pauses itself for good, even when the process lacked descriptors for a moment
    // only.
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
    return m_client != nullptr;
}

QByteArray TcpServerSimulationInterface::incomingData()
{
    return m_client ? m_client->readAvailable() : QByteArray();
}

bool TcpServerSimulationInterface::writeSerializedData(const QByteArray& frame)
{
    return m_client && m_client->write(frame);
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
    m_client = TcpSocket::share(socket); // not the server's: it may outlive it
    connect(socket, &QTcpSocket::readyRead, this, [this] {
        const std::shared_ptr<TcpSocket> kept = m_client;
        const QPointer<TcpServerSimulationInterface> self(this);
        do {
            processIncomingData(); // what comes while a listener runs an event loop is not told
        } while (self && m_client == kept && (*kept)->bytesAvailable() > 0);
    });
    connect(socket, &QTcpSocket::disconnected, this, [this] {
        m_client.reset();
        Q_EMIT connectedChanged();
    });
}

} // namespace zeltools::simulationinterface
