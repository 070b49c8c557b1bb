#include "clocklink.h"

#include <zeltools/system/simulateddatetimemanager.h>

#include <QCoreApplication>
#include <QLocale>
#include <QTimer>

using zeltools::simulationinterface::SimulationInterface;
using zeltools::system::SimulatedDateTimeManager;

namespace
{

using namespace std::chrono_literals;

// A machine that already has a simulator closes the link, and gives no other sign.
constexpr auto s_refusalTime = 1s;

void end(ExitStatus status)
{
    QCoreApplication::exit(status);
}

} // namespace

ClockLink::ClockLink(const ClockRequest& request, SimulationInterface& link)
    : m_request(request)
    , m_link(link)
{
}

void ClockLink::onConnectedChanged()
{
    if (!m_link.connected()) {
        onClosed();
        return;
    }
    m_sinceConnected.start();
    if (m_request.dateTime.isValid())
        send();
}

void ClockLink::onReceived(const QByteArray& data)
{
    if (m_request.dateTime.isValid() && !m_request.isFollowing)
        return;
    const ExitStatus status = printLine(withoutControls(QString::fromUtf8(data)));
    if (status != Done || !m_request.isFollowing)
        end(status);
}

void ClockLink::onTimeout()
{
    if (m_isSent)
        return;
    QString problem = m_closing;
    if (m_link.connected() || m_closing.isEmpty())
        problem = QStringLiteral("no machine has %1 in %2 s")
                      .arg(m_link.connected() ? QStringLiteral("asked for a time")
                                              : QStringLiteral("connected"))
                      .arg(m_request.timeLimit.count());
    end(fail(Failed, problem));
}

void ClockLink::onClosed()
{
    const bool isRefusal = std::chrono::milliseconds(m_sinceConnected.elapsed()) < s_refusalTime;
    QString closing = QStringLiteral("the machine has closed the link");
    if (isRefusal)
        closing += QStringLiteral(", it may have another simulator");
    // While the other simulator stays, each attempt to connect is refused.
    const bool isNew = !isRefusal || closing != m_closing;
    m_closing = closing;
    if (m_request.isFollowing && isNew)
        fail(Failed, closing + QStringLiteral("; waiting for it"));
    else if (m_isSent && !m_request.isFollowing)
        end(fail(Failed, closing));
}

void ClockLink::send()
{
    if (!m_isSent)
        m_sinceSet.start();
    const QDateTime now = m_request.dateTime.addMSecs(m_sinceSet.elapsed());
    const QString form = SimulatedDateTimeManager::dateTimeFormat();
    m_link.write(QLocale::c().toString(now, form).toLatin1());
    m_isSent = true;
    if (!m_request.isFollowing)
        QTimer::singleShot(s_refusalTime, &m_link, [] { end(Done); });
}
