#include "simulationinterface/tcpsimulationinterfacecommon.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/peerwatch_p.h"
#include "simulationinterface/simulationinterfaceaddress.h"

#include <QStringList>

namespace zeltools::simulationinterface
{

namespace
{

QString formatHint()
{
    return QStringLiteral("IP%1port, example 127.0.0.1%1%2")
        .arg(SimulationInterfaceAddress::fieldSeparator())
        .arg(8133);
}

} // namespace

std::optional<TcpSimulationInterfaceCommon::HostAndPort>
TcpSimulationInterfaceCommon::parseAddress(const QString& address)
{
    const QStringList fields = address.split(SimulationInterfaceAddress::fieldSeparator());
    if (fields.size() != 2) {
        LogFormatter(LogLevel::Error).log(Log::Simulation)
            << "address" << address << "is invalid, expected format:" << formatHint();
        return std::nullopt;
    }
    const QHostAddress host(fields[0]);
    if (host.isNull()) {
        LogFormatter(LogLevel::Error).log(Log::Simulation)
            << "host address is invalid, failed parsing IP, expected format:" << formatHint();
        return std::nullopt;
    }
    bool isNumber = false;
    const int port = fields[1].toInt(&isNumber);
    if (!isNumber) {
        LogFormatter(LogLevel::Error).log(Log::Simulation)
            << "port is invalid, failed parsing port, expected format:" << formatHint();
        return std::nullopt;
    }
    return HostAndPort(host, static_cast<quint16>(port));
}

QString TcpSimulationInterfaceCommon::addressOf(const QHostAddress& host, quint16 port)
{
    return host.toString() + SimulationInterfaceAddress::fieldSeparator() + QString::number(port);
}

void TcpSimulationInterfaceCommon::watchPeer(QTcpSocket& socket)
{
    (new PeerWatch(&socket))->start();
}

} // namespace zeltools::simulationinterface
