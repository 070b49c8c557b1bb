#include "eventscommand.h"

#include "commandparser.h"
#include "eventfiles.h"
#include "eventfollow.h"
#include "eventkinds.h"
#include "follow.h"
#include "words.h"

#include <QDate>
#include <QJsonArray>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <iterator>

#include <unistd.h>

namespace
{

const QLatin1String s_dateFormat("dd/MM/yyyy");
// No event is older or newer.
const QLatin1String s_firstDay("01/01/0001");
const QLatin1String s_lastDay("31/12/9999");

/// Reads the first and the last day. Returns the problem with them, or an empty text.
QString readDates(const CommandParser& parser, EventSelection& selection)
{
    if (!parser.isSet("from") && !parser.isSet("to"))
        return QString();
    selection.startDate = parser.isSet("from") ? parser.value("from") : QString(s_firstDay);
    selection.stopDate = parser.isSet("to") ? parser.value("to") : QString(s_lastDay);
    const QDate from = QDate::fromString(selection.startDate, s_dateFormat);
    const QDate to = QDate::fromString(selection.stopDate, s_dateFormat);
    if (!from.isValid() || !to.isValid())
        return Zelctl::tr("\"%1\" is not a date of the form %2")
            .arg(from.isValid() ? selection.stopDate : selection.startDate, s_dateFormat);
    return from > to ? Zelctl::tr("--from is after --to") : QString();
}

/// Reads the options. Returns the first problem with them, or an empty text.
QString readRequest(const CommandParser& parser, EventRequest& request)
{
    const QStringList names = parser.names("kind");
    for (const QString& name : names) {
        request.kinds.append(eventKindInFile(name));
        if (request.kinds.last().isEmpty())
            return Zelctl::tr("unknown kind \"%1\"; the kinds are %2")
                .arg(name, eventKindKeys().join(QStringLiteral(", ")));
    }
    QString problem = readDates(parser, request.days);
    if (!problem.isEmpty())
        return problem;
    bool isNumber = false;
    request.page = parser.value("page").toInt(&isNumber);
    if (!isNumber || request.page < 0)
        return Zelctl::tr("--page needs a number from 0 on");
    request.perPage = parser.value("per-page").toInt(&isNumber);
    if (!isNumber || request.perPage < 1)
        return Zelctl::tr("--per-page needs a number from 1 on");
    return QString();
}

QJsonObject eventObject(const QString& line)
{
    static const QRegularExpression form(
        QStringLiteral(R"(^(\d\d/\d\d/\d{4} \d\d:\d\d:\d\d:\d{3})\| ([^|]*)\| (.*)$)"),
        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(line);
    const LogTime time = logTime(match.captured(1).toStdString());
    if (time == 0)
        return jsonObject({{"line", line}});
    return jsonObject(
        {{"time", isoTime(time)}, {"kind", match.captured(2)}, {"text", match.captured(3)}});
}

ExitStatus printPageAsJson(int page, int pagesCount, const QStringList& lines)
{
    QJsonArray events;
    std::transform(lines.begin(), lines.end(), std::back_inserter(events), eventObject);
    return printJson(jsonObject({{"page", page}, {"pages", pagesCount}, {"events", events}}));
}

/// Prints the lines, and on stderr the number of the page if a terminal shows them.
ExitStatus printPage(int page, int pagesCount, const QStringList& lines)
{
    const ExitStatus status = lines.isEmpty() ? Done : printLine(lines.join(QLatin1Char('\n')));
    if (isatty(STDOUT_FILENO) != 0)
        std::fprintf(stderr, "%s\n",
                     qUtf8Printable(Zelctl::tr("page %1 of %2").arg(page).arg(pagesCount)));
    return status;
}

ExitStatus printNewEvents(EventFollow& events, bool isJson)
{
    const Follow waiting;
    ExitStatus status = Done;
    do {
        const QStringList lines = events.takeNewLines();
        for (const QString& line : lines) {
            if (status == Done)
                status = isJson ? printJson(eventObject(line)) : printLine(line);
        }
    } while (status == Done && waiting.wait());
    return status;
}

/// The message that the page does not exist. The first one always does, though it may be empty.
QString problemWithPage(int page, int pagesCount)
{
    if (page == 0 || page < pagesCount)
        return QString();
    return pagesCount == 0 ? Zelctl::tr("there is no page %1; no event matches").arg(page)
                           : Zelctl::tr("there is no page %1; the last one is %2")
                                 .arg(page)
                                 .arg(pagesCount - 1);
}

ExitStatus printEvents(const QString& folder, const EventRequest& request,
                       const CommandParser& parser)
{
    const bool isFollowing = parser.isSet("follow"), isJson = parser.isSet("json");
    EventHistory::Page page;
    EventFollow events(folder, request);
    QString problem = isFollowing ? events.readPage(page) : readEventPage(folder, request, page);
    if (!problem.isEmpty())
        return fail(Failed, problem);
    problem = problemWithPage(request.page, page.pagesCount);
    ExitStatus status = Done;
    if (isJson)
        status = printPageAsJson(request.page, page.pagesCount, page.lines);
    else if (problem.isEmpty())
        status = printPage(request.page, page.pagesCount, page.lines);
    if (!page.error.isEmpty())
        problem = Zelctl::tr("%1; events are missing").arg(page.error);
    if (status == Done && !problem.isEmpty())
        return fail(Failed, problem);
    return status == Done && isFollowing ? printNewEvents(events, isJson) : status;
}

} // namespace

void describeEvents(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP("zelctl",
                                            "Prints the events in DIR/zel_events.log.1 and "
                                            "DIR/zel_events.log, oldest first, a page at a time."));
    parser.addUsages({{"DIR", ""}});
    parser.addValues({
        {"DIR", QT_TRANSLATE_NOOP("zelctl", "The folder of the event files, or one above it"),
         CommandParser::Folder},
        {"KIND", QT_TRANSLATE_NOOP("zelctl", "A kind of events"), CommandParser::OneOf,
         eventKindKeys()},
    });
    parser.addOptions({
        {"kind",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "Only events of these kinds, separated by commas; may be given several times."),
         "KIND", "", true},
        {"from", QT_TRANSLATE_NOOP("zelctl", "Only events of this day and later."), "dd/MM/yyyy"},
        {"to", QT_TRANSLATE_NOOP("zelctl", "Only events of this day and earlier."), "dd/MM/yyyy"},
        {"page", QT_TRANSLATE_NOOP("zelctl", "Which page; 0, the default, has the newest events."),
         "N", "0"},
        {"per-page", QT_TRANSLATE_NOOP("zelctl", "How many events make a page; 20 by default."),
         "N", "20"},
        {"json",
         QT_TRANSLATE_NOOP("zelctl", "Prints one JSON object with all events of the page.")},
        {"follow", QT_TRANSLATE_NOOP("zelctl", "Continues with new events after the page, until "
                                               "interrupted; with --json one object for each.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "The page was printed."),
        QT_TRANSLATE_NOOP("zelctl", "There is no such folder or page, or a file could not be read "
                                    "to its end; the other events are printed."));
    parser.addFiles({{"zel_events.log, zel_events.log.1",
                      QT_TRANSLATE_NOOP("zelctl", "The events of a machine.")}});
    parser.addExamples({
        {"zelctl events logs --kind MenuAccess --from 01/11/2026 --to 20/11/2026",
         QT_TRANSLATE_NOOP("zelctl", "Shows who entered the menu in these days.")},
    });
}

ExitStatus runEvents(const CommandParser& parser)
{
    EventRequest request;
    const QString misuse = readRequest(parser, request);
    if (!misuse.isEmpty())
        return refuse(misuse);
    QString folder;
    const QString obstacle = findEventFolder(parser.arguments().value(0), folder);
    return obstacle.isEmpty() ? printEvents(folder, request, parser) : fail(Failed, obstacle);
}
