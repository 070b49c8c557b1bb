#include "logging/logformatter.h"

#include "ascii.h"
#include "logging/log.h"
#include "logging/lognode.h"
#include "logging/logrenderer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace
{

// A line longer than this gives its memory back, so that no thread keeps a megabyte for ever.
constexpr int s_keptCapacity = 1024;

// QDebug writes such a text between quotes as it is; anything else it may have to escape.
bool isPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= QLatin1Char(' ') && c < QChar(0x7f) && c != QLatin1Char('"') &&
               c != QLatin1Char('\\');
    });
}

// From here on every double is an integer.
constexpr double s_lastHalf = 4503599627370496; // 2^52

// QDebug rounds the exact middle between two numbers of six digits away from zero (20.03125 reads
// 20.0313), std::to_chars() to the even one of them. A middle has seven decimal digits. If it has a
// fraction too, then it is at least 0.0001 and its binary digits fit into a float. So only such
// values and integers take the smallest step away from zero, which leads none of them beyond a
// middle: the nearest one that they are not themselves is farther away.
double awayFromMiddle(double value)
{
    constexpr double smallestMiddle = 0.0001;
    const double size = std::fabs(value);
    const bool mayBeMiddle =
        size >= smallestMiddle &&
        (double(static_cast<float>(value)) == value || std::trunc(value) == value);
    return mayBeMiddle ? std::nextafter(value, 2 * value) : value;
}

} // namespace

// Each thread keeps one line for the next formatter, with the memory of its text: most lines then
// take nothing from the heap.
struct LogFormatter::SpareLine
{
    // Trivial variables stay readable after the keeper is gone: lines are written to the very end
    // of a thread, by destructors too.
    static thread_local Line* line;
    static thread_local bool isOver;

    ~SpareLine()
    {
        isOver = true;
        delete line;
        line = nullptr;
    }

    static void keepUntilThreadEnds() { static thread_local SpareLine keeper; }
};

thread_local LogFormatter::Line* LogFormatter::SpareLine::line = nullptr;
thread_local bool LogFormatter::SpareLine::isOver = false;

LogFormatter::Line* LogFormatter::takeLine(LogLevel::Level level)
{
    Line* line = SpareLine::line;
    if (line != nullptr)
        SpareLine::line = nullptr;
    else
        line = new Line;
    line->references = 1;
    line->isCollected = true;
    line->isSpaced = true;
    line->isQuoted = true;
    line->level = level;
    line->event = LogEventModule::NoneEvent;
    line->modules = Log::None;
    return line;
}

void LogFormatter::releaseLine(Line* line)
{
    // A receiver may have kept a copy of the text, which then is no longer ours to write into.
    if (!line->message.isDetached() || line->message.capacity() > s_keptCapacity)
        line->message = QString();
    else
        line->message.resize(0);
    if (SpareLine::line != nullptr || SpareLine::isOver) {
        delete line;
        return;
    }
    SpareLine::keepUntilThreadEnds();
    SpareLine::line = line;
}

LogFormatter::LogFormatter(const LogLevel::Level& level)
    : m_line(takeLine(level))
{
}

LogFormatter::LogFormatter(const LogFormatter& other)
    : m_line(other.m_line)
{
    ++m_line->references;
}

LogFormatter& LogFormatter::operator=(const LogFormatter& other)
{
    LogFormatter copy(other);
    std::swap(m_line, copy.m_line);
    return *this;
}

LogFormatter::~LogFormatter()
{
    if (--m_line->references == 0)
        finish();
}

void LogFormatter::finish()
{
    Line* line = m_line;
    if (line->isCollected) {
        QString& message = line->message;
        const bool isSpaced = line->debug ? line->debug->autoInsertSpaces() : line->isSpaced;
        line->debug.reset();
        if (isSpaced && message.endsWith(QLatin1Char(' ')))
            message.chop(1);
        if (line->level == LogLevel::Event) {
            message = QLatin1Char(' ') + LogRenderer::eventToString(line->event) +
                      QLatin1String("| ") + message;
            LogNode::announceEvent(line->event, message);
        }
        LogNode::log(line->level, line->modules, message);
    }
    releaseLine(line);
}

LogFormatter& LogFormatter::log(const LogModules& modules)
{
    m_line->modules = modules;
    m_line->isCollected = LogNode::isHeard(m_line->level, modules);
    return *this;
}

LogFormatter& LogFormatter::logEvent(const LogEventModule::EventModule& event)
{
    m_line->event = event;
    return *this;
}

LogFormatter& LogFormatter::log(const char* text)
{
    if (!m_line->message.isEmpty())
        *this << ":";
    return *this << text;
}

LogFormatter& LogFormatter::log(const QString& text)
{
    return m_line->isCollected ? log(text.toUtf8().constData()) : *this;
}

LogFormatter& LogFormatter::noquote()
{
    m_line->isQuoted = false;
    if (m_line->debug)
        m_line->debug->noquote();
    return *this;
}

LogFormatter& LogFormatter::quote()
{
    m_line->isQuoted = true;
    if (m_line->debug)
        m_line->debug->quote();
    return *this;
}

LogFormatter& LogFormatter::nospace()
{
    m_line->isSpaced = false;
    if (m_line->debug)
        m_line->debug->nospace();
    return *this;
}

LogFormatter& LogFormatter::space()
{
    m_line->isSpaced = true;
    if (m_line->debug)
        m_line->debug->space();
    else
        m_line->message += QLatin1Char(' ');
    return *this;
}

QDebug& LogFormatter::debug()
{
    if (!m_line->debug) {
        m_line->debug.emplace(&m_line->message);
        m_line->debug->setAutoInsertSpaces(m_line->isSpaced);
        if (!m_line->isQuoted)
            m_line->debug->noquote();
    }
    return *m_line->debug;
}

// The short ways: each gives the text of QDebug for its type.

void LogFormatter::appendText(const char* utf8)
{
    if (m_line->debug) {
        debug() << utf8;
        return;
    }
    const size_t size = utf8 != nullptr ? std::strlen(utf8) : 0;
    if (zeltools::isAscii(utf8, size))
        m_line->message += QLatin1String(utf8, static_cast<int>(size));
    else
        m_line->message += QString::fromUtf8(utf8, static_cast<int>(size));
    if (m_line->isSpaced)
        m_line->message += QLatin1Char(' ');
}

void LogFormatter::appendQuoted(const QString& text)
{
    if (m_line->debug || (m_line->isQuoted && !isPlain(text))) {
        debug() << text;
        return;
    }
    if (m_line->isQuoted)
        m_line->message += QLatin1Char('"');
    m_line->message += text;
    if (m_line->isQuoted)
        m_line->message += QLatin1Char('"');
    if (m_line->isSpaced)
        m_line->message += QLatin1Char(' ');
}

void LogFormatter::appendBool(bool value)
{
    appendText(value ? "true" : "false");
}

void LogFormatter::appendSigned(qlonglong value)
{
    appendNumber(value);
}

void LogFormatter::appendUnsigned(qulonglong value)
{
    appendNumber(value);
}

void LogFormatter::appendReal(double value)
{
    constexpr int significantDigits = 6;
    if (m_line->debug || !std::isfinite(value))
        debug() << value;
    else if (std::fabs(value) >= s_lastHalf)
        appendText(QString::number(value).toLatin1().constData());
    else // and without the sign of a negative zero
        appendNumber(awayFromMiddle(value) + 0.0, std::chars_format::general, significantDigits);
}

template <typename T, typename... Format>
void LogFormatter::appendNumber(T value, Format... format)
{
    if (m_line->debug) {
        debug() << value;
        return;
    }
    char text[32];
    char* end = std::to_chars(text, text + sizeof text - 1, value, format...).ptr;
    if (m_line->isSpaced)
        *end++ = ' ';
    m_line->message += QLatin1String(text, static_cast<int>(end - text));
}
