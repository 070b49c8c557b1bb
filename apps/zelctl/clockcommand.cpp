#include "clockcommand.h"

#include "clocklink.h"
#include "commandparser.h"
#include <zeltools/logging/lognode.h>
#include <zeltools/simulationinterface/createinterface.h>
#include <zeltools/system/simulateddatetimemanager.h>

#include <QCoreApplication>
#include <QTimeZone>
#include <QTimer>

#include <memory>

using zeltools::simulationinterface::SimulationInterface;
using zeltools::system::SimulatedDateTimeManager;

namespace
{

void describe(CommandParser& parser)
{
    parser.setDescription(
        "The simulator's end of a simulated clock: sets the clock of a machine, or prints the\n"
        "dates and times, in UTC, that the machine asks for, the first one or all.\n\n"
        "tcpserver waits for the machine to connect, tcpclient connects to it; the machine has\n"
        "the other one of the two. Example:\n\n"
        "  zelctl clock tcpclient/127.0.0.1/8133 --set \"2024/03/01 08:30:00\"");
    parser.addArgument("ADDRESS", "tcpserver/IP/PORT or tcpclient/IP/PORT.");
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

/// Reads the time to set. Returns the problem with it, or an empty text.
QString readDateTime(const CommandParser& parser, QDateTime& dateTime)
{
    const QString text = parser.value("set");
    const QString day = text.section(QLatin1Char(' '), 0, 0);
    const auto date = QDate::fromString(day, SimulatedDateTimeManager::dateFormat());
    const auto time =
        QTime::fromString(text.mid(day.size() + 1), SimulatedDateTimeManager::timeFormat());
    if (!date.isValid() || !time.isValid())
        return QStringLiteral("\"%1\" is not a date and time of the form %2")
            .arg(text, SimulatedDateTimeManager::dateTimeFormat());
    const QString name = parser.value("zone");
    const QTimeZone zone(name.toLatin1());
    if (!name.isEmpty() && !zone.isValid())
        return QStringLiteral("there is no time zone \"%1\"").arg(name);
    dateTime = name.isEmpty() ? QDateTime(date, time) : QDateTime(date, time, zone);
    if (dateTime.isValid())
        return QString();
    return name.isEmpty()
               ? QStringLiteral("this computer's time zone skips %1; --zone names that of the "
                                "machine")
                     .arg(text)
               : QStringLiteral("%1 skips %2").arg(name, text);
}

/// Reads the arguments. Returns the problem with them, or an empty text.
QString readRequest(const CommandParser& parser, ClockRequest& request)
{
    const QStringList addresses = parser.arguments();
    if (addresses.size() != 1)
        return QStringLiteral("clock needs one address, see \"zelctl clock --help\"");
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
        return QStringLiteral("--timeout needs a number of seconds from 1 to 86400");
    request.timeLimit = std::chrono::seconds(limit_s);
    return QString();
}

} // namespace

ExitStatus runClock(const QStringList& arguments)
{
    CommandParser parser;
    describe(parser);
    if (const auto status = parser.parse(arguments))
        return *status;
    ClockRequest request;
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
        return fail(Failed, QStringLiteral("cannot listen on ") + request.address);

    ClockLink clock(request, *link);
    QObject::connect(link.get(), &SimulationInterface::connectedChanged, &context,
                     [&] { clock.onConnectedChanged(); });
    QObject::connect(link.get(), &SimulationInterface::dataReceived, &context,
                     [&](const QByteArray& data) { clock.onReceived(data); });
    if (!request.isFollowing)
        QTimer::singleShot(request.timeLimit, &context, [&] { clock.onTimeout(); });
    return static_cast<ExitStatus>(QCoreApplication::exec());
}
