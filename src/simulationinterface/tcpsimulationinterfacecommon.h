#pragma once

#include <zeltools/zeltools_export.h>

#include <QHostAddress>
#include <QString>
#include <QTcpSocket>

#include <optional>
#include <utility>

namespace zeltools::simulationinterface
{

/// The common code of the two TCP endpoints.
struct ZELTOOLS_EXPORT TcpSimulationInterfaceCommon
{
    /// The two parts of a TCP address.
    using HostAndPort = std::pair<QHostAddress, quint16>;

    /// Parses "127.0.0.1/8133": a literal IPv4 or IPv6 address (host names are not resolved), a
    /// slash, and a decimal port. Any other text gives no value, with an Error line.
    ///
    /// Only the low 16 bits of the port are used, on purpose: 70000 means 4464, and -1 means 65535.
    static std::optional<HostAndPort> parseAddress(const QString& address);

    /// The text that parseAddress() parses: "127.0.0.1/8133".
    static QString addressOf(const QHostAddress& host, quint16 port);

    /// Ends the connection of the socket within 10 s after its peer has lost its power or its
    /// network. A peer whose system answers keeps the connection, even if it does not read. The
    /// watch ends with the connection.
    static void watchPeer(QTcpSocket& socket);
};

} // namespace zeltools::simulationinterface
