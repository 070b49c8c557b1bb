#include "simulationinterface/unixsocketpath_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QFile>

#include <cstring>

#include <sys/socket.h>

namespace zeltools::simulationinterface
{

std::optional<UnixSocketPath> UnixSocketPath::parse(const QString& address)
{
    const QByteArray encoded = QFile::encodeName(address);
    if (!encoded.startsWith('/') || encoded.size() > maximumSize_B || encoded.contains('\0')) {
        LogFormatter(LogLevel::Error).log(Log::Simulation)
            << "address" << address << "is invalid, expected format:"
            << QStringLiteral("absolute path of at most %1 bytes, example /run/zel/sim.sock")
                   .arg(maximumSize_B);
        return std::nullopt;
    }
    UnixSocketPath path;
    path.m_address.sun_family = AF_UNIX;
    std::memcpy(path.m_address.sun_path, encoded.constData(), size_t(encoded.size()));
    return path;
}

QString UnixSocketPath::text() const
{
    return QFile::decodeName(m_address.sun_path);
}

bool UnixSocketPath::bind(int socket) const
{
    return ::bind(socket, reinterpret_cast<const sockaddr*>(&m_address), sizeof m_address) == 0;
}

bool UnixSocketPath::connect(int socket) const
{
    return ::connect(socket, reinterpret_cast<const sockaddr*>(&m_address), sizeof m_address) == 0;
}

} // namespace zeltools::simulationinterface
