#include "simulatorkit/linkend_p.h"

#include "simulationinterface/tcpsimulationinterfacecommon.h"
#include "simulatorkit/linkaddress_p.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

#include <poll.h>
#include <sys/socket.h>

namespace zeltools::simulatorkit
{

using namespace std::chrono_literals;
using simulationinterface::TcpSimulationInterfaceCommon;

namespace
{

constexpr int maximumUnread_B = 64 * 1024;

// The socket itself notices it only when the last byte has been read.
bool hasPeerHungUp(const QTcpSocket& socket)
{
    pollfd peer = {static_cast<int>(socket.socketDescriptor()), POLLRDHUP, 0};
    return socket.state() != QAbstractSocket::ConnectedState || ::poll(&peer, 1, 0) > 0;
}

} // namespace

LinkEnd::LinkEnd() = default;

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
    if (!isLinkAddress(rawAddress))
        return QStringLiteral("\"%1\" is not the address of a link").arg(rawAddress);
    m_address = rawAddress;
    m_server = listenAt(rawAddress, m_listener);
    if (m_server == nullptr)
        return QString();
    if (!m_server->isListening())
        return QStringLiteral("cannot listen on %1: %2").arg(rawAddress, m_listener->listenError());
    connect(m_server, &QTcpServer::newConnection, this, &LinkEnd::accept);
    return QString();
}

QString LinkEnd::address() const
{
    return isListening() ? m_listener->localAddress() : m_address;
}

void LinkEnd::connectToPeer()
{
    if (isListening() || m_socket != nullptr)
        return;
    auto* const socket = new QTcpSocket(this);
    attach(socket);
    m_error = connectTo(m_address, *socket);
    const auto ends = [this, socket] { end(socket); };
    connect(socket, &QTcpSocket::connected, this, [this, socket] {
        if (socket->state() == QAbstractSocket::ConnectedState)
            begin(socket);
    });
    connect(socket, &QTcpSocket::errorOccurred, this, ends, Qt::QueuedConnection);
    if (!m_error.isEmpty())
        QTimer::singleShot(0, socket, ends);
}

void LinkEnd::close()
{
    m_isConnected = false;
    QTcpSocket* const socket = m_socket;
    if (socket == nullptr || std::exchange(m_isClosing, true))
        return;
    socket->state() == QAbstractSocket::ConnectedState ? hangUp() : socket->abort();
    const auto abort = [this, socket] {
        socket->abort();
        end(socket);
    };
    const bool isClosed = socket->state() == QAbstractSocket::UnconnectedState;
    QTimer::singleShot(isClosed ? 0s : 3s, socket, abort);
}

void LinkEnd::hold(bool isHeld)
{
    m_isHeld = isHeld;
    if (m_isConnected && m_socket->state() != QAbstractSocket::ConnectedState)
        QTimer::singleShot(0, m_socket, [this] { end(m_socket); });
}

void LinkEnd::closeForGood()
{
    if (m_server != nullptr)
        m_server->close();
    delete std::exchange(m_waiting, nullptr);
    close();
}

QByteArray LinkEnd::read(qint64 limit_B)
{
    return m_socket != nullptr && m_socket->isOpen() && limit_B > 0
               ? m_socket->read(std::min(limit_B, m_socket->bytesAvailable()))
               : QByteArray();
}

void LinkEnd::write(const QByteArray& bytes)
{
    if (!m_isConnected || !m_socket->isOpen())
        return;
    m_socket->write(bytes);
    m_socket->flush();
}

void LinkEnd::accept()
{
    while (QTcpSocket* const socket = m_server->nextPendingConnection()) {
        const bool isEnding = m_isClosing || (m_socket != nullptr && hasPeerHungUp(*m_socket));
        socket->setParent(this);
        socket->setReadBufferSize(maximumUnread_B);
        if (m_socket == nullptr)
            take(socket);
        else if (isEnding && m_waiting == nullptr)
            m_waiting = socket;
        else
            delete socket;
    }
}

void LinkEnd::take(QTcpSocket* socket)
{
    attach(socket);
    if (socket->state() != QAbstractSocket::ConnectedState) // Its peer did not wait.
        QTimer::singleShot(0, socket, [this, socket] { end(socket); });
    begin(socket);
}

// The signals are queued, so that nothing changes while the owner reads or writes. One that was
// queued for an earlier socket does nothing.
void LinkEnd::attach(QTcpSocket* socket)
{
    m_socket = socket;
    m_isClosing = false;
    socket->setReadBufferSize(maximumUnread_B);
    connect(socket, &QTcpSocket::readyRead, this, &LinkEnd::change, Qt::QueuedConnection);
    connect(socket, &QTcpSocket::bytesWritten, this, &LinkEnd::change, Qt::QueuedConnection);
    connect(
        socket, &QTcpSocket::disconnected, this, [this, socket] { end(socket); },
        Qt::QueuedConnection);
}

void LinkEnd::begin(QTcpSocket* socket)
{
    if (socket != m_socket || m_isClosing)
        return;
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    if (!socket->peerAddress().isNull()) // not AF_UNIX
        TcpSimulationInterfaceCommon::watchPeer(*socket);
    m_isConnected = true;
    Q_EMIT connected();
}

void LinkEnd::end(QTcpSocket* socket)
{
    if (socket != m_socket || socket == nullptr || (m_isHeld && m_isConnected))
        return;
    if (std::exchange(m_isConnected, false))
        Q_EMIT disconnected();
    else if (!m_isClosing)
        Q_EMIT failed(m_error.isEmpty() ? socket->errorString() : m_error);
    m_socket = nullptr;
    socket->deleteLater();
    const QPointer<LinkEnd> self(this);
    Q_EMIT ended();
    if (self && m_socket == nullptr && m_waiting != nullptr)
        take(std::exchange(m_waiting, nullptr));
}

void LinkEnd::change()
{
    if (!m_isClosing)
        Q_EMIT changed();
    else if (m_socket != nullptr)
        hangUp();
}

// The kernel would reset a connection that is closed with unread bytes, and the peer would lose
// what it has not read.
void LinkEnd::hangUp()
{
    m_socket->readAll();
    if (m_socket->bytesToWrite() == 0)
        ::shutdown(static_cast<int>(m_socket->socketDescriptor()), SHUT_WR);
}

} // namespace zeltools::simulatorkit
