#include "clockcommand.h"

#include <zeltools/logging/lognode.h>
#include <zeltools/simulationinterface/createinterface.h>
#include <zeltools/system/simulateddatetimemanager.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QTimeZone>
#include <QTimer>

#include <chrono>
#include <memory>

using zeltools::simulationinterface::SimulationInterface;
using zeltools::system::SimulatedDateTimeManager;

namespace
{

using namespace std::chrono_literals;

// A machine that another simulator is attached to closes the link, and gives no other sign.
constexpr auto s_refusalTime = 1s;

struct Request
{
    QString address;
    QDateTime dateTime; ///< to set, in the machine's zone; invalid: none
    bool isFollowing = false;
    std::chrono::seconds timeLimit{};
};

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        "The simulator's end of a simulated clock: sets the clock of a machine, or prints the\n"
        "dates and times, in UTC, that the machine asks for, the first one or all.\n\n"
        "tcpserver waits for the machine to connect, tcpclient connects to it; the machine has\n"
        "the other one of the two. Example:\n\n"
        "  zelctl clock tcpclient/127.0.0.1/8133 --set \"2024/03/01 08:30:00\"");
    parser.addPositionalArgument("ADDRESS", "tcpserver/IP/PORT or tcpclient/IP/PORT.");
    parser.addOptions({
        {"set",
         "Sets the clock to <TIME>, yyyy/MM/dd hh:mm:ss in the machine's zone. It is done "
         "when the time has been sent and the machine has not closed the link within a "
         "second; it does not confirm it.",
         "TIME"},
        {"zone",
         "The machine's zone, such as Europe/Rome, where it is not this computer's. A time that "
         "the zone skips is refused, since it would make the machine's clock invalid.",
         "ZONE"},
        {"follow", "Prints all that the machine asks for, until interrupted. A clock that was set "
                   "runs on: a machine that connects again gets the time that it then shows."},
        {"timeout", "Gives up after <SECONDS>, without --follow; 10 unless given.", "SECONDS",
         "10"},
    });
}

/// Reads the time to set and returns what is wrong with it, or nothing.
QString readDateTime(const QCommandLineParser& parser, QDateTime& dateTime)
{
    const QString text = parser.value("set"), form = SimulatedDateTimeManager::dateTimeFormat();
    const auto date =
        QDate::fromString(text.section(' ', 0, 0), SimulatedDateTimeManager::dateFormat());
    const auto time =
        QTime::fromString(text.section(' ', 1), SimulatedDateTimeManager::timeFormat());
    if (!date.isValid() || !time.isValid())
        return QStringLiteral("\"%1\" is not a date and time of the form %2").arg(text, form);
    const QString name = parser.value("zone");
    const QTimeZone zone(name.toLatin1());
    if (!name.isEmpty() && !zone.isValid())
        return QStringLiteral("there is no time zone \"%1\"").arg(name);
    dateTime = name.isEmpty() ? QDateTime(date, time) : QDateTime(date, time, zone);
    if (!dateTime.isValid() && name.isEmpty())
        return "this computer's time zone skips " + text + "; --zone names that of the machine";
    if (!dateTime.isValid())
        return name + " skips " + text;
    return QString();
}

/// Returns what is wrong with the arguments, or nothing.
QString readRequest(const QCommandLineParser& parser, Request& request)
{
    const QStringList addresses = parser.positionalArguments();
    if (addresses.size() != 1)
        return "clock needs one address, see \"zelctl clock --help\"";
    request.address = addresses.first();
    request.isFollowing = parser.isSet("follow");
    if (parser.isSet("set")) {
        QString problem = readDateTime(parser, request.dateTime);
        if (!problem.isEmpty())
            return problem;
    }
    constexpr int day_s = 24 * 60 * 60;
    const int limit_s = parser.value("timeout").toInt();
    if (limit_s < 1 || limit_s > day_s)
        return "--timeout needs a number of seconds from 1 to 86400";
    request.timeLimit = std::chrono::seconds(limit_s);
    return QString();
}

void end(ExitStatus status)
{
    QCoreApplication::exit(status);
}

/// What a machine that is connected gets or gives. Ends the event loop when it is done.
class ClockLink
{
public:
    ClockLink(const Request& request, SimulationInterface& link)
        : m_request(request)
        , m_link(link)
    {
    }

    void onConnectedChanged()
    {
        if (!m_link.connected()) {
            onClosed();
            return;
        }
        m_sinceConnected.start();
        if (m_request.dateTime.isValid())
            send();
    }

    void onReceived(const QByteArray& data)
    {
        if (m_request.dateTime.isValid() && !m_request.isFollowing)
            return;
        const ExitStatus status = print(withoutControls(QString::fromUtf8(data)) + '\n');
        if (status != Done || !m_request.isFollowing)
            end(status);
    }

    void onTimeout()
    {
        if (m_isSent)
            return;
        QString problem = m_closing;
        if (m_link.connected() || m_closing.isEmpty())
            problem = QStringLiteral("no machine has %1 in %2 s")
                          .arg(m_link.connected() ? "asked for a time" : "connected")
                          .arg(m_request.timeLimit.count());
        end(fail(Failed, problem));
    }

private:
    void onClosed()
    {
        const bool isRefusal =
            std::chrono::milliseconds(m_sinceConnected.elapsed()) < s_refusalTime;
        QString closing = "the machine has closed the link";
        if (isRefusal)
            closing += ", it may have another simulator";
        // One refusal follows the other for as long as the other simulator stays.
        const bool isNew = !isRefusal || closing != m_closing;
        m_closing = closing;
        if (m_request.isFollowing && isNew)
            fail(Failed, closing + "; waiting for it");
        else if (m_isSent && !m_request.isFollowing)
            end(fail(Failed, closing));
    }

    void send()
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

    const Request& m_request;
    SimulationInterface& m_link;
    QElapsedTimer m_sinceSet;
    QElapsedTimer m_sinceConnected;
    QString m_closing; // how the last link ended
    bool m_isSent = false;
};

} // namespace

ExitStatus runClock(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (const auto status = parse(parser, arguments))
        return *status;
    Request request;
    const QString misuse = readRequest(parser, request);
    if (!misuse.isEmpty())
        return fail(WrongUsage, misuse);

    QString complaint; // of the library, about the address
    QObject context;
    QObject::connect(LogNode::instance(), &LogNode::logged, &context,
                     [&](auto, const auto&, const QString& line) { complaint = line; });
    const std::unique_ptr<SimulationInterface> link(
        zeltools::simulationinterface::createInterface(request.address, nullptr));
    if (!link)
        return fail(WrongUsage, complaint);
    if (!complaint.isEmpty())
        return fail(Failed, "cannot listen on " + request.address);

    ClockLink clock(request, *link);
    QObject::connect(link.get(), &SimulationInterface::connectedChanged, &context,
                     [&] { clock.onConnectedChanged(); });
    QObject::connect(link.get(), &SimulationInterface::dataReceived, &context,
                     [&](const QByteArray& data) { clock.onReceived(data); });
    if (!request.isFollowing)
        QTimer::singleShot(request.timeLimit, &context, [&] { clock.onTimeout(); });
    return static_cast<ExitStatus>(QCoreApplication::exec());
}
