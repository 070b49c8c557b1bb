// Compares the parsers of simulation addresses with a plain reading, which splits all fields, looks
// at them and joins them again.

#include "fuzz.h"
#include <zeltools/logging/lognode.h>
#include <zeltools/simulationinterface/simulationinterfaceaddress.h>
#include <zeltools/simulationinterface/tcpsimulationinterfacecommon.h>

#include <QStringList>

using namespace zeltools::simulationinterface;

namespace
{

void checkTcp(const QString& address)
{
    const auto parsed = TcpSimulationInterfaceCommon::parseAddress(address);
    const QStringList fields = address.split('/');
    bool isValid = fields.size() == 2 && !QHostAddress(fields[0]).isNull();
    const int port = isValid ? fields[1].toInt(&isValid) : 0;
    require(parsed.has_value() == isValid);
    if (parsed) {
        require(parsed->first == QHostAddress(fields[0]));
        require(parsed->second == (port & 0xffff));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    LogNode::instance(); // prints nothing as long as nobody listens
    const QString raw =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const SimulationInterfaceAddress address(raw);
    QStringList fields = raw.split('/');
    const QString key = fields.takeFirst().toLower();
    const QStringList keys{"tcpserver", "tcpclient", "unixserver", "unixclient"};
    SimulationInterfaceType type = Unknown;
    if (!fields.isEmpty())
        type = SimulationInterfaceType(keys.indexOf(key) + 1);
    require(address.rawAddress == raw && address.type == type);
    require(address.address == (type == Unknown ? QString() : fields.join('/')));
    checkTcp(address.address);
    checkTcp(raw);
    return 0;
}
