#pragma once

#include <zeltools/machine.h>
#include <zeltools/system/service.h>

#include <QDateTime>
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
/// hour and announces the answer. It sets no clock itself.
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

public:
    /// Restores the state of the last run: the current setting of the package is applied again, or
    /// the fallback starts if it was on.
    explicit Ntp(const QHostAddress& server);
    ~Ntp() override;

    bool available() const override { return true; }
    void enable(bool on) override;
    bool enabled() const override;
    /// Sends one request immediately if the service is enabled.
    void refresh() override;

Q_SIGNALS:
    /// Announces the time of the server in UTC and whole seconds. The server counts 32 bits from
    /// 1900, so that the time begins again at 1900 after 7 February 2036.
    void currentTime(const QDateTime& dateTime);

protected:
    /// Constructs a service for another machine. The manager must outlive it.
    Ntp(const QHostAddress& server, PackagesManager& packages, const Machine& machine);

private:
    void load();
    void followPackage();
    void enableFallback();
    void disableFallback();
    void sendRequest();
    void receiveResponse();

    PackagesManager& m_packages;
    const std::unique_ptr<const NtpState> m_state;
    QHostAddress m_server;
    QTimer m_pollTimer;
    // The socket continues after its signal, in which a listener may delete the service.
    QScopedPointer<QUdpSocket, QScopedPointerDeleteLater> m_socket;
    bool m_isFallbackEnabled = false;
    int m_failedTransmissions = 0;
    std::unique_ptr<QObject> m_retries = std::make_unique<QObject>(); // their context
};

} // namespace zeltools::system::service
