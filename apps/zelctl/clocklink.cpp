#include "clocklink.h"

#include "words.h"

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

/// The date and time that a machine has asked for, which is in UTC.
QJsonObject requestObject(const QString& text)
{
    QDateTime time = QDateTime::fromString(text, SimulatedDateTimeManager::dateTimeFormat());
    time.setTimeSpec(Qt::UTC);
    return time.isValid() ? jsonObject({{"time", time.toString(Qt::ISODate)}})
                          : jsonObject({{"text", text}});
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
    const ExitStatus status = m_request.isJson
                                  ? printJson(requestObject(QString::fromUtf8(data)))
                                  : printLine(withoutControls(QString::fromUtf8(data)));
    if (status != Done || !m_request.isFollowing)
        end(status);
}

void ClockLink::onTimeout()
{
    if (m_isSent)
        return;
    QString problem = m_closing;
    if (m_link.connected() || m_closing.isEmpty())
        problem = (m_link.connected() ? Zelctl::tr("no machine has asked for a time in %1 s")
                                      : Zelctl::tr("no machine has connected in %1 s"))
                      .arg(m_request.timeLimit.count());
    end(fail(Failed, problem));
}

ExitStatus ClockLink::printSet(const QDateTime& time) const
{
    // In the zone of the machine; a QDateTime would be invalid if this computer's zone skips it.
    const QString clock =
        time.date().toString(Qt::ISODate) + QLatin1Char('T') + time.time().toString(Qt::ISODate);
    return m_request.isJson ? printJson(jsonObject({{"set", clock}})) : Done;
}

void ClockLink::onClosed()
{
    const bool isRefusal = std::chrono::milliseconds(m_sinceConnected.elapsed()) < s_refusalTime;
    const QString closing =
        isRefusal ? Zelctl::tr("the machine has closed the link, it may have another simulator")
                  : Zelctl::tr("the machine has closed the link");
    // While the other simulator stays, each attempt to connect is refused.
    const bool isNew = !isRefusal || closing != m_closing;
    m_closing = closing;
    if (m_request.isFollowing && isNew)
        fail(Failed, Zelctl::tr("%1; waiting for it").arg(closing));
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
        QTimer::singleShot(s_refusalTime, &m_link, [this, now] { end(printSet(now)); });
    else if (printSet(now) != Done)
        end(Failed);
}
