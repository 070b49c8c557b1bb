#pragma once

#include <zeltools/zeltools_export.h>

#include <QHostAddress>
#include <QString>

#include <optional>
#include <utility>

namespace zeltools::simulationinterface
{

/// What the two TCP endpoints share.
struct ZELTOOLS_EXPORT TcpSimulationInterfaceCommon
{
    using HostAndPort = std::pair<QHostAddress, quint16>;

    /// Reads "127.0.0.1/8133": a literal IPv4 or IPv6 address (names are not resolved), a slash,
    /// and a decimal port. Nothing, with an Error line, when the text is anything else.
    ///
    /// Of the port only the low 16 bits count, on purpose: 70000 means 4464, and -1 means 65535.
    static std::optional<HostAndPort> parseAddress(const QString& address);
};

} // namespace zeltools::simulationinterface
