#include "clockcommand.h"

#include "logging/lognode.h"
#include "simulationinterface/createinterface.h"
#include "system/simulateddatetimemanager.h"

#include <QCoreApplication>
#include <QElapsedTimer>
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
    QDateTime dateTime; ///< to set; invalid: none
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
        {"follow", "Prints all that the machine asks for, until interrupted. A clock that was set "
                   "runs on: a machine that connects again gets the time that it then shows."},
        {"timeout", "Gives up after <SECONDS>, without --follow; 10 unless given.", "SECONDS",
         "10"},
    });
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
        const QString text = parser.value("set"), form = SimulatedDateTimeManager::dateTimeFormat();
        // What a clock on the wall shows: UTC has no hour that a change to summer time leaves out.
        request.dateTime = QDateTime(
            QDate::fromString(text.section(' ', 0, 0), SimulatedDateTimeManager::dateFormat()),
            QTime::fromString(text.section(' ', 1), SimulatedDateTimeManager::timeFormat()),
            Qt::UTC);
        if (!request.dateTime.isValid())
            return QStringLiteral("\"%1\" is not a date and time of the form %2").arg(text, form);
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
        const bool isSetting = m_request.dateTime.isValid();
        if (isSetting && m_link.connected())
            send();
        else if (m_isSent && !m_request.isFollowing)
            end(fail(Failed, "the machine has closed the link, it may have another simulator"));
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
        const auto limit_s = m_request.timeLimit.count();
        const char* const missing = m_link.connected() ? "asked for a time" : "connected";
        if (!m_isSent)
            end(fail(Failed,
                     QStringLiteral("no machine has %1 in %2 s").arg(missing).arg(limit_s)));
    }

private:
    void send()
    {
        if (!m_isSent)
            m_sinceSet.start();
        const QDateTime now = m_request.dateTime.addMSecs(m_sinceSet.elapsed());
        m_link.write(now.toString(SimulatedDateTimeManager::dateTimeFormat()).toLatin1());
        m_isSent = true;
        if (!m_request.isFollowing)
            QTimer::singleShot(s_refusalTime, &m_link, [] { end(Done); });
    }

    const Request& m_request;
    SimulationInterface& m_link;
    QElapsedTimer m_sinceSet;
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
