#include "simulationinterface/linksocket_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/peerwatch_p.h"
#include "simulationinterface/simulationframe_p.h"
#include "simulationinterface/simulationinterface.h"
#include "simulationinterface/tcpsimulationinterfacecommon.h"

#include <QHostAddress>
#include <QPointer>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

#include <sys/socket.h>

namespace zeltools::simulationinterface
{

namespace
{

constexpr int maximumUnread_B = 64 * 1024;
constexpr int batch_B = 64 * 1024;
constexpr qint64 maximumUnsent_B = qint64(64) * 1024 * 1024;

// The protocol may hold all but the last byte of the longest frame when it gets a full socket
// buffer. A stream of correct frames never exceeds its limit.
static_assert(streamHeaderSize_B + SimulationProtocol::maximumPayload_B - 1 + maximumUnread_B <=
              SimulationProtocol::maximumBuffered_B);

} // namespace

std::shared_ptr<LinkSocket> LinkSocket::share(QTcpSocket* socket)
{
    return {new LinkSocket(socket), [](LinkSocket* unused) { unused->deleteLater(); }};
}

LinkSocket::LinkSocket(QTcpSocket* socket)
    : m_socket(socket)
    , m_watch(new PeerWatch(socket))
{
    socket->setParent(this);
    socket->setReadBufferSize(maximumUnread_B);
    if (socket->state() == QAbstractSocket::ConnectedState)
        setUpConnection();
    connect(socket, &QTcpSocket::connected, this, &LinkSocket::setUpConnection);
    connect(socket, &QTcpSocket::bytesWritten, this, &LinkSocket::handOver);
    connect(socket, &QTcpSocket::disconnected, this, [this] { m_unsent.clear(); });
}

bool LinkSocket::isTcp() const
{
    int domain = 0;
    socklen_t size = sizeof domain;
    ::getsockopt(static_cast<int>(m_socket->socketDescriptor()), SOL_SOCKET, SO_DOMAIN, &domain,
                 &size);
    return domain == AF_INET || domain == AF_INET6;
}

void LinkSocket::setUpConnection()
{
    if (!isTcp())
        return;
    // A message does not wait until the peer has acknowledged the previous one.
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_watch->start();
}

bool LinkSocket::isConnectedToItself() const
{
    return isTcp() && m_socket->localPort() == m_socket->peerPort() &&
           m_socket->localAddress() == m_socket->peerAddress();
}

QString LinkSocket::peerAddress() const
{
    if (!isTcp())
        return {};
    return TcpSimulationInterfaceCommon::addressOf(m_socket->peerAddress(), m_socket->peerPort());
}

bool LinkSocket::processWith(SimulationInterface& endpoint)
{
    const QScopedValueRollback<bool> processing(m_isBeingProcessed, true);
    const QPointer<SimulationInterface> kept(&endpoint);
    do {
        endpoint.processIncomingData();
    } while (kept && m_socket->bytesAvailable() > 0);
    return kept != nullptr;
}

QByteArray LinkSocket::readAvailable()
{
    char* const bytes =
        resizeUninitialized(m_received, static_cast<int>(m_socket->bytesAvailable()));
    if (!m_received.isEmpty())
        m_received.resize(static_cast<int>(m_socket->read(bytes, m_received.size())));
    return m_received;
}

bool LinkSocket::write(const QByteArray& frame)
{
    const qint64 unsent_B = m_socket->bytesToWrite() + m_unsent.size();
    if (unsent_B < maximumUnsent_B / 2)
        m_hasWarned = false;
    if (unsent_B + frame.size() > maximumUnsent_B) {
        if (!std::exchange(m_hasWarned, true)) {
            LogFormatter(LogLevel::Warning).log(Log::Simulation)
                << "The simulator does not read, dropping data";
        }
        return false;
    }
    if (unsent_B == 0)
        return m_socket->write(frame) == frame.size();
    m_unsent.reserve(std::max<int>(m_unsent.size() + frame.size(), batch_B));
    m_unsent.append(frame.constData(), frame.size());
    if (m_unsent.size() + frame.size() > batch_B)
        handOver();
    return true;
}

void LinkSocket::close(const QObject* listener)
{
    m_socket->disconnect(listener);
    close();
}

void LinkSocket::close()
{
    m_socket->flush(); // bytesWritten() calls handOver() for the rest
    m_socket->abort();
}

void LinkSocket::handOver()
{
    if (!m_unsent.isEmpty())
        m_socket->write(
            std::exchange(m_unsent, {})); // The socket keeps the array and copies nothing.
}

} // namespace zeltools::simulationinterface
