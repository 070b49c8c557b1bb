#include "logging/eventhistory.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QDate>
#include <QFile>
#include <QHash>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace
{

using Line = std::string_view;

const char* find(const char* begin, const char* end, char wanted)
{
    const void* found = begin == end ? nullptr : std::memchr(begin, wanted, size_t(end - begin));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

QString readError(const QString& fileName, const QString& reason)
{
    return QStringLiteral("cannot read %1: %2").arg(fileName, reason);
}

// Opens the file, or returns why it can't: nothing where there is no file. Opening a FIFO would
// wait for its writer.
QString open(QFile& file)
{
    struct stat status;
    if (stat(QFile::encodeName(file.fileName()).constData(), &status) != 0)
        return errno == ENOENT ? QString() : readError(file.fileName(), qt_error_string(errno));
    if (!S_ISREG(status.st_mode))
        return readError(file.fileName(), QStringLiteral("it is not a file"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return readError(file.fileName(), file.errorString());
    return QString();
}

// Calls visit(line, number) until it returns false. Returns why the file could not be read to its
// end, or nothing; a file that does not exist is an empty one. Reads piece by piece into one small
// buffer, which grows for a long line only: memory that the system has to hand out anew for each
// file would cost more than all the rest. NULs end a line as line feeds do, but there are no empty
// lines about them.
template <typename Visit>
QString visitLines(const QString& fileName, Visit&& visit)
{
    constexpr int pieceSize = 64 * 1024;
    constexpr int longestLine = 16 * 1024 * 1024; // a longer one is taken for several
    QFile file(fileName);
    QString obstacle = open(file);
    if (!file.isOpen())
        return obstacle;
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
                return QString();
            begin = searched = stop + 1;
            if (stop == feed)
                feed = find(searched, end, '\n');
        }
        kept = static_cast<int>(end - begin);
        if (size <= 0 || kept > longestLine) {
            if (kept > 0 && !visitLine(Line(begin, size_t(kept)), '\n'))
                return QString();
            begin = end;
            kept = 0;
        }
        if (size <= 0)
            return size < 0 ? readError(fileName, file.errorString()) : QString();
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

// Appends the lines with these numbers, in their order, to `lines`. They may come in any order and
// more than once. Returns what visitLines() returns.
QString appendNumbered(QStringList& lines, const QString& fileName, const int* wanted,
                       const int* end)
{
    QVector<int> rest(wanted, end);
    std::sort(rest.begin(), rest.end(), std::greater<int>());
    QHash<int, QString> found;
    const auto visit = [&](Line line, int number) {
        while (!rest.isEmpty() && rest.last() <= number) {
            if (rest.takeLast() == number)
                found.insert(number, QString::fromUtf8(line.data(), static_cast<int>(line.size())));
        }
        return !rest.isEmpty();
    };
    QString error = rest.isEmpty() ? QString() : visitLines(fileName, visit);
    for (; wanted != end; ++wanted) {
        if (found.contains(*wanted))
            lines.append(found.value(*wanted));
    }
    return error;
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
    error = visitLines(fileName, [&, matches = Matcher(selection)](Line line, int number) mutable {
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
    QString error; // the first one
    const auto keepError = [&error](const QString& another) {
        if (error.isEmpty())
            error = another;
    };
    QVector<QVector<int>> found; // in each file
    qint64 total = 0;
    for (const QString& file : filesOldestFirst) {
        QString fileError;
        found.append(matches(file, selection, fileError));
        keepError(fileError);
        total += found.last().size();
    }

    const qint64 end = total - qint64(pageIndex) * eventsPerPage;
    const qint64 begin = std::max<qint64>(end - eventsPerPage, 0);
    if (end > total)
        reportOutOfBounds();
    QStringList lines;
    qint64 before = 0; // matches in the files so far
    for (int i = 0; i < found.size(); ++i) {
        const qint64 size = found[i].size();
        const qint64 from = std::clamp<qint64>(begin - before, 0, size);
        const qint64 to = std::clamp<qint64>(end - before, from, size);
        keepError(appendNumbered(lines, filesOldestFirst[i], found[i].constData() + from,
                                 found[i].constData() + to));
        before += size;
    }
    return {static_cast<int>((total + eventsPerPage - 1) / eventsPerPage), lines, error};
}
