#pragma once

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <string_view>

/// Reads the lines of an event file. A line ends with a line feed, at a run of NUL characters, or
/// with the file. An empty line beside a NUL is not counted.
namespace eventlines
{

using Line = std::string_view;

/// Opens the file for reading. Returns the reason if it cannot; a file that does not exist stays
/// closed without a reason. It refuses a FIFO, whose opening would wait for a writer.
QString openForReading(QFile& file);
QString readError(const QString& fileName, const QString& reason);

/// Finds the lines in pieces of a file and passes each of them with its number to `visit`.
template <typename Visit>
class Scanner
{
public:
    explicit Scanner(Visit& visit)
        : m_visit(visit)
    {
    }

    /// Visits the lines that end between `searched` and `end`; the first one starts at `begin`.
    /// Returns the start of the unfinished line behind them, or null when `visit` returns false.
    const char* scan(const char* begin, const char* searched, const char* end)
    {
        const char* feed = find(searched, end, '\n');
        for (;;) {
            const char* const stop = find(searched, feed, '\0');
            if (stop == end)
                return begin;
            if (!visitLine(begin, stop, *stop))
                return nullptr;
            begin = searched = stop + 1;
            if (stop == feed)
                feed = find(searched, end, '\n');
        }
    }
    bool visitLine(const char* begin, const char* end, char terminator)
    {
        const bool isLine = begin != end || (terminator == '\n' && !m_isAfterNul);
        m_isAfterNul = terminator == '\0';
        return !isLine || m_visit(Line(begin, size_t(end - begin)), m_number++);
    }

private:
    static const char* find(const char* begin, const char* end, char wanted)
    {
        const void* found =
            begin == end ? nullptr : std::memchr(begin, wanted, size_t(end - begin));
        return found != nullptr ? static_cast<const char*>(found) : end;
    }

    Visit& m_visit;
    int m_number = 0;
    bool m_isAfterNul = false;
};

/// Calls visit(line, number) until it returns false. Returns why the file could not be read to its
/// end, or nothing. A file that does not exist has no lines.
///
/// It reads into one small buffer, which only grows for a long line, since allocating memory for
/// each file would take most of the time. The buffer before and after a scan, where "ab" and "wx"
/// are the first and second half of lines:
///
///     begin  searched              end
///     |ab    |cd\n  more lines\n  wx|  scan() has visited "abcd" and the lines after it
///     |wx    |                         the rest moves to the front, and the next piece behind it
///     begin  searched
template <typename Visit>
QString visitLines(const QString& fileName, Visit&& visit)
{
    constexpr int pieceSize = 64 * 1024;
    constexpr int longestLine = 16 * 1024 * 1024; // a longer one counts as several lines
    QFile file(fileName);
    QString obstacle = openForReading(file);
    if (!file.isOpen())
        return obstacle;
    Scanner<std::remove_reference_t<Visit>> scanner(visit);
    QByteArray buffer;
    int kept = 0; // bytes of the unfinished line
    for (;;) {
        buffer.resize(kept + pieceSize);
        const auto size = static_cast<int>(file.read(buffer.data() + kept, pieceSize));
        const char* const searched = buffer.constData() + kept;
        const char* const end = searched + std::max(size, 0);
        const char* const rest = scanner.scan(buffer.constData(), searched, end);
        if (rest == nullptr)
            return QString();
        kept = static_cast<int>(end - rest);
        if (kept > 0 && (size <= 0 || kept > longestLine)) {
            if (!scanner.visitLine(rest, end, '\n'))
                return QString();
            kept = 0;
        }
        if (size <= 0)
            return size < 0 ? readError(fileName, file.errorString()) : QString();
        std::memmove(buffer.data(), rest, size_t(kept));
    }
}

} // namespace eventlines
