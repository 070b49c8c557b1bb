#include "simcommand.h"

#include "commandparser.h"
#include "commandwords.h"
#include "simactions.h"
#include "words.h"
#include <zeltools/logging/lognode.h>
#include <zeltools/simulatorkit/linkrecorder.h>
#include <zeltools/simulatorkit/simulatorscript.h>

using namespace zeltools::simulatorkit;

namespace
{

const QLatin1String s_anyPort("tcpserver/127.0.0.1/0");

// The value of an option that only one action has.
QString valueOr(const CommandParser& parser, const char* option, QLatin1String otherwise)
{
    return parser.isSet(option) ? parser.value(option) : QString(otherwise);
}

bool isJson(const CommandParser& parser)
{
    return parser.isSet("json");
}

ExitStatus checkAddresses(const QStringList& addresses)
{
    for (const QString& address : addresses) {
        if (!LinkRecorder::isAddress(address))
            return refuse(Zelctl::tr("\"%1\" is not the address of a link").arg(address));
    }
    return Done;
}

ExitStatus serve(const CommandParser& parser, const QStringList& words)
{
    const QString address = words.value(2, s_anyPort);
    const ExitStatus status = checkAddresses({address});
    return status == Done ? serveScript(words[1], address, parser.isSet("once"), isJson(parser))
                          : status;
}

ExitStatus record(const CommandParser& parser, const QStringList& words)
{
    const QString machine = valueOr(parser, "machine", s_anyPort);
    const ExitStatus status = checkAddresses({machine, words[1]});
    return status == Done ? recordLink(words[1], machine, words[2], isJson(parser)) : status;
}

ExitStatus replay(const CommandParser& parser, const QStringList& words)
{
    const QLatin1String asMachine("machine"), asSimulator("simulator");
    const QString side = valueOr(parser, "as", asSimulator);
    const QString time = valueOr(parser, "timeout", QLatin1String("10s"));
    const auto timeout = SimulatorScript::parseTime(time.toLatin1());
    if (side != asMachine && side != asSimulator)
        return refuse(Zelctl::tr("--as is simulator or machine"));
    if (!timeout)
        return refuse(Zelctl::tr("--timeout is a time such as 1.5s or 2min"));
    const ExitStatus status = checkAddresses({words[2]});
    if (status != Done)
        return status;
    LinkReplayer::Options options;
    options.side = side == asMachine ? LinkSide::Machine : LinkSide::Simulator;
    options.isInTime = parser.isSet("in-time");
    options.timeout = *timeout;
    return replayRecording(words[1], words[2], options, isJson(parser));
}

} // namespace

void describeSim(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl",
        "Plays the simulator's end of a link to a machine, and records and replays links."));
    parser.addUsages({
        {"serve SCRIPT [ADDRESS]",
         QT_TRANSLATE_NOOP("zelctl", "Answers a machine as the rows of a script say; ADDRESS is "
                                     "tcpserver/127.0.0.1/0 unless given.")},
        {"record ADDRESS FILE",
         QT_TRANSLATE_NOOP("zelctl", "Stands between a machine and the simulator at ADDRESS, and "
                                     "records both ways with times. FILE is emptied first.")},
        {"replay FILE ADDRESS",
         QT_TRANSLATE_NOOP("zelctl", "Plays one side of a recording, and reports the first "
                                     "difference of what the other side does.")},
    });
    parser.addValues({
        {"SCRIPT", QT_TRANSLATE_NOOP("zelctl", "The script of a simulator"), CommandParser::File},
        {"FILE", QT_TRANSLATE_NOOP("zelctl", "The recording"), CommandParser::File},
        {"ADDRESS",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "tcpserver/IP/PORT or unixserver/PATH to listen, tcpclient/IP/PORT or unixclient/PATH "
             "to connect. A port 0 lets the system choose; the real one is printed")},
    });
    parser.addOptions({
        {"once",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "serve: ends after the first connection; otherwise it serves until interrupted.")},
        {"machine",
         QT_TRANSLATE_NOOP("zelctl", "record: where the machine is, or where it connects; "
                                     "tcpserver/127.0.0.1/0 unless given."),
         "ADDRESS"},
        {"as", QT_TRANSLATE_NOOP("zelctl", "replay: the side to play; simulator unless given."),
         "simulator|machine"},
        {"in-time",
         QT_TRANSLATE_NOOP("zelctl",
                           "replay: sends at the recorded times; otherwise as soon as it can.")},
        {"timeout",
         QT_TRANSLATE_NOOP("zelctl", "replay: how much later than recorded the other side may act, "
                                     "such as 1.5s or 2min; 10s unless given."),
         "TIME"},
        {"json", QT_TRANSLATE_NOOP("zelctl", "Prints the address as a JSON object.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP(
            "zelctl",
            "serve or record has ended without a problem, or a replay saw no difference."),
        QT_TRANSLATE_NOOP("zelctl", "A file or an address cannot be used, or a replay saw a "
                                    "difference or was interrupted."));
    parser.addExamples({
        {"zelctl sim serve grinder.script tcpserver/127.0.0.1/8133",
         QT_TRANSLATE_NOOP("zelctl", "Plays a grinder.")},
        {"zelctl sim replay fault.rec tcpserver/127.0.0.1/8133 --in-time",
         QT_TRANSLATE_NOOP("zelctl", "Plays what a simulator did.")},
    });
}

ExitStatus runSim(const CommandParser& parser)
{
    // While anybody listens, the library prints nothing; the actions tell each problem in one line.
    const QObject listener;
    QObject::connect(LogNode::instance(), &LogNode::logged, &listener, [] {});
    const QString misuse = problemWithOptions(parser, parser.arguments().value(0),
                                              {{"once", "serve"},
                                               {"machine", "record"},
                                               {"as", "replay"},
                                               {"in-time", "replay"},
                                               {"timeout", "replay"}});
    if (!misuse.isEmpty())
        return refuse(misuse);
    const QStringList words = parser.arguments();
    const QString& action = words.first();
    if (action == QLatin1String("serve"))
        return serve(parser, words);
    if (action == QLatin1String("record"))
        return record(parser, words);
    return replay(parser, words);
}
