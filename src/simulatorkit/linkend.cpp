#include "simulatorkit/linkend_p.h"

#include "simulationinterface/simulationinterfaceaddress.h"
#include "simulationinterface/tcpsimulationinterfacecommon.h"

#include <QTimer>

#include <chrono>
#include <tuple>
#include <utility>

namespace zeltools::simulatorkit
{

using namespace std::chrono_literals;
using simulationinterface::SimulationInterfaceAddress;

LinkEnd::LinkEnd(QObject* parent)
    : QObject(parent)
{
}

LinkEnd::~LinkEnd()
{
    if (m_socket != nullptr) {
        m_socket->disconnect(this);
        m_socket->flush();
        delete m_socket;
    }
}

QString LinkEnd::open(const QString& rawAddress)
{
    const SimulationInterfaceAddress address(rawAddress);
    const auto hostAndPort =
        simulationinterface::TcpSimulationInterfaceCommon::parseAddress(address.address);
    if (address.type == simulationinterface::Unknown || !hostAndPort)
        return QStringLiteral("\"%1\" is no address").arg(rawAddress);
    m_type = rawAddress.section(SimulationInterfaceAddress::fieldSeparator(), 0, 0).toLower();
    std::tie(m_host, m_port) = *hostAndPort;
    if (address.type != simulationinterface::TcpServer)
        return QString();
    m_server = std::make_unique<QTcpServer>();
    if (!m_server->listen(m_host, m_port))
        return QStringLiteral("cannot listen on %1: %2").arg(rawAddress, m_server->errorString());
    m_port = m_server->serverPort();
    connect(m_server.get(), &QTcpServer::newConnection, this, &LinkEnd::accept);
    connect(m_server.get(), &QTcpServer::acceptError, this,
            [this] { QTimer::singleShot(3s, m_server.get(), &QTcpServer::resumeAccepting); });
    return QString();
}

QString LinkEnd::address() const
{
    const QString separator = SimulationInterfaceAddress::fieldSeparator();
    return m_type + separator + m_host.toString() + separator + QString::number(m_port);
}

void LinkEnd::connectToPeer()
{
    if (isListening() || m_socket != nullptr)
        return;
    auto* const socket = new QTcpSocket(this);
    attach(socket);
    connect(socket, &QTcpSocket::connected, this, &LinkEnd::begin);
    connect(
        socket, &QTcpSocket::errorOccurred, this, [this, socket] { end(socket); },
        Qt::QueuedConnection);
    socket->connectToHost(m_host, m_port);
}

void LinkEnd::close()
{
    m_isConnected = false;
    QTcpSocket* const socket = m_socket;
    if (socket == nullptr)
        return;
    m_isClosing = true;
    socket->state() == QAbstractSocket::ConnectedState ? socket->disconnectFromHost()
                                                       : socket->abort();
    const auto abort = [this, socket] {
        socket->abort();
        end(socket);
    };
    const bool isClosed = socket->state() == QAbstractSocket::UnconnectedState;
    QTimer::singleShot(isClosed ? 0s : 3s, socket, abort);
}

QByteArray LinkEnd::read(qint64 limit_B)
{
    return m_socket != nullptr && limit_B > 0 ? m_socket->read(limit_B) : QByteArray();
}

void LinkEnd::write(const QByteArray& bytes)
{
    if (!m_isConnected)
        return;
    m_socket->write(bytes);
    m_socket->flush();
}

void LinkEnd::accept()
{
    while (QTcpSocket* const socket = m_server->nextPendingConnection()) {
        if (m_socket != nullptr) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        socket->setParent(this);
        attach(socket);
        begin();
    }
}

// The signals are queued, so that nothing changes while the owner reads or writes. One that was
// queued for an earlier socket does nothing.
void LinkEnd::attach(QTcpSocket* socket)
{
    constexpr int maximumUnread_B = 64 * 1024;
    m_socket = socket;
    m_isClosing = false;
    socket->setReadBufferSize(maximumUnread_B);
    connect(socket, &QTcpSocket::readyRead, this, &LinkEnd::changed, Qt::QueuedConnection);
    connect(socket, &QTcpSocket::bytesWritten, this, &LinkEnd::changed, Qt::QueuedConnection);
    connect(
        socket, &QTcpSocket::disconnected, this, [this, socket] { end(socket); },
        Qt::QueuedConnection);
}

void LinkEnd::begin()
{
    // The kernel connects a socket to itself if nobody listens at a port that it gives to clients.
    if (m_socket->localPort() == m_socket->peerPort() &&
        m_socket->localAddress() == m_socket->peerAddress()) {
        m_socket->abort();
        return;
    }
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_isConnected = true;
    Q_EMIT connected();
}

void LinkEnd::end(QTcpSocket* socket)
{
    if (socket != m_socket || socket == nullptr)
        return;
    if (std::exchange(m_isConnected, false))
        Q_EMIT disconnected();
    else if (!m_isClosing)
        Q_EMIT failed(socket->errorString());
    m_socket = nullptr;
    socket->deleteLater();
    Q_EMIT ended();
}

} // namespace zeltools::simulatorkit
