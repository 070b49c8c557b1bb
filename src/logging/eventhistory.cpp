#include "logging/eventhistory_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QDate>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>

namespace
{

using Line = std::string_view;

QByteArray readWhole(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const char* find(const char* begin, const char* end, char wanted)
{
    const void* found = begin == end ? nullptr : std::memchr(begin, wanted, size_t(end - begin));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

// Calls visit(line, number) until it returns false.
template <typename Visit>
void visitLines(const QByteArray& content, Visit&& visit)
{
    int number = 0;
    const char* const end = content.constData() + content.size();
    for (const char* begin = content.constData(); begin != end;) {
        const char* const lineEnd = find(begin, end, '\n');
        if (find(begin, lineEnd, '\0') == lineEnd) {
            if (!visit(Line(begin, size_t(lineEnd - begin)), number++))
                return;
        } else {
            while (begin != lineEnd) {
                const char* const pieceEnd = find(begin, lineEnd, '\0');
                if (pieceEnd != begin && !visit(Line(begin, size_t(pieceEnd - begin)), number++))
                    return;
                begin = std::find_if(pieceEnd, lineEnd, [](char c) { return c != '\0'; });
            }
        }
        begin = lineEnd == end ? end : lineEnd + 1;
    }
}

int parseDigits(const char* digits, int count)
{
    int value = 0;
    for (int i = 0; i < count; ++i) {
        if (digits[i] < '0' || digits[i] > '9')
            return -1;
        value = value * 10 + (digits[i] - '0');
    }
    return value;
}

// "dd/MM/yyyy" at the start of the line; invalid where it is not.
QDate dateOf(Line line)
{
    if (line.size() < 10 || line[2] != '/' || line[5] != '/')
        return QDate();
    const int day = parseDigits(line.data(), 2);
    const int month = parseDigits(line.data() + 3, 2);
    const int year = parseDigits(line.data() + 6, 4);
    return QDate::isValid(year, month, day) ? QDate(year, month, day) : QDate();
}

// Whether one of the fields that "|" separates is a blank and the kind.
bool hasField(Line line, Line field)
{
    for (size_t at = line.find(field); at != Line::npos; at = line.find(field, at + 1)) {
        const size_t after = at + field.size();
        if ((at == 0 || line[at - 1] == '|') && (after == line.size() || line[after] == '|'))
            return true;
    }
    return false;
}

class Matcher
{
public:
    explicit Matcher(const EventSelection& selection)
        : m_hasDates(!selection.startDate.isEmpty() && !selection.stopDate.isEmpty())
    {
        if (!selection.kind.isEmpty())
            m_field = ' ' + selection.kind.toUtf8();
        if (m_hasDates) {
            const QString format = QStringLiteral("dd/MM/yyyy");
            m_start = QDate::fromString(selection.startDate, format);
            m_stop = QDate::fromString(selection.stopDate, format);
        }
    }

    bool operator()(Line line)
    {
        return (!m_hasDates || isInRange(line)) &&
               (m_field.isEmpty() ||
                hasField(line, Line(m_field.constData(), size_t(m_field.size()))));
    }

private:
    // Neighbouring lines mostly have the same date.
    bool isInRange(Line line)
    {
        const Line text = line.substr(0, 10);
        if (text != m_lastText || m_lastText.empty()) {
            const QDate date = dateOf(line);
            m_lastText = text;
            m_isLastInRange = m_start <= date && date <= m_stop;
        }
        return m_isLastInRange;
    }

    bool m_hasDates;
    QByteArray m_field;
    QDate m_start;
    QDate m_stop;
    Line m_lastText;
    bool m_isLastInRange = false;
};

QVector<int> matchesIn(const QByteArray& content, const EventSelection& selection)
{
    QVector<int> numbers;
    visitLines(content, [&, matches = Matcher(selection)](Line line, int number) mutable {
        if (matches(line))
            numbers.append(number);
        return true;
    });
    return numbers;
}

void appendLinesOf(QString& text, const QByteArray& content, const int* wanted, const int* end)
{
    visitLines(content, [&](Line line, int number) {
        if (wanted == end)
            return false;
        if (number == *wanted) {
            if (!text.isEmpty())
                text += QLatin1Char('\n');
            text += QString::fromUtf8(line.data(), static_cast<int>(line.size()));
            ++wanted;
        }
        return true;
    });
}

void reportOutOfBounds()
{
    LogFormatter(LogLevel::Error).log(Log::Global)
        << "QVector<int> LogManager::findEventsInFile(QString&, bool, const QString&, "
           "LogManager::EventModuleFilter, QString, QString, QVector<int>, int, int)"
        << "Index is out of bounds !";
}

} // namespace

QVector<int> EventHistory::matches(const QString& fileName, const EventSelection& selection)
{
    return matchesIn(readWhole(fileName), selection);
}

void EventHistory::appendLines(QString& text, const QString& fileName,
                               const QVector<int>& lineIndexes, int first, int count)
{
    const qint64 size = lineIndexes.size();
    const qint64 begin = std::clamp<qint64>(first, 0, size);
    const qint64 end = std::clamp<qint64>(qint64(first) + count, begin, size);
    if (end - begin < count)
        reportOutOfBounds();
    appendLinesOf(text, readWhole(fileName), lineIndexes.constData() + begin,
                  lineIndexes.constData() + end);
}

EventHistory::Page EventHistory::page(const QStringList& filesOldestFirst,
                                      const EventSelection& selection, int pageIndex,
                                      int eventsPerPage)
{
    if (eventsPerPage < 1) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "An event page needs room for at least one event, not for" << eventsPerPage;
        return {0, QString()};
    }
    QVector<QByteArray> contents;
    QVector<QVector<int>> matches;
    qint64 total = 0;
    for (const QString& file : filesOldestFirst) {
        contents.append(readWhole(file));
        matches.append(matchesIn(contents.last(), selection));
        total += matches.last().size();
    }
    Page page{static_cast<int>((total + eventsPerPage - 1) / eventsPerPage), QString()};

    const qint64 end = total - qint64(pageIndex) * eventsPerPage;
    const qint64 begin = std::max<qint64>(end - eventsPerPage, 0);
    if (end > total)
        reportOutOfBounds();
    qint64 before = 0; // matches in the files so far
    for (int i = 0; i < matches.size(); ++i) {
        const qint64 size = matches[i].size();
        const qint64 from = std::clamp<qint64>(begin - before, 0, size);
        const qint64 to = std::clamp<qint64>(end - before, from, size);
        appendLinesOf(page.text, contents[i], matches[i].constData() + from,
                      matches[i].constData() + to);
        before += size;
    }
    return page;
}
