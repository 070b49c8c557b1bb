#include "logreader.h"

#include <algorithm>
#include <cstring>

namespace
{

// The decoded form of such a piece is not so large that its memory would be mapped anew each time.
constexpr size_t s_pieceSize = 0xc000;
constexpr size_t s_longestLine = 0x100000;

/// The start of the line that the place belongs to.
const char* lineStart(const char* begin, const char* place)
{
    const void* const feed = memrchr(begin, '\n', size_t(place - begin));
    return feed != nullptr ? static_cast<const char*>(feed) + 1 : begin;
}

} // namespace

LogReader::LogReader(const LogSeries& series, const LogSelection& selection, LossLedger& ledger)
    : m_kind(series.kind)
    , m_selection(selection)
    , m_ledger(ledger)
    , m_pattern(selection.pattern)
    , m_source(series)
    , m_buffer(s_pieceSize + 1)
    , m_at(m_buffer.data())
    , m_end(m_at)
{
}

bool LogReader::next()
{
    do {
        while (m_at != m_end) {
            if (nextInBlock())
                return true;
        }
    } while (fill());
    return false;
}

// Goes on behind the next line that can match; returns whether it is a selected one.
bool LogReader::nextInBlock()
{
    const char* const from = m_at;
    const char* const place = m_pattern.find(from);
    if (place == m_end) {
        readLastHead(from, m_end);
        m_at = m_end;
        return false;
    }
    const char* const begin = lineStart(from, place);
    const auto* const end =
        static_cast<const char*>(std::memchr(place, '\n', size_t(m_end - place)));
    m_at = end + 1;
    const std::string_view line(begin, size_t(end - begin));
    if (!readHead(line))
        readLastHead(from, begin);
    m_entry = {line, m_head.time, m_head.level, m_kind, &m_path};
    return !line.empty() && m_selection.accepts(m_entry) && m_pattern.confirms(line);
}

bool LogReader::readHead(std::string_view line)
{
    const LogTime time = logTime(line);
    if (time != 0)
        m_head = {time, logLevel(line, m_kind)};
    return time != 0;
}

// Reads the time and the level of the last line that has them. Without one they stay the same.
void LogReader::readLastHead(const char* from, const char* to)
{
    while (to != from) {
        const char* const begin = lineStart(from, to - 1);
        if (readHead(std::string_view(begin, size_t(to - 1 - begin))))
            return;
        to = begin;
    }
}

// Reads until there is a whole line, with what was left of the block before in front.
bool LogReader::fill()
{
    m_size -= size_t(m_end - m_buffer.data());
    std::memmove(m_buffer.data(), m_end, m_size);
    for (;;) {
        m_buffer.resize(std::max(m_buffer.size(), m_size + s_pieceSize + 1));
        m_at = m_end = m_buffer.data();
        if (readPiece()) {
            if (m_at != m_end)
                return true;
            continue;
        }
        const bool hasMore = m_source.openNext() || (m_isFollowing && m_source.openSuccessors());
        if (!hasMore && (m_isFollowing || m_size == 0))
            return false;
        if (m_size > 0) { // the last line of the file has no line feed
            endBlock(m_size);
            return true;
        }
    }
}

// Returns false at the end of a file.
bool LogReader::readPiece()
{
    char* const piece = m_buffer.data() + m_size;
    const qint64 count = m_source.read(piece, qint64(s_pieceSize));
    if (count == 0)
        return false;
    m_path = m_source.path();
    m_size += size_t(count);
    if (void* const nul = std::memchr(piece, '\0', size_t(count)))
        std::replace(static_cast<char*>(nul), piece + count, '\0', '\n');
    const void* const feed = memrchr(piece, '\n', size_t(count));
    if (feed != nullptr)
        endBlock(size_t(static_cast<const char*>(feed) - m_buffer.data()));
    else if (m_size > s_longestLine)
        endBlock(m_size);
    return true;
}

// The lines up to this place, which has a line feed or is the end of the bytes, become the block.
void LogReader::endBlock(size_t end)
{
    m_buffer[end] = '\n';
    m_size = std::max(m_size, end + 1);
    m_end = m_buffer.data() + end + 1;
    m_pattern.setBlock(m_at, m_end);
    if (m_kind == LogKind::General)
        m_ledger.scan(m_at, m_end);
}
