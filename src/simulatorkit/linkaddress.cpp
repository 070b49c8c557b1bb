#include "simulatorkit/linkaddress_p.h"

#include "simulationinterface/simulationinterfaceaddress.h"
#include "simulationinterface/tcpserversimulationinterface.h"
#include "simulationinterface/tcpsimulationinterfacecommon.h"
#include "simulationinterface/unixserversimulationinterface.h"

#include <QFile>
#include <QTimer>

#include <cerrno>
#include <cstring>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace zeltools::simulatorkit
{

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

template <typename Server>
QTcpServer* listenAs(const SimulationInterfaceAddress& address,
                     std::unique_ptr<ServerSimulationInterface>& owner)
{
    auto listener = std::make_unique<Listener<Server>>(address, nullptr);
    QTcpServer* const server = listener->release();
    owner = std::move(listener);
    return server;
}

bool isTcp(const SimulationInterfaceAddress& address)
{
    return address.type == TcpServer || address.type == TcpClient;
}

bool isSocketPath(const QByteArray& path)
{
    return path.startsWith('/') && !path.contains('\0') &&
           path.size() < static_cast<int>(sizeof(sockaddr_un::sun_path));
}

// The kernel makes such a connection if nobody listens at a port that it gives to clients.
void dropConnectionToItself(QTcpSocket& socket)
{
    if (socket.localPort() == socket.peerPort() && socket.localAddress() == socket.peerAddress())
        socket.abort();
}

bool connectToPath(const QByteArray& path, QTcpSocket& socket)
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

} // namespace

bool isLinkAddress(const QString& rawAddress)
{
    const SimulationInterfaceAddress address(rawAddress);
    if (isTcp(address))
        return TcpSimulationInterfaceCommon::parseAddress(address.address).has_value();
    return address.type != Unknown && isSocketPath(QFile::encodeName(address.address));
}

QTcpServer* listenAt(const QString& rawAddress, std::unique_ptr<ServerSimulationInterface>& owner)
{
    const SimulationInterfaceAddress address(rawAddress);
    if (address.type == TcpServer)
        return listenAs<TcpServerSimulationInterface>(address, owner);
    if (address.type == UnixServer)
        return listenAs<UnixServerSimulationInterface>(address, owner);
    return nullptr;
}

QString connectTo(const QString& rawAddress, QTcpSocket& socket)
{
    const SimulationInterfaceAddress address(rawAddress);
    if (isTcp(address)) {
        const auto [host, port] =
            TcpSimulationInterfaceCommon::parseAddress(address.address).value();
        QObject::connect(&socket, &QTcpSocket::connected, &socket,
                         [&socket] { dropConnectionToItself(socket); });
        socket.connectToHost(host, port);
        return QString();
    }
    if (!connectToPath(QFile::encodeName(address.address), socket))
        return qt_error_string(errno);
    // The class emits it only for a connection that it has made itself.
    QTimer::singleShot(0, &socket, [&socket] { Q_EMIT socket.connected(); });
    return QString();
}

} // namespace zeltools::simulatorkit
