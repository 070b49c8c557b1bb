#include "logrequest.h"

#include "eventkinds.h"
#include "words.h"
#include <zeltools/logging/logrenderer.h>

#include <unistd.h>

namespace
{

QStringList fileNames()
{
    QStringList names;
    for (const LogKindProperties& kind : logKinds())
        names.append(kind.name);
    return names;
}

QStringList levelNames()
{
    QStringList names;
    for (const LogLevel::Level level : severities)
        names.append(levelName(level));
    return names;
}

QString readLevel(const QString& text, LogLevel::Level& level)
{
    for (const LogLevel::Level one : severities) {
        level = one;
        if (levelName(level).compare(text, Qt::CaseInsensitive) == 0)
            return QString();
    }
    return Zelctl::tr("unknown level \"%1\"; the levels are %2")
        .arg(text, levelNames().join(QStringLiteral(", ")));
}

QString readModule(const QString& text, LogSelection& selection)
{
    for (const LogKindProperties& kind : logKinds()) {
        if (text.compare(kind.name, Qt::CaseInsensitive) == 0) {
            selection.kinds.push_back(kind.kind);
            return QString();
        }
    }
    const QString event = eventKindInFile(text);
    const QString comma = QStringLiteral(", ");
    if (event.isEmpty())
        return Zelctl::tr("lines do not name their module; \"%1\" is neither a file (%2) nor a "
                          "kind of events (%3)")
            .arg(text, fileNames().join(comma), eventKindKeys().join(comma));
    selection.eventFields.push_back(' ' + event.toStdString());
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
            return Zelctl::tr("\"%1\" is not a time of the form dd/MM/yyyy or dd/MM/yyyy hh:mm or "
                              "dd/MM/yyyy hh:mm:ss")
                .arg(parser.value(option));
        (isEnd ? selection.to : selection.from) = *time;
    }
    return selection.from > selection.to ? Zelctl::tr("--from is after --to") : QString();
}

QString readPattern(const QString& text, LogSelection& selection)
{
    selection.pattern = LinePattern(text);
    const QString error = selection.pattern.error();
    return error.isEmpty() ? QString()
                           : Zelctl::tr("\"%1\" is not a regular expression: %2").arg(text, error);
}

QString readLast(const CommandParser& parser, std::optional<int>& last)
{
    if (!parser.isSet("last"))
        return QString();
    bool isNumber = false;
    last = parser.value("last").toInt(&isNumber);
    return isNumber && *last >= 0 ? QString() : Zelctl::tr("--last needs a number from 0 on");
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
        return Zelctl::tr("--color is auto, always or never");
    if (parser.isSet("json"))
        style = LogPrinter::Json;
    else if (isAlways || (isAuto && canColour))
        style = LogPrinter::Coloured;
    else
        style = isTerminal ? LogPrinter::Masked : LogPrinter::Plain;
    return QString();
}

} // namespace

void describeLog(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl", "Prints the log files in DIR, with their predecessors, merged by time. DIR has "
                  "the files, or the folders debug and events, or logs with these two.\n\n"
                  "A line that names no level counts as Event in the event files, and as Info in "
                  "others. Lines do not name their module."));
    parser.addUsages({
        {"DIR", ""},
        {"recover DIR",
         QT_TRANSLATE_NOOP("zelctl", "Writes the lines that killed processes have left; \"zelctl "
                                     "help log recover\" explains it.")},
    });
    parser.addValues({
        {"DIR", QT_TRANSLATE_NOOP("zelctl", "The folder of the log files"), CommandParser::Folder},
        {"LEVEL", QT_TRANSLATE_NOOP("zelctl", "A level"), CommandParser::OneOf, levelNames()},
        {"MODULE", QT_TRANSLATE_NOOP("zelctl", "A file, or a kind of events"), CommandParser::OneOf,
         fileNames() + eventKindKeys()},
        {"TIME", "dd/MM/yyyy [hh:mm[:ss]]"},
    });
    parser.addOptions({
        {"level", QT_TRANSLATE_NOOP("zelctl", "Only lines of this level and more severe ones."),
         "LEVEL"},
        {"module",
         QT_TRANSLATE_NOOP("zelctl", "Only lines of these files or kinds of events, separated by "
                                     "commas; may be given several times."),
         "MODULE", "", true},
        {"grep", QT_TRANSLATE_NOOP("zelctl", "Only lines that contain this regular expression."),
         "REGEX"},
        {"from", QT_TRANSLATE_NOOP("zelctl", "Only lines of this time and later."), "TIME"},
        {"to",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "Only lines of this time and earlier, up to the end of this day, minute or second."),
         "TIME"},
        {"last", QT_TRANSLATE_NOOP("zelctl", "Only the last N of these lines."), "N"},
        {"follow",
         QT_TRANSLATE_NOOP("zelctl",
                           "Continues with new lines, also after a rotation, until interrupted.")},
        {"json", QT_TRANSLATE_NOOP("zelctl", "Prints one JSON object for each line.")},
        {"color",
         QT_TRANSLATE_NOOP("zelctl", "Colours the lines by their levels; auto unless given."),
         "auto|always|never", "auto"},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "The lines were printed."),
        QT_TRANSLATE_NOOP("zelctl", "There are no log files, or one could not be read to its end; "
                                    "the other lines are printed."));
    parser.addEnvironment({
        {"PAGER", QT_TRANSLATE_NOOP("zelctl", "The program that shows the lines on a terminal; "
                                              "empty for none, less if it is not set.")},
        {"NO_COLOR", QT_TRANSLATE_NOOP("zelctl", "Turns off the colours of --color auto.")},
        {"TERM", QT_TRANSLATE_NOOP("zelctl", "Turns them off, too, if it is dumb.")},
    });
    parser.addExamples({
        {"zelctl log /share/zel/logs --level warning --from \"15/11/2026 03:00\"",
         QT_TRANSLATE_NOOP("zelctl", "Shows what went wrong since three o'clock.")},
        {"zelctl log /share/zel/logs --grep 'coin changer' --last 20 --follow",
         QT_TRANSLATE_NOOP("zelctl", "Follows what the log says of the coin changer.")},
    });
}

QString readLogRequest(const CommandParser& parser, LogRequest& request)
{
    request.isFollowing = parser.isSet("follow");
    QString problem;
    if (parser.isSet("level"))
        problem = readLevel(parser.value("level"), request.selection.level);
    const QStringList modules = parser.names("module");
    for (int i = 0; i < modules.size() && problem.isEmpty(); ++i)
        problem = readModule(modules[i], request.selection);
    if (problem.isEmpty())
        problem = readTimes(parser, request.selection);
    if (problem.isEmpty())
        problem = readPattern(parser.value("grep"), request.selection);
    if (problem.isEmpty())
        problem = readLast(parser, request.last);
    return problem.isEmpty() ? readStyle(parser, request.style) : problem;
}
