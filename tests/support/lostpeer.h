#pragma once

#include <QTcpSocket>

#include <linux/filter.h>
#include <sys/socket.h>

namespace support
{

/// From now on no packet reaches this end of a connection, as if its computer had lost its power.
inline bool lose(const QTcpSocket& peer)
{
    sock_filter dropAll{BPF_RET | BPF_K, 0, 0, 0};
    const sock_fprog program{1, &dropAll};
    return ::setsockopt(int(peer.socketDescriptor()), SOL_SOCKET, SO_ATTACH_FILTER, &program,
                        sizeof program) == 0;
}

} // namespace support
