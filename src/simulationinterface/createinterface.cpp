#include "simulationinterface/createinterface.h"

#include "simulationinterface/tcpclientsimulationinterface.h"
#include "simulationinterface/tcpserversimulationinterface.h"
#include "simulationinterface/unixclientsimulationinterface.h"
#include "simulationinterface/unixserversimulationinterface.h"

#include <memory>

namespace zeltools::simulationinterface
{

SimulationInterface* createInterface(const QString& rawAddress, QObject* parent)
{
    const SimulationInterfaceAddress address(rawAddress);
    std::unique_ptr<SimulationInterface> made;
    if (address.type == TcpServer)
        made = std::make_unique<TcpServerSimulationInterface>(address, parent);
    else if (address.type == TcpClient)
        made = std::make_unique<TcpClientSimulationInterface>(address, parent);
    else if (address.type == UnixServer)
        made = std::make_unique<UnixServerSimulationInterface>(address, parent);
    else if (address.type == UnixClient)
        made = std::make_unique<UnixClientSimulationInterface>(address, parent);
    return made && made->isAddressValid() ? made.release() : nullptr;
}

} // namespace zeltools::simulationinterface
