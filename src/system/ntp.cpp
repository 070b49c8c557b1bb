#include "system/ntp.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "system/ntppacket_p.h"
#include "system/ntpstate_p.h"
#include "system/packagesmanager.h"
#include "system/timedatectl_p.h"

#include <QNetworkDatagram>

#include <array>
#include <chrono>

namespace zeltools::system::service
{

namespace
{

using namespace std::chrono_literals;

constexpr quint16 s_port = 123;

constexpr auto s_pollInterval = 1h;
constexpr auto s_retryInterval = 30s;
constexpr int s_mostFailures = 5; // then the client waits for the next poll
constexpr std::array s_answerTimes{30s, 60s, 120s};

constexpr std::chrono::milliseconds s_longestAge = 2 * s_pollInterval;
// Answers are cut to whole seconds, and their way takes time.
constexpr std::chrono::milliseconds s_largestError = 2s;

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
    m_answerTimer.setSingleShot(true);
    connect(&m_answerTimer, &QTimer::timeout, this, &Ntp::sendRequest);
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
        ask();
}

bool Ntp::isClockSynchronized() const
{
    if (isClockKept())
        return true;
    if (!m_lastAnswer.isValid() || m_sinceAnswer.hasExpired(s_longestAge.count()))
        return false;
    const QDateTime now = m_lastAnswer.addMSecs(m_sinceAnswer.elapsed());
    return qAbs(now.msecsTo(QDateTime::currentDateTimeUtc())) <= s_largestError.count();
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
    connect(&m_pollTimer, &QTimer::timeout, this, &Ntp::ask);
    connect(m_socket.data(), &QUdpSocket::readyRead, this, &Ntp::receiveResponse);
    m_pollTimer.start(s_pollInterval);
    m_isFallbackEnabled = true;
    m_state->save(m_isFallbackEnabled);
    ask();
}

void Ntp::disableFallback()
{
    disconnect(&m_pollTimer, &QTimer::timeout, this, &Ntp::ask);
    disconnect(m_socket.data(), &QUdpSocket::readyRead, this, &Ntp::receiveResponse);
    m_pollTimer.stop();
    m_answerTimer.stop();
    m_retries = std::make_unique<QObject>(); // cancels the pending retries
    m_socket->close();
    m_isFallbackEnabled = false;
    m_state->save(m_isFallbackEnabled);
}

void Ntp::ask()
{
    m_unanswered = 0;
    sendRequest();
}

void Ntp::sendRequest()
{
    m_answerTimer.stop();
    if (m_socket->writeDatagram(NtpPacket::request(), m_server, s_port) >= NtpPacket::size_B) {
        awaitAnswer();
        return;
    }
    LogFormatter(LogLevel::Error).log(Log::Network)
        << "void zeltools::system::service::Ntp::sendRequest()"
        << ": NTP request transmission failed";
    if (++m_failedTransmissions < s_mostFailures)
        QTimer::singleShot(s_retryInterval, Qt::CoarseTimer, m_retries.get(),
                           [this] { sendRequest(); });
}

void Ntp::awaitAnswer()
{
    // The socket receives nothing while a package keeps the time.
    if (m_isFallbackEnabled && m_unanswered < s_answerTimes.size())
        m_answerTimer.start(s_answerTimes[m_unanswered++]);
}

void Ntp::receiveResponse()
{
    m_failedTransmissions = 0;
    const QNetworkDatagram response = m_socket->receiveDatagram();
    const QDateTime time = NtpPacket::timeOf(response.data());
    if (!time.isValid() ||
        !response.senderAddress().isEqual(m_server, QHostAddress::ConvertV4MappedToIPv4))
        return;
    m_answerTimer.stop();
    m_lastAnswer = time;
    m_sinceAnswer.start();
    Q_EMIT currentTime(time);
}

} // namespace zeltools::system::service
