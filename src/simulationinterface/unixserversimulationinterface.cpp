#include "simulationinterface/unixserversimulationinterface.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/socketfile_p.h"

#include <cerrno>

namespace zeltools::simulationinterface
{

UnixServerSimulationInterface::UnixServerSimulationInterface(
    const SimulationInterfaceAddress& address, QObject* parent)
    : ServerSimulationInterface(parent)
{
    const auto path = UnixSocketPath::parse(address.address);
    if (!path)
        return;
    m_file = std::make_unique<SocketFile>(*path);
    const int socket = m_file->listen();
    if (socket < 0 || !server().setSocketDescriptor(socket)) {
        setListenError(qt_error_string(errno));
        LogFormatter(LogLevel::Warning).log(Log::Simulation).noquote()
            << QStringLiteral("Failed listening on %1: %2").arg(path->text(), listenError());
    }
}

UnixServerSimulationInterface::~UnixServerSimulationInterface() = default;

bool UnixServerSimulationInterface::isAddressValid() const
{
    return m_file != nullptr;
}

QString UnixServerSimulationInterface::localAddress() const
{
    if (!server().isListening())
        return {};
    return SimulationInterfaceAddress::rawAddressOf(UnixServer, m_file->path().text());
}

} // namespace zeltools::simulationinterface
