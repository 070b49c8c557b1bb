#pragma once

#include <QByteArray>
#include <QTcpSocket>
#include <QTimer>

#include <memory>

namespace zeltools::simulationinterface
{

class SimulationInterface;

/// The socket of an endpoint, with bounds on what it keeps in both directions, so that a flood
/// waits with the sender. A peer that is silent for a minute, because it has lost its power or its
/// network, loses the connection; a peer that only leaves everything unread does not.
///
/// Frames that find others waiting are gathered, so that the socket is called once for 64 KiB of
/// them.
class TcpSocket : public QObject
{
public:
    /// Takes the socket over. The last copy leaves the deletion to the event loop, since a socket
    /// goes on after each of its signals, though a listener may have deleted the endpoint. A
    /// listener may also run an event loop in which that happens: whoever hands a signal on keeps a
    /// copy until he returns.
    static std::shared_ptr<TcpSocket> share(QTcpSocket* socket);

    QTcpSocket* operator->() const { return m_socket; }
    QTcpSocket* get() const { return m_socket; }

    /// The system makes such a connection when nobody listens at a port that it also gives away.
    bool isConnectedToItself() const;
    /// Makes the endpoint process all that has arrived, and what arrives while a listener runs an
    /// event loop, which no signal tells. False when the endpoint was deleted meanwhile.
    bool processWith(SimulationInterface& endpoint);
    bool isBeingProcessed() const { return m_isBeingProcessed; }

    /// All bytes that can be read.
    QByteArray readAvailable();
    /// Takes the frame as a whole or not at all. When the peer leaves more than 64 MiB unread,
    /// frames are lost, with a Warning for the first of them; the next Warning comes only after
    /// less than half of it was left.
    bool write(const QByteArray& frame);
    /// For an endpoint that is being destroyed, and must hear of it no more. What was written and
    /// fits into the system's buffer still reaches the peer.
    void close(const QObject* listener);

private:
    explicit TcpSocket(QTcpSocket* socket);
    void setUpConnection();
    void dropSilentPeer();
    void handOver();

    QTcpSocket* m_socket;
    QByteArray m_received;
    QByteArray m_unsent; // behind what the socket has
    QTimer m_check;
    bool m_hasWarned = false;
    bool m_isBeingProcessed = false;
};

} // namespace zeltools::simulationinterface
