#pragma once

namespace zeltools::simulationinterface
{

/// The kinds of channel to a simulator.
enum SimulationInterfaceType : int {
    Unknown = 0,    ///< The address names none of the kinds.
    TcpServer = 1,  ///< "tcpserver": the machine listens
    TcpClient = 2,  ///< "tcpclient": the machine connects
    UnixServer = 3, ///< "unixserver": the machine listens at an AF_UNIX socket
    UnixClient = 4  ///< "unixclient": the machine connects to an AF_UNIX socket
};

} // namespace zeltools::simulationinterface
