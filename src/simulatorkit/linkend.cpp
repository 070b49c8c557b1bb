#include "simulatorkit/linkend_p.h"

#include "simulationinterface/tcpserversimulationinterface.h"
#include "simulationinterface/unixserversimulationinterface.h"

#include <QFile>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace zeltools::simulatorkit
{

using namespace std::chrono_literals;
using namespace simulationinterface;

namespace
{

/// An endpoint that gives its listening socket away.
template <typename Server>
class Listener final : public Server
{
public:
    using Server::Server;
    QTcpServer* release()
    {
        QObject::disconnect(&this->server(), &QTcpServer::newConnection, this, nullptr);
        return &this->server();
    }
};

bool isSocketPath(const QByteArray& path)
{
    return path.startsWith('/') && !path.contains('\0') &&
           path.size() < static_cast<int>(sizeof(sockaddr_un::sun_path));
}

bool isTcp(const SimulationInterfaceAddress& address)
{
    return address.type == TcpServer || address.type == TcpClient;
}

// The kernel makes such a connection if nobody listens at a port that it gives to clients.
bool isConnectedToItself(const QTcpSocket& socket)
{
    return socket.localPort() == socket.peerPort() && socket.localAddress() == socket.peerAddress();
}

template <typename Server>
QTcpServer* listen(const SimulationInterfaceAddress& address,
                   std::unique_ptr<ServerSimulationInterface>& owner)
{
    auto listener = std::make_unique<Listener<Server>>(address, nullptr);
    QTcpServer* const server = listener->release();
    owner = std::move(listener);
    return server;
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

bool LinkEnd::isAddress(const QString& rawAddress)
{
    const SimulationInterfaceAddress address(rawAddress);
    if (isTcp(address))
        return TcpSimulationInterfaceCommon::parseAddress(address.address).has_value();
    return address.type != Unknown && isSocketPath(QFile::encodeName(address.address));
}

QString LinkEnd::open(const QString& rawAddress)
{
    if (!isAddress(rawAddress))
        return QStringLiteral("\"%1\" is no address of a link").arg(rawAddress);
    m_address = rawAddress;
    const SimulationInterfaceAddress address(rawAddress);
    if (address.type == TcpServer)
        m_server = listen<TcpServerSimulationInterface>(address, m_listener);
    else if (address.type == UnixServer)
        m_server = listen<UnixServerSimulationInterface>(address, m_listener);
    else
        return QString();
    if (!m_server->isListening())
        return QStringLiteral("cannot listen on ") + rawAddress;
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
    m_error.clear();
    const auto begins = [this, socket] {
        isConnectedToItself(*socket) ? socket->abort() : begin(socket);
    };
    const auto ends = [this, socket] { end(socket); };
    const SimulationInterfaceAddress address(m_address);
    if (isTcp(address)) {
        const auto [host, port] =
            TcpSimulationInterfaceCommon::parseAddress(address.address).value();
        connect(socket, &QTcpSocket::connected, this, begins);
        connect(socket, &QTcpSocket::errorOccurred, this, ends, Qt::QueuedConnection);
        socket->connectToHost(host, port);
    } else if (connectToPath(QFile::encodeName(address.address), *socket)) {
        QTimer::singleShot(0, socket, [this, socket] { begin(socket); });
    } else {
        m_error = qt_error_string(errno);
        QTimer::singleShot(0, socket, ends);
    }
}

bool LinkEnd::connectToPath(const QByteArray& path, QTcpSocket& socket)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return socket.setSocketDescriptor(descriptor);
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return false;
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
    return m_socket != nullptr && limit_B > 0
               ? m_socket->read(std::min(limit_B, m_socket->bytesAvailable()))
               : QByteArray();
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
        begin(socket);
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

void LinkEnd::begin(QTcpSocket* socket)
{
    if (socket != m_socket || m_isClosing)
        return;
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
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
        Q_EMIT failed(m_error.isEmpty() ? socket->errorString() : m_error);
    m_socket = nullptr;
    socket->deleteLater();
    Q_EMIT ended();
}

} // namespace zeltools::simulatorkit
