#include "simulationinterface/unixclientsimulationinterface.h"

#include "simulationinterface/unixsocketpath_p.h"

#include <sys/socket.h>
#include <unistd.h>

namespace zeltools::simulationinterface
{

UnixClientSimulationInterface::UnixClientSimulationInterface(
    const SimulationInterfaceAddress& address, QObject* parent)
    : ClientSimulationInterface(parent)
{
    const auto path = UnixSocketPath::parse(address.address);
    if (!path)
        return;
    m_path = std::make_unique<UnixSocketPath>(*path);
    // Such a connection is there at once, but nobody listens to the endpoint yet.
    QTimer::singleShot(0, this, &UnixClientSimulationInterface::start);
}

UnixClientSimulationInterface::~UnixClientSimulationInterface() = default;

bool UnixClientSimulationInterface::isAddressValid() const
{
    return m_path != nullptr;
}

QString UnixClientSimulationInterface::localAddress() const
{
    return m_path ? SimulationInterfaceAddress::rawAddressOf(UnixClient, m_path->text())
                  : QString();
}

void UnixClientSimulationInterface::openConnection(QTcpSocket& socket)
{
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return;
    if (m_path->connect(descriptor) && socket.setSocketDescriptor(descriptor))
        Q_EMIT socket.connected(); // The class emits it only for a connection that it has made.
    else
        ::close(descriptor);
}

} // namespace zeltools::simulationinterface
