#include "logging/logformatter.h"

#include "ascii.h"
#include "logging/debugtext_p.h"
#include "logging/lognode.h"
#include "logging/logrenderer.h"

#include <charconv>
#include <cmath>
#include <cstring>

LogFormatter::LogFormatter(const LogFormatter& other)
    : m_line(&other.line())
    , m_state(other.m_state)
{
    ++m_line->references;
}

LogFormatter& LogFormatter::operator=(const LogFormatter& other)
{
    LogFormatter copy(other);
    std::swap(m_line, copy.m_line);
    std::swap(m_state, copy.m_state);
    return *this;
}

LogFormatter::Line& LogFormatter::line() const
{
    if (m_line == nullptr)
        m_line = Line::take(m_state);
    return *m_line;
}

void LogFormatter::release()
{
    if (--line().references == 0)
        finish();
}

void LogFormatter::finish()
{
    Line* line = m_line;
    if (line->state.isCollected) {
        QString& message = line->message;
        const bool isSpaced = line->debug ? line->debug->autoInsertSpaces() : line->state.isSpaced;
        line->debug.reset();
        if (isSpaced && message.endsWith(QLatin1Char(' ')))
            message.chop(1);
        if (line->state.level == LogLevel::Event) {
            message = QLatin1Char(' ') + LogRenderer::eventToString(line->event) +
                      QLatin1String("| ") + message;
            LogNode::announceEvent(line->event, message);
        }
        LogNode::log(line->state.level, line->modules, message);
    }
    Line::release(line);
}

void LogFormatter::replaceModules(const LogModules& modules)
{
    line().modules = modules;
    m_line->state.isCollected = LogNode::isHeard(m_line->state.level, modules);
}

LogFormatter& LogFormatter::logEvent(const LogEventModule::EventModule& event)
{
    line().event = event;
    return *this;
}

void LogFormatter::appendPiece(const char* text)
{
    if (!line().message.isEmpty())
        *this << ":";
    *this << text;
}

LogFormatter& LogFormatter::log(const QString& text)
{
    return isCollected() ? log(text.toUtf8().constData()) : *this;
}

LogFormatter& LogFormatter::noquote()
{
    state().isQuoted = false;
    if (hasStream())
        m_line->debug->noquote();
    return *this;
}

LogFormatter& LogFormatter::quote()
{
    state().isQuoted = true;
    if (hasStream())
        m_line->debug->quote();
    return *this;
}

LogFormatter& LogFormatter::nospace()
{
    state().isSpaced = false;
    if (hasStream())
        m_line->debug->nospace();
    return *this;
}

LogFormatter& LogFormatter::space()
{
    line().state.isSpaced = true;
    if (hasStream())
        m_line->debug->space();
    else
        m_line->message += QLatin1Char(' ');
    return *this;
}

QDebug& LogFormatter::debug()
{
    Line& line = this->line();
    if (!line.debug) {
        line.debug.emplace(&line.message);
        line.debug->setAutoInsertSpaces(line.state.isSpaced);
        if (!line.state.isQuoted)
            line.debug->noquote();
    }
    return *line.debug;
}

// The functions below append the text of QDebug for their type without a stream, which is faster.

void LogFormatter::appendText(const char* utf8)
{
    Line& line = this->line();
    if (line.debug) {
        debug() << utf8;
        return;
    }
    const size_t size = utf8 != nullptr ? std::strlen(utf8) : 0;
    if (zeltools::isAscii(utf8, size))
        line.message += QLatin1String(utf8, static_cast<int>(size));
    else
        line.message += QString::fromUtf8(utf8, static_cast<int>(size));
    if (line.state.isSpaced)
        line.message += QLatin1Char(' ');
}

void LogFormatter::appendQuoted(const QString& text)
{
    Line& line = this->line();
    if (line.debug || (line.state.isQuoted && !debugtext::isPlain(text))) {
        debug() << text;
        return;
    }
    if (line.state.isQuoted)
        line.message += QLatin1Char('"');
    line.message += text;
    if (line.state.isQuoted)
        line.message += QLatin1Char('"');
    if (line.state.isSpaced)
        line.message += QLatin1Char(' ');
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
    if (hasStream() || !std::isfinite(value))
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
    Line& line = this->line();
    if (line.debug) {
        debug() << value;
        return;
    }
    char text[32];
    char* end = std::to_chars(text, text + sizeof text - 1, value, format...).ptr;
    if (line.state.isSpaced)
        *end++ = ' ';
    line.message += QLatin1String(text, static_cast<int>(end - text));
}
