#include "eventscommand.h"

#include <zeltools/logging/eventhistory.h>
#include <zeltools/logging/logrenderer.h>
#include <zeltools/samefile.h>

#include <QDate>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QMetaEnum>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

struct Request
{
    EventSelection selection;
    int page = 0;
    int perPage = 0;
};

struct EventFiles
{
    QStringList paths; // oldest first
    QVector<struct stat> states;

    bool areSameAs(const EventFiles& other) const
    {
        return std::equal(states.begin(), states.end(), other.states.begin(), other.states.end(),
                          zeltools::isSameFile);
    }
};

/// The texts in the files by the keys of the kinds.
QMap<QString, QString> kinds()
{
    const auto events = QMetaEnum::fromType<LogEventModule::EventModule>();
    QMap<QString, QString> kinds;
    for (int i = 0; i < events.keyCount(); ++i) {
        const auto event = static_cast<LogEventModule::EventModule>(events.value(i));
        if (event != LogEventModule::AllEvents)
            kinds.insert(events.key(i), LogRenderer::eventToString(event));
    }
    return kinds;
}

QString kindKeys()
{
    return QStringList(kinds().keys()).join(", ");
}

/// Empty for an unknown kind.
QString kindInFile(const QString& name)
{
    const QMap<QString, QString> all = kinds();
    for (auto kind = all.begin(); kind != all.end(); ++kind) {
        if (kind.key().compare(name, Qt::CaseInsensitive) == 0 ||
            kind->compare(name, Qt::CaseInsensitive) == 0)
            return *kind;
    }
    return QString();
}

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription("Prints the events in DIR/zel_events.log.1 and "
                                     "DIR/zel_events.log, oldest first, a page at a time.");
    parser.addPositionalArgument("DIR", "The folder of the event files.", "DIR");
    parser.addOptions({
        {"kind", "Only events of this kind: " + kindKeys() + '.', "NAME"},
        {"from", "Only events of this day and later; together with --to.", "dd/MM/yyyy"},
        {"to", "Only events of this day and earlier; together with --from.", "dd/MM/yyyy"},
        {"page", "Which page; 0, the default, has the newest events.", "N", "0"},
        {"per-page", "How many events make a page; 20 by default.", "N", "20"},
        {"json", "Prints one JSON object; a line that is not an event is its member \"line\"."},
    });
}

/// The first thing wrong with the options; empty when `request` is filled.
QString readRequest(const QCommandLineParser& parser, Request& request)
{
    EventSelection& selection = request.selection;
    if (parser.isSet("kind")) {
        selection.kind = kindInFile(parser.value("kind"));
        if (selection.kind.isEmpty())
            return "unknown kind \"" + parser.value("kind") + "\"; the kinds are " + kindKeys();
    }
    if (parser.isSet("from") != parser.isSet("to"))
        return "--from and --to belong together";
    if (parser.isSet("from")) {
        selection.startDate = parser.value("from");
        selection.stopDate = parser.value("to");
        const QDate from = QDate::fromString(selection.startDate, "dd/MM/yyyy");
        const QDate to = QDate::fromString(selection.stopDate, "dd/MM/yyyy");
        if (!from.isValid() || !to.isValid())
            return QStringLiteral("\"%1\" is not a date of the form dd/MM/yyyy")
                .arg(from.isValid() ? selection.stopDate : selection.startDate);
        if (from > to)
            return "--from is after --to";
    }
    bool isNumber = false;
    request.page = parser.value("page").toInt(&isNumber);
    if (!isNumber || request.page < 0)
        return "--page needs a number from 0 on";
    request.perPage = parser.value("per-page").toInt(&isNumber);
    if (!isNumber || request.perPage < 1)
        return "--per-page needs a number from 1 on";
    return QString();
}

/// Puts the event files into `files`; returns why that is impossible, or nothing. A file that
/// cannot be opened is found before anything is printed.
QString findFiles(const QString& folder, EventFiles& files)
{
    for (const char* name : {"zel_events.log.1", "zel_events.log"}) {
        const QString path = QDir(folder).filePath(name);
        const QByteArray encodedPath = QFile::encodeName(path);
        struct stat status = {};
        const bool exists = stat(encodedPath.constData(), &status) == 0;
        if (!exists && errno == ENOENT)
            continue;
        // Opening a pipe would wait for its writer.
        if (exists && !S_ISREG(status.st_mode))
            return "cannot read " + path + ": it is not a file";
        if (access(encodedPath.constData(), R_OK) != 0)
            return "cannot read " + path + ": " + std::strerror(errno);
        files.paths.append(path);
        files.states.append(status);
    }
    if (!files.paths.isEmpty())
        return QString();
    return QDir(folder).exists() ? folder + " holds no zel_events.log" : "no folder " + folder;
}

/// Reads the page, anew when the machine has rotated its files meanwhile: events would be missing
/// or doubled. Returns why there is none, or nothing.
QString readPage(const QString& folder, const Request& request, EventHistory::Page& page)
{
    constexpr int attempts = 20;
    for (int i = 0; i < attempts; ++i) {
        EventFiles files;
        QString obstacle = findFiles(folder, files);
        if (!obstacle.isEmpty())
            return obstacle;
        page = EventHistory::page(files.paths, request.selection, request.page, request.perPage);
        EventFiles now;
        if (findFiles(folder, now).isEmpty() && now.areSameAs(files))
            return QString();
    }
    return "the files in " + folder + " rotate faster than they can be read";
}

QJsonObject eventObject(const QString& line)
{
    static const QRegularExpression form(
        R"(^(\d\d/\d\d/\d{4} \d\d:\d\d:\d\d:\d{3})\| ([^|]*)\| (.*)$)",
        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(line);
    if (!match.hasMatch())
        return {{"line", line}};
    return {{"time", match.captured(1)}, {"kind", match.captured(2)}, {"text", match.captured(3)}};
}

QString jsonText(int page, int pagesCount, const QStringList& lines)
{
    QJsonArray events;
    std::transform(lines.begin(), lines.end(), std::back_inserter(events), eventObject);
    const QJsonObject object{{"page", page}, {"pages", pagesCount}, {"events", events}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace

ExitStatus runEvents(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parse(parser, arguments))
        return *status;
    const QStringList folders = parser.positionalArguments();
    if (folders.size() != 1 || folders.first().isEmpty())
        return fail(WrongUsage, "events needs one folder, see \"zelctl events --help\"");
    Request request;
    const QString misuse = readRequest(parser, request);
    if (!misuse.isEmpty())
        return fail(WrongUsage, misuse);
    EventHistory::Page page;
    const QString obstacle = readPage(folders.first(), request, page);
    if (!obstacle.isEmpty())
        return fail(Failed, obstacle);

    // An empty line counts in the page but shows no event.
    QStringList lines = page.lines;
    lines.removeAll(QString());
    const bool isJson = parser.isSet("json");
    QString output = isJson ? jsonText(request.page, page.pagesCount, lines) : lines.join('\n');
    if (!output.isEmpty())
        output += '\n';
    const ExitStatus status = print(output);
    // For the reader at a terminal; apart from the events even there.
    if (isatty(STDOUT_FILENO) != 0 && !isJson)
        std::fprintf(stderr, "page %d of %d\n", request.page, page.pagesCount);
    if (status == Done && !page.error.isEmpty())
        return fail(Failed, page.error + "; events are missing");
    return status;
}
