#include "logging/eventhistory.h"

#include "logging/eventlines_p.h"
#include "logging/eventmatcher_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"

#include <QHash>

#include <algorithm>
#include <functional>

namespace
{

using eventlines::Line;

QString decoded(Line line)
{
    return QString::fromUtf8(line.data(), static_cast<int>(line.size()));
}

// Appends the lines with these sorted numbers, which may repeat. Returns the error of visitLines().
QString appendSorted(QStringList& lines, const QString& fileName, const int* wanted, const int* end)
{
    return eventlines::visitLines(fileName, [&](Line line, int number) {
        for (; wanted != end && *wanted <= number; ++wanted) {
            if (*wanted == number)
                lines.append(decoded(line));
        }
        return wanted != end;
    });
}

// The same for numbers in any order, which is that of the lines that are appended.
QString appendNumbered(QStringList& lines, const QString& fileName, const int* wanted,
                       const int* end)
{
    if (wanted == end)
        return QString();
    if (std::is_sorted(wanted, end))
        return appendSorted(lines, fileName, wanted, end);
    QVector<int> rest(wanted, end);
    std::sort(rest.begin(), rest.end(), std::greater<int>());
    QHash<int, QString> found;
    const auto visit = [&](Line line, int number) {
        while (!rest.isEmpty() && rest.last() <= number) {
            if (rest.takeLast() == number)
                found.insert(number, decoded(line));
        }
        return !rest.isEmpty();
    };
    QString error = eventlines::visitLines(fileName, visit);
    for (; wanted != end; ++wanted) {
        if (found.contains(*wanted))
            lines.append(found.value(*wanted));
    }
    return error;
}

void keepFirst(QString& error, const QString& another)
{
    if (error.isEmpty())
        error = another;
}

// The lines of the matches from `begin` to `end`, counted from 0 through the matches of all files.
QStringList foundLines(const QStringList& files, const QVector<QVector<int>>& found, qint64 begin,
                       qint64 end, QString& error)
{
    QStringList lines;
    qint64 before = 0; // matches in the files so far
    for (int i = 0; i < found.size(); ++i) {
        const qint64 size = found[i].size();
        const qint64 from = std::clamp<qint64>(begin - before, 0, size);
        const qint64 to = std::clamp<qint64>(end - before, from, size);
        const int* const numbers = found[i].constData();
        keepFirst(error, appendNumbered(lines, files[i], numbers + from, numbers + to));
        before += size;
    }
    return lines;
}

void reportOutOfBounds()
{
    LogFormatter(LogLevel::Error).log(Log::Global)
        << "QVector<int> LogManager::findEventsInFile(QString&, bool, const QString&, "
           "LogManager::EventModuleFilter, QString, QString, QVector<int>, int, int)"
        << "Index is out of bounds !";
}

} // namespace

QVector<int> EventHistory::matches(const QString& fileName, const EventSelection& selection,
                                   QString& error)
{
    QVector<int> numbers;
    EventMatcher matches(selection);
    error = eventlines::visitLines(fileName, [&](Line line, int number) {
        if (matches(line))
            numbers.append(number);
        return true;
    });
    return numbers;
}

void EventHistory::appendLines(QString& text, const QString& fileName,
                               const QVector<int>& lineIndexes, int first, int count,
                               QString& error)
{
    const qint64 size = lineIndexes.size();
    const qint64 begin = std::clamp<qint64>(first, 0, size);
    const qint64 end = std::clamp<qint64>(qint64(first) + count, begin, size);
    if (end - begin < count)
        reportOutOfBounds();
    QStringList lines;
    error = appendNumbered(lines, fileName, lineIndexes.constData() + begin,
                           lineIndexes.constData() + end);
    if (!text.isEmpty() && !lines.isEmpty())
        text += QLatin1Char('\n');
    text += lines.join(QLatin1Char('\n'));
}

EventHistory::Page EventHistory::page(const QStringList& filesOldestFirst,
                                      const EventSelection& selection, int pageIndex,
                                      int eventsPerPage)
{
    if (eventsPerPage < 1) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "An event page needs room for at least one event, not for" << eventsPerPage;
        return {0, QStringList(), QString()};
    }
    QString error;
    QVector<QVector<int>> found;
    qint64 total = 0;
    for (const QString& file : filesOldestFirst) {
        QString fileError;
        found.append(matches(file, selection, fileError));
        keepFirst(error, fileError);
        total += found.last().size();
    }
    const qint64 end = total - qint64(pageIndex) * eventsPerPage;
    if (end > total)
        reportOutOfBounds();
    const QStringList lines =
        foundLines(filesOldestFirst, found, std::max<qint64>(end - eventsPerPage, 0), end, error);
    return {static_cast<int>((total + eventsPerPage - 1) / eventsPerPage), lines, error};
}
