#pragma once

#include <zeltools/simulationinterface/clientsimulationinterface.h>
#include <zeltools/simulationinterface/simulationinterfaceaddress.h>

namespace zeltools::simulationinterface
{

class UnixSocketPath;

/// Connects to a simulator of the same machine that listens at an AF_UNIX socket.
class ZELTOOLS_EXPORT UnixClientSimulationInterface : public ClientSimulationInterface
{
    Q_OBJECT

public:
    /// Starts to connect as soon as the event loop runs. The address is an absolute path of at most
    /// 107 bytes; another text is an invalid address, with an Error line.
    UnixClientSimulationInterface(const SimulationInterfaceAddress& address, QObject* parent);
    ~UnixClientSimulationInterface() override;

    bool isAddressValid() const override;
    QString localAddress() const override;

protected:
    void openConnection(QTcpSocket& socket) override;

private:
    std::unique_ptr<const UnixSocketPath> m_path; // null if the address is invalid
};

} // namespace zeltools::simulationinterface
