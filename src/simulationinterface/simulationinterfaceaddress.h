#pragma once

#include <zeltools/simulationinterface/simulationinterfacetype.h>
#include <zeltools/zeltools_export.h>

#include <QString>

namespace zeltools::simulationinterface
{

/// Which channel leads to a simulator, read from one text: the type, a slash, and the rest, which
/// the type gives a meaning to. "tcpclient/127.0.0.1/8133" has the type TcpClient and the address
/// "127.0.0.1/8133". Upper and lower case of the type are the same.
struct ZELTOOLS_EXPORT SimulationInterfaceAddress
{
    /// Parses the text at once.
    explicit SimulationInterfaceAddress(const QString& rawAddress);

    /// Sets type and address from rawAddress. A text without a slash, or with a type that is not
    /// known, makes the type Unknown and the address empty, with an Error line.
    void parseRawAddress();

    /// "/". It also stands between the IP address and the port.
    static QString fieldSeparator();

    SimulationInterfaceType type = Unknown;
    QString rawAddress;
    QString address; ///< All that follows the first slash, further slashes included.
};

} // namespace zeltools::simulationinterface
