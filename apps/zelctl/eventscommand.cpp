#include "eventscommand.h"

#include "commandparser.h"
#include "eventfollow.h"
#include "eventkinds.h"
#include "follow.h"

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

void addOptions(CommandParser& parser)
{
    const QByteArray kindHelp = "Only events of this kind: " + eventKindKeys().toLatin1() + '.';
    parser.setDescription("Prints the events in DIR/zel_events.log.1 and "
                          "DIR/zel_events.log, oldest first, a page at a time.");
    parser.addArgument("DIR", "The folder of the event files.", "DIR");
    parser.addOptions({
        {"kind", kindHelp.constData(), "NAME"},
        {"from", "Only events of this day and later; together with --to.", "dd/MM/yyyy"},
        {"to", "Only events of this day and earlier; together with --from.", "dd/MM/yyyy"},
        {"page", "Which page; 0, the default, has the newest events.", "N", "0"},
        {"per-page", "How many events make a page; 20 by default.", "N", "20"},
        {"json", "Prints one JSON object; a line that is not an event is its member \"line\"."},
        {"follow", "Goes on behind the page with new events, until interrupted; with --json one "
                   "object for each."},
    });
}

/// Reads the first and the last day. Returns the problem with them, or an empty text.
QString readDates(const CommandParser& parser, EventSelection& selection)
{
    if (parser.isSet("from") != parser.isSet("to"))
        return QStringLiteral("--from and --to belong together");
    if (!parser.isSet("from"))
        return QString();
    selection.startDate = parser.value("from");
    selection.stopDate = parser.value("to");
    const QDate from = QDate::fromString(selection.startDate, s_dateFormat);
    const QDate to = QDate::fromString(selection.stopDate, s_dateFormat);
    if (!from.isValid() || !to.isValid())
        return QStringLiteral("\"%1\" is not a date of the form %2")
            .arg(from.isValid() ? selection.stopDate : selection.startDate, s_dateFormat);
    return from > to ? QStringLiteral("--from is after --to") : QString();
}

/// Reads the options. Returns the first problem with them, or an empty text.
QString readRequest(const CommandParser& parser, EventRequest& request)
{
    EventSelection& selection = request.selection;
    if (parser.isSet("kind")) {
        selection.kind = eventKindInFile(parser.value("kind"));
        if (selection.kind.isEmpty())
            return QStringLiteral("unknown kind \"%1\"; the kinds are %2")
                .arg(parser.value("kind"), eventKindKeys());
    }
    QString problem = readDates(parser, selection);
    if (!problem.isEmpty())
        return problem;
    bool isNumber = false;
    request.page = parser.value("page").toInt(&isNumber);
    if (!isNumber || request.page < 0)
        return QStringLiteral("--page needs a number from 0 on");
    request.perPage = parser.value("per-page").toInt(&isNumber);
    if (!isNumber || request.perPage < 1)
        return QStringLiteral("--per-page needs a number from 1 on");
    return QString();
}

QJsonObject eventObject(const QString& line)
{
    static const QRegularExpression form(
        QStringLiteral(R"(^(\d\d/\d\d/\d{4} \d\d:\d\d:\d\d:\d{3})\| ([^|]*)\| (.*)$)"),
        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(line);
    if (!match.hasMatch())
        return jsonObject({{"line", line}});
    return jsonObject(
        {{"time", match.captured(1)}, {"kind", match.captured(2)}, {"text", match.captured(3)}});
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
        std::fprintf(stderr, "page %d of %d\n", page, pagesCount);
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

} // namespace

ExitStatus runEvents(const QStringList& arguments)
{
    CommandParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parser.parse(arguments))
        return *status;
    const QStringList folders = parser.arguments();
    if (folders.size() != 1 || folders.first().isEmpty())
        return fail(WrongUsage,
                    QStringLiteral("events needs one folder, see \"zelctl events --help\""));
    EventRequest request;
    const QString misuse = readRequest(parser, request);
    if (!misuse.isEmpty())
        return fail(WrongUsage, misuse);
    EventHistory::Page page;
    EventFollow events(folders.first(), request);
    const bool isFollowing = parser.isSet("follow");
    const QString obstacle =
        isFollowing ? events.readPage(page) : readEventPage(folders.first(), request, page);
    if (!obstacle.isEmpty())
        return fail(Failed, obstacle);

    // An empty line counts in the page but shows no event.
    QStringList lines = page.lines;
    lines.removeAll(QString());
    const ExitStatus status = parser.isSet("json")
                                  ? printPageAsJson(request.page, page.pagesCount, lines)
                                  : printPage(request.page, page.pagesCount, lines);
    if (status == Done && !page.error.isEmpty())
        return fail(Failed, page.error + QStringLiteral("; events are missing"));
    return status == Done && isFollowing ? printNewEvents(events, parser.isSet("json")) : status;
}
