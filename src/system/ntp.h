#pragma once

#include <zeltools/system/service.h>

#include <QDateTime>
#include <QHostAddress>
#include <QScopedPointer>
#include <QTimer>
#include <QUdpSocket>

#include <memory>

namespace zeltools::system::service
{

/// Network time. Where PackagesManager has a package for it, this service switches that package;
/// elsewhere it is the fallback: a client that asks one server over UDP every hour and tells the
/// answer. It sets no clock itself.
///
/// Whether the fallback is on is kept over restarts in "/usr/share/zel/ntp" ("1" or "0"), which is
/// replaced safely, and only when the value changes. A machine without the folder, or on which the
/// file cannot be opened, keeps nothing and logs nothing; a write that fails is a Warning. At the
/// next start the fallback is then as the file still has it, or off without one.
///
/// The answer is as good as the network: one from another address than the server's is ignored, but
/// it is not authenticated and the time on the way is not made up for. An answer that carries no
/// time is ignored as well. Failures are logged under Log::Network. Belongs to one thread with an
/// event loop; may be deleted in its signals.
class ZELTOOLS_EXPORT Ntp final : public Service
{
    Q_OBJECT

public:
    /// Takes up the state of the last run: the package is given its own setting anew, or the
    /// fallback starts if it was on.
    explicit Ntp(const QHostAddress& server);
    ~Ntp() override;

    bool available() const override { return true; }
    void enable(bool on) override;
    bool enabled() const override;
    /// Sends one request at once when enabled.
    void refresh() override;

Q_SIGNALS:
    /// The time of the server, in UTC and whole seconds. Counted from 1900 in 32 bits, so that
    /// after 7 February 2036 it begins again at 1900.
    void currentTime(const QDateTime& dateTime);

private:
    void load();
    void save() const;
    void followPackage();
    void enableFallback();
    void disableFallback();
    void sendRequest();
    void receiveResponse();

    QHostAddress m_server;
    QTimer m_pollTimer;
    // Goes on after its signal, in which a listener may delete the service.
    QScopedPointer<QUdpSocket, QScopedPointerDeleteLater> m_socket;
    bool m_isFallbackEnabled = false;
    int m_failedTransmissions = 0;
    std::unique_ptr<QObject> m_retries = std::make_unique<QObject>(); // their context
};

} // namespace zeltools::system::service
