#pragma once

#include <QByteArray>
#include <QTcpSocket>

#include <memory>

namespace zeltools::simulationinterface
{

class PeerWatch;
class SimulationInterface;

/// The socket of an endpoint, with limits on the bytes that it buffers in both directions. A
/// PeerWatch ends the connection to a TCP peer that has lost its power or its network.
///
/// QTcpSocket also works on the descriptor of an AF_UNIX socket, but does not know its addresses.
///
/// Frames that have to wait are gathered, so that the socket is called once for 64 KiB of them.
class LinkSocket : public QObject
{
public:
    /// Takes ownership of the socket. The last copy of the pointer deletes the object in the event
    /// loop, since a receiver of a signal of the socket may delete the endpoint while the socket is
    /// still in use. A receiver may also run an event loop in which that happens: an endpoint
    /// therefore keeps a copy while it handles a signal.
    static std::shared_ptr<LinkSocket> share(QTcpSocket* socket);

    QTcpSocket* operator->() const { return m_socket; }
    QTcpSocket& operator*() const { return *m_socket; }
    QTcpSocket* get() const { return m_socket; }

    /// The IP address and the port of the peer; empty for AF_UNIX.
    QString peerAddress() const;

    /// Whether both ends are this socket. The kernel makes such a connection if nobody listens at a
    /// port from which it also takes ports for clients.
    bool isConnectedToItself() const;
    /// Makes the endpoint process all bytes that have arrived, including those that arrive without
    /// a signal while a receiver runs an event loop. Returns false if the endpoint was deleted.
    bool processWith(SimulationInterface& endpoint);
    bool isBeingProcessed() const { return m_isBeingProcessed; }

    /// Returns all bytes that have arrived.
    QByteArray readAvailable();
    /// Accepts the whole frame or nothing. While the peer leaves 64 MiB unread, frames are lost,
    /// with a Warning for the first one; the next Warning comes only after less than half of that
    /// was unread.
    bool write(const QByteArray& frame);
    /// Closes the connection. Written bytes that fit into the kernel's buffer still reach the peer.
    void close();
    /// Does the same for an endpoint that is being destroyed and gets no signal any more.
    void close(const QObject* listener);

private:
    explicit LinkSocket(QTcpSocket* socket);
    bool isTcp() const;
    void setUpConnection();
    void handOver();

    QTcpSocket* m_socket;
    PeerWatch* m_watch; // for TCP
    QByteArray m_received;
    QByteArray m_unsent; // follows the bytes that the socket has
    bool m_hasWarned = false;
    bool m_isBeingProcessed = false;
};

} // namespace zeltools::simulationinterface
