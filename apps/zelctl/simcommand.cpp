#include "simcommand.h"

#include "commandparser.h"
#include "simactions.h"
#include <zeltools/logging/lognode.h>
#include <zeltools/simulatorkit/linkrecorder.h>
#include <zeltools/simulatorkit/simulatorscript.h>

using namespace zeltools::simulatorkit;

namespace
{

const QLatin1String s_anyPort("tcpserver/127.0.0.1/0");

void describe(CommandParser& parser)
{
    parser.setDescription(
        "Plays the simulator's end of a link to a machine, and records and replays links.\n\n"
        "  serve SCRIPT [ADDRESS]  answers a machine as the rows of a script say; ADDRESS is\n"
        "                          tcpserver/127.0.0.1/0 unless given\n"
        "  record ADDRESS FILE     stands between a machine and the simulator at ADDRESS, and\n"
        "                          records both ways with times\n"
        "  replay FILE ADDRESS     plays one side of a recording, and reports the first "
        "difference\n"
        "                          of what the other side does; exit status 0 if there is none\n\n"
        "An address is tcpserver/IP/PORT or unixserver/PATH to listen, tcpclient/IP/PORT or\n"
        "unixclient/PATH to connect. A port 0 lets the system choose; the real one is printed.");
    parser.addArgument("ACTION", "What to do, and with what.",
                       "serve SCRIPT [ADDRESS]|record ADDRESS FILE|replay FILE ADDRESS");
    parser.addOptions({
        {"once", "serve: ends after the first connection; otherwise it serves until interrupted."},
        {"machine",
         "record: where the machine is, or where it connects; tcpserver/127.0.0.1/0 unless given.",
         "ADDRESS"},
        {"as", "replay: the side to play, simulator or machine; simulator unless given.", "SIDE"},
        {"in-time", "replay: sends at the recorded times; otherwise as soon as it can."},
        {"timeout",
         "replay: how much later than recorded the other side may act, such as 1.5s or 2min; 10s "
         "unless given.",
         "TIME"},
    });
}

QString misuse()
{
    return QStringLiteral("see \"zelctl sim --help\" for what sim needs");
}

// The value of an option that only one action has.
QString valueOr(const CommandParser& parser, const char* option, QLatin1String otherwise)
{
    return parser.isSet(option) ? parser.value(option) : QString(otherwise);
}

bool hasOnly(const CommandParser& parser, std::initializer_list<const char*> allowed)
{
    int count = 0;
    for (const char* const option : {"once", "machine", "as", "in-time", "timeout"})
        count += parser.isSet(option) ? 1 : 0;
    for (const char* const option : allowed)
        count -= parser.isSet(option) ? 1 : 0;
    return count == 0;
}

ExitStatus checkAddresses(const QStringList& addresses)
{
    for (const QString& address : addresses) {
        if (!LinkRecorder::isAddress(address))
            return fail(WrongUsage, QStringLiteral("\"%1\" is no address of a link").arg(address));
    }
    return Done;
}

ExitStatus serve(const CommandParser& parser, const QStringList& words)
{
    if (words.size() < 2 || words.size() > 3 || !hasOnly(parser, {"once"}))
        return fail(WrongUsage, misuse());
    const QString address = words.value(2, s_anyPort);
    const ExitStatus status = checkAddresses({address});
    return status == Done ? serveScript(words[1], address, parser.isSet("once")) : status;
}

ExitStatus record(const CommandParser& parser, const QStringList& words)
{
    if (words.size() != 3 || !hasOnly(parser, {"machine"}))
        return fail(WrongUsage, misuse());
    const QString machine = valueOr(parser, "machine", s_anyPort);
    const ExitStatus status = checkAddresses({machine, words[1]});
    return status == Done ? recordLink(words[1], machine, words[2]) : status;
}

ExitStatus replay(const CommandParser& parser, const QStringList& words)
{
    const QLatin1String asMachine("machine"), asSimulator("simulator");
    const QString side = valueOr(parser, "as", asSimulator);
    const QString time = valueOr(parser, "timeout", QLatin1String("10s"));
    const auto timeout = SimulatorScript::parseTime(time.toLatin1());
    if (words.size() != 3 || (side != asMachine && side != asSimulator) || !timeout ||
        !hasOnly(parser, {"as", "in-time", "timeout"}))
        return fail(WrongUsage, misuse());
    const ExitStatus status = checkAddresses({words[2]});
    if (status != Done)
        return status;
    LinkReplayer::Options options;
    options.side = side == asMachine ? LinkSide::Machine : LinkSide::Simulator;
    options.isInTime = parser.isSet("in-time");
    options.timeout = *timeout;
    return replayRecording(words[1], words[2], options);
}

} // namespace

ExitStatus runSim(const QStringList& arguments)
{
    CommandParser parser;
    describe(parser);
    if (const auto status = parser.parse(arguments))
        return *status;
    // While anybody listens, the library prints nothing; the actions tell each problem in one line.
    const QObject listener;
    QObject::connect(LogNode::instance(), &LogNode::logged, &listener, [] {});
    const QStringList words = parser.arguments();
    const QString action = words.value(0);
    if (action == QLatin1String("serve"))
        return serve(parser, words);
    if (action == QLatin1String("record"))
        return record(parser, words);
    return action == QLatin1String("replay") ? replay(parser, words) : fail(WrongUsage, misuse());
}
