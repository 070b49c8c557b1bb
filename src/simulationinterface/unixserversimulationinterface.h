#pragma once

#include <zeltools/simulationinterface/serversimulationinterface.h>
#include <zeltools/simulationinterface/simulationinterfaceaddress.h>

namespace zeltools::simulationinterface
{

class SocketFile;

/// Listens for simulators of the same machine at an AF_UNIX socket, whose file has the mode 0600
/// and is removed with the endpoint. A file that a process has left behind is replaced, but not
/// that of a living listener.
class ZELTOOLS_EXPORT UnixServerSimulationInterface : public ServerSimulationInterface
{
    Q_OBJECT

public:
    /// Starts to listen. The address is an absolute path of at most 107 bytes, in a folder that the
    /// process may read and change; another text is an invalid address, with an Error line. If it
    /// cannot listen, it logs a Warning and does not try again.
    UnixServerSimulationInterface(const SimulationInterfaceAddress& address, QObject* parent);
    ~UnixServerSimulationInterface() override;

    bool isAddressValid() const override;
    QString localAddress() const override;

private:
    std::unique_ptr<SocketFile> m_file; // null if the address is invalid
};

} // namespace zeltools::simulationinterface
