#pragma once

#include <zeltools/machine.h>
#include <zeltools/system/service.h>

#include <QDateTime>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QScopedPointer>
#include <QTimer>
#include <QUdpSocket>

#include <memory>

namespace zeltools::system
{
class PackagesManager;
}

namespace zeltools::system::service
{

class NtpState;

/// The service for network time. If PackagesManager finds a package for network time, this service
/// switches that package. Otherwise it is a fallback client, which asks one server over UDP every
/// hour and announces the answer. Without an answer it asks again after 30 s, after another 60 s
/// and after another 120 s. It sets no clock itself.
///
/// The file "/usr/share/zel/ntp" ("1" or "0") stores whether the fallback is on. It is replaced
/// safely, and only when the value changes. A machine without the folder, or on which the file
/// cannot be opened, stores nothing and logs nothing; a failed write is a Warning. The next start
/// then uses the value in the file, or off without a file.
///
/// Answers are not authenticated, and their travel time is not compensated. Answers from another
/// address than the server's and answers without a time are ignored. Failures are logged under
/// Log::Network. An object belongs to one thread with an event loop and may be deleted in its
/// signals.
class ZELTOOLS_EXPORT Ntp : public Service
{
    Q_OBJECT
    Q_PROPERTY(QDateTime lastAnswer READ lastAnswer NOTIFY currentTime)

public:
    /// Restores the state of the last run: the current setting of the package is applied again, or
    /// the fallback starts if it was on.
    explicit Ntp(const QHostAddress& server);
    ~Ntp() override;

    bool available() const override { return true; }
    /// Switches the package or, without one, the fallback on or off.
    void enable(bool on) override;
    /// Whether the package or, without one, the fallback is on.
    bool enabled() const override;
    /// Sends one request immediately if the service is enabled.
    void refresh() override;

    /// The last time that the fallback has announced; invalid before the first one.
    QDateTime lastAnswer() const { return m_lastAnswer; }
    /// Whether the system clock agrees with network time: either a time service of the system keeps
    /// it, as `timedatectl` reports it, or it is within 2 s of the fallback's last answer, which is
    /// at most two hours old. The call does not block.
    Q_INVOKABLE bool isClockSynchronized() const;

Q_SIGNALS:
    /// Announces the time of the server in UTC and whole seconds. The 32 bits in which the server
    /// counts are enough for the years from 1968 to 2104; only the second 06:28:16 on 7 February
    /// 2036 looks like an answer without a time.
    void currentTime(const QDateTime& dateTime);

protected:
    /// Constructs a service for another machine. The manager must outlive it.
    Ntp(const QHostAddress& server, PackagesManager& packages, const Machine& machine);

private:
    void load();
    void followPackage();
    void enableFallback();
    void disableFallback();
    void ask();
    void sendRequest();
    void awaitAnswer();
    void receiveResponse();

    PackagesManager& m_packages;
    const std::unique_ptr<const NtpState> m_state;
    QHostAddress m_server;
    QTimer m_pollTimer;
    QTimer m_answerTimer;
    // The socket continues after its signal, in which a listener may delete the service.
    QScopedPointer<QUdpSocket, QScopedPointerDeleteLater> m_socket;
    bool m_isFallbackEnabled = false;
    int m_failedTransmissions = 0;
    std::size_t m_unanswered = 0; // requests since ask()
    QDateTime m_lastAnswer;
    QElapsedTimer m_sinceAnswer;
    std::unique_ptr<QObject> m_retries = std::make_unique<QObject>(); // their context
};

} // namespace zeltools::system::service
