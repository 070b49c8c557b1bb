#pragma once

#include <QByteArray>
#include <QTcpSocket>

#include <memory>

namespace zeltools::simulationinterface
{

/// The socket of an endpoint. The last copy leaves the deletion to the event loop, since a socket
/// goes on after each of its signals, though a listener may have deleted the endpoint. A listener
/// may also run an event loop in which that happens: whoever hands a signal on keeps a copy until
/// he returns.
using SharedSocket = std::shared_ptr<QTcpSocket>;

/// Takes the socket over and bounds what it buffers, so that a flood waits with the sender.
SharedSocket shareSocket(QTcpSocket* socket);

/// Closes the socket of an endpoint that is being destroyed, which must hear of it no more. What
/// was written and fits into the system's buffer still reaches the peer.
void closeSocket(QTcpSocket& socket, const QObject* listener);

/// All bytes that can be read, without the detours of readAll().
QByteArray readAvailable(QTcpSocket& socket);

/// Writes the frame as a whole or not at all. When the peer leaves more than 64 MiB unread, frames
/// are lost, with a Warning for the first of them: `isStalled` remembers that.
bool writeFrame(QTcpSocket& socket, const QByteArray& frame, bool& isStalled);

} // namespace zeltools::simulationinterface
