#include "simulationinterface/peerwatch_p.h"

#include <QTcpSocket>

#include <chrono>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace zeltools::simulationinterface
{

using namespace std::chrono_literals;

namespace
{

constexpr std::chrono::milliseconds checkInterval = 1s;
constexpr int maximumSilentChecks = 5;

} // namespace

PeerWatch::PeerWatch(QTcpSocket* socket)
    : QObject(socket)
    , m_socket(socket)
    , m_timer(this)
{
    m_timer.setInterval(checkInterval);
    connect(&m_timer, &QTimer::timeout, this, &PeerWatch::check);
    connect(socket, &QTcpSocket::disconnected, &m_timer, &QTimer::stop);
}

void PeerWatch::start()
{
    // After 3 s of silence the kernel probes the peer, and after three probes without an answer it
    // ends the connection.
    m_socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    const auto set = [this](int option, int value) {
        ::setsockopt(static_cast<int>(m_socket->socketDescriptor()), IPPROTO_TCP, option, &value,
                     sizeof value);
    };
    set(TCP_KEEPIDLE, 3);
    set(TCP_KEEPINTVL, 2);
    set(TCP_KEEPCNT, 3);
    m_silentChecks = 0;
    m_timer.start();
}

// The kernel sends no probes while bytes are unacknowledged: it repeats those for a quarter of an
// hour. Its own timeout (TCP_USER_TIMEOUT) would also end the connection to a peer that reads
// nothing.
void PeerWatch::check()
{
    tcp_info info{};
    socklen_t size = sizeof info;
    ::getsockopt(static_cast<int>(m_socket->socketDescriptor()), IPPROTO_TCP, TCP_INFO, &info,
                 &size);
    const bool isSilent = info.tcpi_retransmits + info.tcpi_probes > 0 &&
                          info.tcpi_last_ack_recv >= checkInterval.count();
    m_silentChecks = isSilent ? m_silentChecks + 1 : 0;
    if (m_silentChecks >= maximumSilentChecks)
        m_socket->abort();
}

} // namespace zeltools::simulationinterface
