#pragma once

#include <QByteArray>

#include <chrono>

/// The socket where the service manager takes messages of its services, such as "READY=1". With
/// libsystemd (ZELTOOLS_LIBSYSTEMD), which the first message loads, this is the socket that
/// NOTIFY_SOCKET names at the time of the call; where it is missing, and in a build without it, the
/// functions speak the protocol themselves.
namespace servicesocket
{

/// Sends a message and returns 0, or the number of the error. If the socket is full because the
/// manager does not read, the call waits for the patience, which is more than 0, and returns
/// EAGAIN. The message may still be sent later. Any thread may call it.
int send(const QByteArray& socketName, const QByteArray& message,
         std::chrono::milliseconds patience);
/// Does so without libsystemd.
int sendDatagram(const QByteArray& socketName, const QByteArray& message,
                 std::chrono::milliseconds patience);

} // namespace servicesocket
