#pragma once

#include <QString>

#include <optional>

#include <sys/un.h>

namespace zeltools::simulationinterface
{

/// The absolute path of an AF_UNIX socket, as the system calls take it.
class UnixSocketPath
{
public:
    static constexpr int maximumSize_B = sizeof(sockaddr_un::sun_path) - 1;

    /// Returns no value, after an Error line, for a path that is not absolute, has more than 107
    /// bytes or holds a zero byte.
    static std::optional<UnixSocketPath> parse(const QString& address);

    QString text() const;
    const char* encoded() const { return m_address.sun_path; }

    /// These return whether the system call succeeded; if not, errno is set.
    bool bind(int socket) const;
    bool connect(int socket) const;

private:
    sockaddr_un m_address{};
};

} // namespace zeltools::simulationinterface
