#include "logrequest.h"

#include "eventkinds.h"
#include <zeltools/logging/logrenderer.h>

#include <unistd.h>

namespace
{

QString kindNames()
{
    QStringList names;
    for (const LogKindProperties& kind : logKinds())
        names.append(kind.name);
    return names.join(QStringLiteral(", "));
}

QString levelNames()
{
    QStringList names;
    for (const LogLevel::Level level : severities)
        names.append(levelName(level));
    return names.join(QStringLiteral(", "));
}

QString readLevel(const QString& text, LogLevel::Level& level)
{
    for (const LogLevel::Level one : severities) {
        level = one;
        if (levelName(level).compare(text, Qt::CaseInsensitive) == 0)
            return QString();
    }
    return QStringLiteral("unknown level \"%1\"; the levels are %2").arg(text, levelNames());
}

QString readModule(const QString& text, LogSelection& selection)
{
    for (const LogKindProperties& kind : logKinds()) {
        if (text.compare(kind.name, Qt::CaseInsensitive) == 0) {
            selection.kind = kind.kind;
            return QString();
        }
    }
    const QString event = eventKindInFile(text);
    if (event.isEmpty())
        return QStringLiteral("lines do not tell their module; \"%1\" is neither a file (%2) nor "
                              "a kind of events (%3)")
            .arg(text, kindNames(), eventKindKeys());
    selection.kind = LogKind::Events;
    selection.eventField = ' ' + event.toStdString();
    return QString();
}

QString readTimes(const CommandParser& parser, LogSelection& selection)
{
    for (const char* option : {"from", "to"}) {
        if (!parser.isSet(option))
            continue;
        const bool isEnd = option[0] == 't';
        const std::optional<LogTime> time = readLogTime(parser.value(option), isEnd);
        if (!time)
            return QStringLiteral("\"%1\" is not a time of the form dd/MM/yyyy or "
                                  "dd/MM/yyyy hh:mm or dd/MM/yyyy hh:mm:ss")
                .arg(parser.value(option));
        (isEnd ? selection.to : selection.from) = *time;
    }
    return selection.from > selection.to ? QStringLiteral("--from is after --to") : QString();
}

QString readPattern(const QString& text, LogSelection& selection)
{
    selection.pattern = LinePattern(text);
    const QString error = selection.pattern.error();
    return error.isEmpty() ? QString()
                           : QStringLiteral("\"%1\" is no regular expression: %2").arg(text, error);
}

QString readLast(const CommandParser& parser, std::optional<int>& last)
{
    if (!parser.isSet("last"))
        return QString();
    bool isNumber = false;
    last = parser.value("last").toInt(&isNumber);
    return isNumber && *last >= 0 ? QString() : QStringLiteral("--last needs a number from 0 on");
}

QString readStyle(const CommandParser& parser, LogPrinter::Style& style)
{
    const QString colour = parser.value("color");
    const bool isTerminal = isatty(STDOUT_FILENO) != 0;
    const bool canColour = isTerminal && qEnvironmentVariableIsEmpty("NO_COLOR") &&
                           qgetenv("TERM") != QByteArray("dumb");
    const bool isAlways = colour == QLatin1String("always");
    const bool isAuto = colour == QLatin1String("auto");
    if (!isAlways && !isAuto && colour != QLatin1String("never"))
        return QStringLiteral("--color is auto, always or never");
    if (parser.isSet("json"))
        style = LogPrinter::Json;
    else if (isAlways || (isAuto && canColour))
        style = LogPrinter::Coloured;
    else
        style = isTerminal ? LogPrinter::Masked : LogPrinter::Plain;
    return QString();
}

} // namespace

void addLogOptions(CommandParser& parser)
{
    const QByteArray level =
        "Only lines of this level and worse: " + levelNames().toLatin1() +
        ". A line that names no level counts as Event in the event files, and as Info in others.";
    const QByteArray module = "Only lines of this file (" + kindNames().toLatin1() +
                              ") or of this kind of events (" + eventKindKeys().toLatin1() +
                              "). Lines do not tell their module.";
    parser.setDescription(
        "Prints the log files in DIR, with their predecessors, merged by time. DIR has the files,\n"
        "or the folders debug and events, or logs with these two.\n\n"
        "  zelctl log recover DIR     writes the lines that killed processes have left");
    parser.addArgument("DIR", "The folder of the log files.", "DIR");
    parser.addOptions({
        {"level", level.constData(), "LEVEL"},
        {"module", module.constData(), "NAME"},
        {"grep", "Only lines that contain this regular expression.", "REGEX"},
        {"from", "Only lines of this time and later: dd/MM/yyyy [hh:mm[:ss]].", "TIME"},
        {"to", "Only lines of this time and earlier, up to the end of this day, minute or second.",
         "TIME"},
        {"last", "Only the last <N> of these lines.", "N"},
        {"follow", "Goes on with new lines, also after a rotation, until interrupted."},
        {"json", "Prints a JSON object a line."},
        {"color", "Colours the lines by their levels: auto, always or never.", "WHEN", "auto"},
    });
}

QString readLogRequest(const CommandParser& parser, LogRequest& request)
{
    request.isFollowing = parser.isSet("follow");
    QString problem;
    if (parser.isSet("level"))
        problem = readLevel(parser.value("level"), request.selection.level);
    if (problem.isEmpty() && parser.isSet("module"))
        problem = readModule(parser.value("module"), request.selection);
    if (problem.isEmpty())
        problem = readTimes(parser, request.selection);
    if (problem.isEmpty())
        problem = readPattern(parser.value("grep"), request.selection);
    if (problem.isEmpty())
        problem = readLast(parser, request.last);
    return problem.isEmpty() ? readStyle(parser, request.style) : problem;
}
