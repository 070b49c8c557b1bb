#include "logging/eventhistory_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QDate>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace
{

using Line = std::string_view;

const char* find(const char* begin, const char* end, char wanted)
{
    const void* found = begin == end ? nullptr : std::memchr(begin, wanted, size_t(end - begin));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

// Calls visit(line, number) until it returns false. Reads piece by piece into one small buffer,
// which grows for a long line only: memory that the system has to hand out anew for each file would
// cost more than all the rest. NULs end a line as line feeds do, but there are no empty lines about
// them.
template <typename Visit>
void visitLines(const QString& fileName, Visit&& visit)
{
    constexpr int pieceSize = 64 * 1024;
    constexpr int longestLine = 16 * 1024 * 1024; // a longer one is taken for several
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return;
    QByteArray buffer;
    int kept = 0; // bytes of a line that is not yet complete
    int number = 0;
    bool isAfterNul = false;
    const auto visitLine = [&](Line line, char terminator) {
        const bool isLine = !line.empty() || (terminator == '\n' && !isAfterNul);
        isAfterNul = terminator == '\0';
        return !isLine || visit(line, number++);
    };
    for (;;) {
        buffer.resize(kept + pieceSize);
        const auto size = static_cast<int>(file.read(buffer.data() + kept, pieceSize));
        const char* begin = buffer.constData();
        const char* const end = begin + kept + std::max(size, 0);
        const char* searched = begin + kept;
        const char* feed = find(searched, end, '\n');
        for (;;) {
            const char* const stop = find(searched, feed, '\0');
            if (stop == end)
                break;
            if (!visitLine(Line(begin, size_t(stop - begin)), *stop))
                return;
            begin = searched = stop + 1;
            if (stop == feed)
                feed = find(searched, end, '\n');
        }
        kept = static_cast<int>(end - begin);
        if (size <= 0 || kept > longestLine) {
            if (kept > 0 && !visitLine(Line(begin, size_t(kept)), '\n'))
                return;
            begin = end;
            kept = 0;
        }
        if (size <= 0)
            return;
        std::memmove(buffer.data(), begin, size_t(kept));
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
            m_lastText.assign(text.begin(), text.end());
            m_isLastInRange = m_start <= date && date <= m_stop;
        }
        return m_isLastInRange;
    }

    bool m_hasDates;
    QByteArray m_field;
    QDate m_start;
    QDate m_stop;
    std::string m_lastText;
    bool m_isLastInRange = false;
};

void appendNumbered(QString& text, const QString& fileName, const int* wanted, const int* end)
{
    if (wanted == end)
        return;
    visitLines(fileName, [&](Line line, int number) {
        if (number == *wanted) {
            if (!text.isEmpty())
                text += QLatin1Char('\n');
            text += QString::fromUtf8(line.data(), static_cast<int>(line.size()));
            ++wanted;
        }
        return wanted != end;
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
    QVector<int> numbers;
    visitLines(fileName, [&, matches = Matcher(selection)](Line line, int number) mutable {
        if (matches(line))
            numbers.append(number);
        return true;
    });
    return numbers;
}

void EventHistory::appendLines(QString& text, const QString& fileName,
                               const QVector<int>& lineIndexes, int first, int count)
{
    const qint64 size = lineIndexes.size();
    const qint64 begin = std::clamp<qint64>(first, 0, size);
    const qint64 end = std::clamp<qint64>(qint64(first) + count, begin, size);
    if (end - begin < count)
        reportOutOfBounds();
    appendNumbered(text, fileName, lineIndexes.constData() + begin, lineIndexes.constData() + end);
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
    QVector<QVector<int>> found; // in each file
    qint64 total = 0;
    for (const QString& file : filesOldestFirst) {
        found.append(matches(file, selection));
        total += found.last().size();
    }
    Page page{static_cast<int>((total + eventsPerPage - 1) / eventsPerPage), QString()};

    const qint64 end = total - qint64(pageIndex) * eventsPerPage;
    const qint64 begin = std::max<qint64>(end - eventsPerPage, 0);
    if (end > total)
        reportOutOfBounds();
    qint64 before = 0; // matches in the files so far
    for (int i = 0; i < found.size(); ++i) {
        const qint64 size = found[i].size();
        const qint64 from = std::clamp<qint64>(begin - before, 0, size);
        const qint64 to = std::clamp<qint64>(end - before, from, size);
        appendNumbered(page.text, filesOldestFirst[i], found[i].constData() + from,
                       found[i].constData() + to);
        before += size;
    }
    return page;
}
