#pragma once

#include <QTimer>

class QTcpSocket;

namespace zeltools::simulationinterface
{

/// Ends a TCP connection whose peer has lost its power or its network, within 10 s. A peer whose
/// system answers keeps the connection, even if it does not read.
///
/// If a peer is lost while it has not read for minutes, the kernel asks it so rarely that up to two
/// more minutes pass.
class PeerWatch : public QObject
{
public:
    /// Watches the connection of the socket, which owns the object, until it ends.
    explicit PeerWatch(QTcpSocket* socket);

    /// Begins with a connection.
    void start();

private:
    void check();

    QTcpSocket* const m_socket;
    QTimer m_timer;
    int m_silentChecks = 0;
};

} // namespace zeltools::simulationinterface
