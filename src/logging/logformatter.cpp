#include "logging/logformatter.h"

#include "ascii.h"
#include "logging/debugtext_p.h"
#include "logging/lognode.h"
#include "logging/logrenderer.h"

#include <charconv>
#include <cmath>
#include <cstring>

LogFormatter::LogFormatter(const LogLevel::Level& level)
    : m_line(Line::take(level))
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
    Line::release(line);
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

// The functions below append the text of QDebug for their type without a stream, which is faster.

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
    if (m_line->debug || (m_line->isQuoted && !debugtext::isPlain(text))) {
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
    else if (debugtext::isBeyondHalves(value))
        appendText(QString::number(value).toLatin1().constData());
    else // adding 0.0 removes the sign of a negative zero
        appendNumber(debugtext::awayFromMiddle(value) + 0.0, std::chars_format::general,
                     significantDigits);
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
