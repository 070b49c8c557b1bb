#include "system/ntp.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "system/ntpstate_p.h"
#include "system/packagesmanager.h"

#include <QtEndian>

#include <chrono>

namespace zeltools::system::service
{

namespace
{

using namespace std::chrono_literals;

constexpr quint16 s_port = 123;
constexpr int s_packetSize_B = 48;
// Leap indicator 3 (the clock is not synchronised), version 4, mode 3 (client).
constexpr char s_clientHeader = '\xE3';
constexpr int s_transmitSeconds_B = 40; // offset in the packet
constexpr qint64 s_from1900To1970_s = 2208988800;

constexpr auto s_pollInterval = 1h;
constexpr auto s_retryInterval = 30s;
constexpr int s_mostFailures = 5; // then the client waits for the next poll

} // namespace

Ntp::Ntp(const QHostAddress& server)
    : Ntp(server, PackagesManager::instance(), Machine())
{
}

Ntp::Ntp(const QHostAddress& server, PackagesManager& packages, const Machine& machine)
    : Service(Service::Ntp)
    , m_packages(packages)
    , m_state(std::make_unique<NtpState>(machine.ntpStateFile))
    , m_server(server)
    , m_socket(new QUdpSocket)
{
    load();
}

Ntp::~Ntp()
{
    m_socket->disconnect(this);
}

bool Ntp::enabled() const
{
    return m_packages.ntpAvailable() ? m_packages.ntpEnabled() : m_isFallbackEnabled;
}

void Ntp::enable(bool on)
{
    if (m_packages.ntpAvailable()) {
        followPackage();
        m_packages.setNtpEnabled(on);
        return;
    }
    if (on == m_isFallbackEnabled)
        return;
    on ? enableFallback() : disableFallback();
    Q_EMIT enableChanged();
}

void Ntp::refresh()
{
    if (enabled())
        sendRequest();
}

void Ntp::load()
{
    if (m_packages.ntpAvailable()) {
        followPackage();
        // Without an answer nothing is applied: a system that is slow to answer, especially at
        // start-up, must not lose its network time.
        if (const std::optional<bool> isEnabled = m_packages.ntpState())
            m_packages.setNtpEnabled(*isEnabled);
        return;
    }
    Ntp::enable(m_state->isOn());
}

void Ntp::followPackage()
{
    connect(&m_packages, &PackagesManager::ntpEnabledChanged, this, &Service::enableChanged,
            Qt::UniqueConnection);
}

void Ntp::enableFallback()
{
    m_failedTransmissions = 0;
    if (!m_socket->bind()) {
        LogFormatter(LogLevel::Warning).log(Log::Network)
            << "void zeltools::system::service::Ntp::enableFallback()"
            << ": can't bind socket";
    }
    connect(&m_pollTimer, &QTimer::timeout, this, &Ntp::sendRequest);
    connect(m_socket.data(), &QUdpSocket::readyRead, this, &Ntp::receiveResponse);
    m_pollTimer.start(s_pollInterval);
    m_isFallbackEnabled = true;
    m_state->save(m_isFallbackEnabled);
    sendRequest();
}

void Ntp::disableFallback()
{
    disconnect(&m_pollTimer, &QTimer::timeout, this, &Ntp::sendRequest);
    disconnect(m_socket.data(), &QUdpSocket::readyRead, this, &Ntp::receiveResponse);
    m_pollTimer.stop();
    m_retries = std::make_unique<QObject>(); // cancels the pending retries
    m_socket->close();
    m_isFallbackEnabled = false;
    m_state->save(m_isFallbackEnabled);
}

void Ntp::sendRequest()
{
    QByteArray request(s_packetSize_B, '\0');
    request[0] = s_clientHeader;
    if (m_socket->writeDatagram(request, m_server, s_port) >= s_packetSize_B)
        return;
    LogFormatter(LogLevel::Error).log(Log::Network)
        << "void zeltools::system::service::Ntp::sendRequest()"
        << ": NTP request transmission failed";
    if (++m_failedTransmissions < s_mostFailures)
        QTimer::singleShot(s_retryInterval, Qt::CoarseTimer, m_retries.get(),
                           [this] { sendRequest(); });
}

void Ntp::receiveResponse()
{
    m_failedTransmissions = 0;
    char response[s_packetSize_B + 1]; // so that a longer answer is not cut to the right size
    QHostAddress sender;
    if (m_socket->readDatagram(response, sizeof response, &sender) != s_packetSize_B ||
        !sender.isEqual(m_server, QHostAddress::ConvertV4MappedToIPv4))
        return;
    const auto since1900_s = qFromBigEndian<quint32>(response + s_transmitSeconds_B);
    if (since1900_s == 0)
        return; // a server that does not know the time
    Q_EMIT currentTime(
        QDateTime::fromSecsSinceEpoch(qint64(since1900_s) - s_from1900To1970_s, Qt::UTC));
}

} // namespace zeltools::system::service
