#pragma once

#include <zeltools/simulationinterface/serversimulationinterface.h>

#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

namespace zeltools::simulatorkit
{

/// Whether the text is an address of the form that SimulationInterfaceAddress has.
bool isLinkAddress(const QString& rawAddress);

/// Begins to listen, if that is such an address, and returns the server, which `owner` keeps.
/// Returns null for an address to connect to.
QTcpServer* listenAt(const QString& rawAddress,
                     std::unique_ptr<simulationinterface::ServerSimulationInterface>& owner);

/// Begins to connect an unconnected socket, which reports the result by connected() or
/// errorOccurred(). Returns the reason if it fails at once, or an empty text.
QString connectTo(const QString& rawAddress, QTcpSocket& socket);

} // namespace zeltools::simulatorkit
