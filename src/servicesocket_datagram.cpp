#include "servicesocket_p.h"

#include "filedescriptor.h"

#include <cerrno>
#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>

namespace
{

// A name that begins with "@" is one of the abstract namespace, whose names begin with a zero byte.
int fillAddress(const QByteArray& name, sockaddr_un& address)
{
    if (!name.startsWith('/') && !name.startsWith('@'))
        return EAFNOSUPPORT;
    const auto size = static_cast<size_t>(name.size());
    if (size < 2)
        return EINVAL;
    if (size >= sizeof address.sun_path)
        return ENAMETOOLONG;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), size);
    if (name.startsWith('@'))
        address.sun_path[0] = '\0';
    return 0;
}

} // namespace

int servicesocket::sendDatagram(const QByteArray& socketName, const QByteArray& message,
                                std::chrono::milliseconds patience)
{
    sockaddr_un address = {};
    if (const int error = fillAddress(socketName, address); error != 0)
        return error;
    const zeltools::FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (socket < 0)
        return errno;
    const timeval limit = {time_t(patience.count() / 1000),
                           suseconds_t(patience.count() % 1000 * 1000)};
    const size_t length = offsetof(sockaddr_un, sun_path) + static_cast<size_t>(socketName.size());
    const bool isSent =
        ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit) == 0 &&
        ::sendto(socket, message.constData(), static_cast<size_t>(message.size()), MSG_NOSIGNAL,
                 reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(length)) >= 0;
    return isSent ? 0 : errno;
}
