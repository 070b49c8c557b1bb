#include "simulationinterface/simulationinterfaceaddress.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QMap>
#include <QStringList>

namespace zeltools::simulationinterface
{

namespace
{

const QMap<QString, SimulationInterfaceType>& knownTypes()
{
    static const QMap<QString, SimulationInterfaceType> types{
        {QStringLiteral("tcpserver"), TcpServer},
        {QStringLiteral("tcpclient"), TcpClient},
    };
    return types;
}

// The hint of a wrong address does not name these types: programs compare its text.
const QMap<QString, SimulationInterfaceType>& unixTypes()
{
    static const QMap<QString, SimulationInterfaceType> types{
        {QStringLiteral("unixserver"), UnixServer},
        {QStringLiteral("unixclient"), UnixClient},
    };
    return types;
}

QString formatHint()
{
    return QStringLiteral("type%1type_dependent_address, known types: %2")
        .arg(SimulationInterfaceAddress::fieldSeparator(),
             QStringList(knownTypes().keys()).join(QLatin1Char(',')));
}

void logError(const char* what, const QString& rawAddress)
{
    LogFormatter(LogLevel::Error).log(Log::Simulation)
        << what << rawAddress << ", expected format:" << formatHint();
}

} // namespace

SimulationInterfaceAddress::SimulationInterfaceAddress(const QString& raw)
    : rawAddress(raw)
{
    parseRawAddress();
}

void SimulationInterfaceAddress::parseRawAddress()
{
    type = Unknown;
    address.clear();
    const int separator = rawAddress.indexOf(fieldSeparator());
    if (separator < 0) {
        logError("Missing fields in raw address", rawAddress);
        return;
    }
    const QString key = rawAddress.left(separator).toLower();
    type = knownTypes().value(key, unixTypes().value(key, Unknown));
    if (type == Unknown) {
        logError("Invalid type in address", rawAddress);
        return;
    }
    address = rawAddress.mid(separator + fieldSeparator().size());
}

QString SimulationInterfaceAddress::fieldSeparator()
{
    return QStringLiteral("/");
}

QString SimulationInterfaceAddress::rawAddressOf(SimulationInterfaceType type,
                                                 const QString& address)
{
    return knownTypes().key(type, unixTypes().key(type)) + fieldSeparator() + address;
}

} // namespace zeltools::simulationinterface
