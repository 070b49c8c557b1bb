#pragma once

#include <zeltools/simulationinterface/simulationinterfacetype.h>
#include <zeltools/zeltools_export.h>

#include <QString>

namespace zeltools::simulationinterface
{

/// The address of a channel to a simulator, parsed from one text: the type, a slash, and an address
/// whose meaning depends on the type. "tcpclient/127.0.0.1/8133" has the type TcpClient and the
/// address "127.0.0.1/8133"; "unixserver//run/zel/sim.sock" has the type UnixServer and the address
/// "/run/zel/sim.sock". The type is not case-sensitive.
struct ZELTOOLS_EXPORT SimulationInterfaceAddress
{
    /// Calls parseRawAddress().
    explicit SimulationInterfaceAddress(const QString& rawAddress);

    /// Sets type and address from rawAddress. A text without a slash or with an unknown type sets
    /// the type to Unknown and clears the address, with an Error line.
    void parseRawAddress();

    /// The separator "/", which also separates the IP address from the port.
    static QString fieldSeparator();

    /// The text that has this type, which must not be Unknown, and this address.
    static QString rawAddressOf(SimulationInterfaceType type, const QString& address);

    SimulationInterfaceType type = Unknown; ///< The kind of end that the first word names.
    QString rawAddress;                     ///< The text that was parsed.
    QString address; ///< The text after the first slash, including further slashes.
};

} // namespace zeltools::simulationinterface
