#include "clockcommand.h"

#include "clocklink.h"
#include "commandparser.h"
#include "follow.h"
#include "stopsignals.h"
#include "words.h"
#include <zeltools/logging/lognode.h>
#include <zeltools/simulationinterface/createinterface.h>
#include <zeltools/simulationinterface/serversimulationinterface.h>
#include <zeltools/simulatorkit/linkrecorder.h>
#include <zeltools/system/simulateddatetimemanager.h>

#include <QCoreApplication>
#include <QTimeZone>
#include <QTimer>

#include <memory>

using namespace zeltools::simulationinterface;
using zeltools::system::SimulatedDateTimeManager;

namespace
{

constexpr std::chrono::milliseconds s_watchInterval(100);

/// Reads the time to set. Returns the problem with it, or an empty text.
QString readDateTime(const CommandParser& parser, QDateTime& dateTime)
{
    const QString text = parser.value("set");
    const QString day = text.section(QLatin1Char(' '), 0, 0);
    const auto date = QDate::fromString(day, SimulatedDateTimeManager::dateFormat());
    const auto time =
        QTime::fromString(text.mid(day.size() + 1), SimulatedDateTimeManager::timeFormat());
    if (!date.isValid() || !time.isValid())
        return Zelctl::tr("\"%1\" is not a date and time of the form %2")
            .arg(text, SimulatedDateTimeManager::dateTimeFormat());
    const QString name = parser.value("zone");
    const QTimeZone zone(name.toLatin1());
    if (!name.isEmpty() && !zone.isValid())
        return Zelctl::tr("there is no time zone \"%1\"").arg(name);
    dateTime = name.isEmpty() ? QDateTime(date, time) : QDateTime(date, time, zone);
    if (dateTime.isValid())
        return QString();
    return name.isEmpty()
               ? Zelctl::tr("this computer's time zone skips %1; --zone names that of the machine")
                     .arg(text)
               : Zelctl::tr("%1 skips %2").arg(name, text);
}

/// Reads the arguments. Returns the problem with them, or an empty text.
QString readRequest(const CommandParser& parser, ClockRequest& request)
{
    request.address = parser.arguments().value(0);
    request.isFollowing = parser.isSet("follow");
    request.isJson = parser.isSet("json");
    if (!zeltools::simulatorkit::LinkRecorder::isAddress(request.address))
        return Zelctl::tr("\"%1\" is not the address of a link").arg(request.address);
    if (parser.isSet("zone") && !parser.isSet("set"))
        return Zelctl::tr("--zone is only valid with --set");
    if (parser.isSet("set")) {
        QString problem = readDateTime(parser, request.dateTime);
        if (!problem.isEmpty())
            return problem;
    }
    constexpr int day_s = 24 * 60 * 60;
    const int limit_s = parser.value("timeout").toInt();
    if (limit_s < 1 || limit_s > day_s)
        return Zelctl::tr("--timeout needs a number of seconds from 1 to 86400");
    request.timeLimit = std::chrono::seconds(limit_s);
    return QString();
}

} // namespace

void describeClock(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl",
        "The simulator's end of a simulated clock: sets the clock of a machine, or prints the "
        "dates and times, in UTC, that the machine asks for, the first one or all.\n\n"
        "A server waits for the machine to connect, a client connects to it; the machine has the "
        "other one of the two."));
    parser.addUsages({{"ADDRESS", ""}});
    parser.addValues({
        {"ADDRESS",
         QT_TRANSLATE_NOOP(
             "zelctl", "tcpserver/IP/PORT, tcpclient/IP/PORT, unixserver/PATH or unixclient/PATH")},
        {"TIME", QT_TRANSLATE_NOOP("zelctl", "yyyy/MM/dd hh:mm:ss in the machine's zone")},
    });
    parser.addOptions({
        {"set",
         QT_TRANSLATE_NOOP(
             "zelctl", "Sets the clock to TIME. It is done when the time has been sent and the "
                       "machine has not closed the link within a second; it does not confirm it."),
         "TIME"},
        {"zone",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "The machine's zone, such as Europe/Rome, where it is not this computer's. A time "
             "that the zone skips is refused, since it would make the machine's clock invalid."),
         "ZONE"},
        {"follow",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "Prints all that the machine asks for, until interrupted. A clock that was set runs "
             "on: a machine that connects again gets the time that it then shows.")},
        {"json", QT_TRANSLATE_NOOP(
                     "zelctl", "Prints one JSON object for each time that was asked for, or set.")},
        {"timeout",
         QT_TRANSLATE_NOOP("zelctl", "Gives up after SECONDS, without --follow; 10 unless given."),
         "SECONDS", "10"},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "The time was sent, or printed."),
        QT_TRANSLATE_NOOP(
            "zelctl", "The machine did not connect, did not ask in time, or closed the link; or "
                      "the command was interrupted without --follow."));
    parser.addExamples({
        {"zelctl clock tcpclient/127.0.0.1/8133 --set \"2024/03/01 08:30:00\"",
         QT_TRANSLATE_NOOP("zelctl", "Sets the clock of the machine that listens on port 8133.")},
    });
}

ExitStatus runClock(const CommandParser& parser)
{
    // While anybody listens, the library prints nothing; each problem is one line of the command.
    const QObject context;
    QObject::connect(LogNode::instance(), &LogNode::logged, &context, [] {});
    ClockRequest request;
    const QString misuse = readRequest(parser, request);
    if (!misuse.isEmpty())
        return refuse(misuse);

    const StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stopped, [&request] {
        QCoreApplication::exit(
            request.isFollowing ? Done : fail(Failed, Zelctl::tr("the command was interrupted")));
    });
    const std::unique_ptr<SimulationInterface> link(createInterface(request.address, nullptr));
    const auto* const server = qobject_cast<ServerSimulationInterface*>(link.get());
    if (server != nullptr && !server->listenError().isEmpty())
        return fail(
            Failed,
            Zelctl::tr("cannot listen on %1: %2").arg(request.address, server->listenError()));

    ClockLink clock(request, *link);
    QObject::connect(link.get(), &SimulationInterface::connectedChanged, &context,
                     [&] { clock.onConnectedChanged(); });
    QObject::connect(link.get(), &SimulationInterface::dataReceived, &context,
                     [&](const QByteArray& data) { clock.onReceived(data); });
    QTimer watch; // a machine may ask for no further time, at which the missing reader would show
    QObject::connect(&watch, &QTimer::timeout, [] {
        if (isReaderGone(0))
            QCoreApplication::exit(Done);
    });
    if (request.isFollowing)
        watch.start(s_watchInterval);
    else
        QTimer::singleShot(request.timeLimit, &context, [&] { clock.onTimeout(); });
    return static_cast<ExitStatus>(QCoreApplication::exec());
}
