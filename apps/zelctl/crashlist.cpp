#include "crashlist.h"

#include "crashjson.h"
#include "crashprinter.h"
#include "readfile.h"
#include "table.h"
#include "words.h"

#include <QDir>
#include <QJsonArray>

#include <algorithm>

using zeltools::CrashReport;

namespace
{

/// A line of the list. The report itself may be large, so it is not kept.
struct Entry
{
    QString file;
    QString error; ///< empty if the file is a report
    qint64 time_ms = 0;
    QString signal;
    QString program;
    QString reason;
    bool isComplete = false;
};

Entry readEntry(const QString& folder, const QString& file)
{
    Entry entry;
    entry.file = file;
    if (const auto report = readCrashReport(QDir(folder).filePath(file), entry.error)) {
        entry.time_ms = report->time_ms;
        entry.signal = crashSignal(*report);
        entry.program = report->program;
        entry.reason = report->reason;
        entry.isComplete = report->isComplete;
    }
    return entry;
}

QVector<Entry> readEntries(const QString& folder)
{
    QVector<Entry> entries;
    const QString prepared = QStringLiteral(".open");
    const QStringList patterns{QStringLiteral("crash-*.report"),
                               QStringLiteral("crash-*") + prepared};
    const QStringList files = QDir(folder).entryList(patterns, QDir::Files | QDir::System);
    for (const QString& file : files) {
        const Entry entry = readEntry(folder, file);
        // A running process has a prepared file; after its crash, the next start gives it a name.
        if (entry.time_ms != 0 || !file.endsWith(prepared))
            entries.append(entry);
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
        return left.time_ms > right.time_ms;
    });
    return entries;
}

QStringList row(const Entry& entry)
{
    const QString none = QStringLiteral("-");
    if (!entry.error.isEmpty())
        return {none, none, QStringLiteral("unreadable"), none, entry.file, entry.error};
    return {crashTime(entry.time_ms),
            entry.signal,
            entry.isComplete ? QStringLiteral("complete") : QStringLiteral("incomplete"),
            entry.program.mid(entry.program.lastIndexOf(QLatin1Char('/')) + 1),
            entry.file,
            entry.reason.isEmpty() ? none : entry.reason};
}

QString listText(const QVector<Entry>& entries, int width)
{
    QVector<QStringList> rows;
    for (const Entry& entry : entries) {
        rows.append(row(entry));
        for (QString& cell : rows.last())
            cell = withoutControls(cell);
    }
    return table(rows, width);
}

QJsonObject listJson(const QVector<Entry>& entries)
{
    QJsonArray array;
    for (const Entry& entry : entries) {
        if (entry.error.isEmpty())
            array.append(jsonObject({{"file", entry.file},
                                     {"time", crashIsoTime(entry.time_ms)},
                                     {"signal", entry.signal},
                                     {"complete", entry.isComplete},
                                     {"program", entry.program},
                                     {"reason", entry.reason}}));
        else
            array.append(jsonObject({{"file", entry.file}, {"error", entry.error}}));
    }
    return jsonObject({{"reports", array}});
}

/// The reasons of CrashReport::parse().
[[maybe_unused]] constexpr const char* s_reasons[]{
    QT_TRANSLATE_NOOP("zelctl", "it is not a crash report"),
    QT_TRANSLATE_NOOP("zelctl", "it is a crash report of another version"),
};

} // namespace

std::optional<CrashReport> readCrashReport(const QString& path, QString& error)
{
    const FileContent content = readFile(path, CrashReport::largest_B);
    if (!content.error.isEmpty()) {
        error = content.error;
        return std::nullopt;
    }
    QString reason;
    std::optional<CrashReport> report = CrashReport::parse(content.bytes, reason);
    error = report ? QString()
                   : Zelctl::tr("cannot read %1: %2").arg(path, Zelctl::tr(qUtf8Printable(reason)));
    return report;
}

ExitStatus printCrashList(const QString& folder, bool isJson, int width)
{
    if (isJson)
        Zelctl::speakEnglish(); // The object has the messages about unreadable reports.
    const QVector<Entry> entries = readEntries(folder);
    const ExitStatus status =
        isJson ? printJson(listJson(entries)) : print(listText(entries, width));
    const auto unreadable = std::find_if(entries.begin(), entries.end(),
                                         [](const Entry& entry) { return !entry.error.isEmpty(); });
    return status == Done && unreadable != entries.end() ? fail(Failed, unreadable->error) : status;
}
