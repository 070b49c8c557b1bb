#include "logging/logformatter.h"

#include "logging/debugtext_p.h"
#include "logging/lognode.h"

#include <charconv>
#include <cmath>

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
    if (line().debug ? !line().message.isEmpty() : line().size > 0)
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
    Line& line = this->line();
    line.state.isSpaced = true;
    if (line.hasRoom(0))
        line.append(' ');
    else
        debug().space();
    return *this;
}

QDebug& LogFormatter::debug()
{
    Line& line = this->line();
    if (!line.debug) {
        line.useMessage();
        line.debug.emplace(&line.message);
        line.debug->setAutoInsertSpaces(line.state.isSpaced);
        if (!line.state.isQuoted)
            line.debug->noquote();
    }
    return *line.debug;
}

template <typename Character>
ushort LogFormatter::Line::append(const Character* __restrict characters, size_t count)
{
    ushort* __restrict to = text.data() + size;
    ushort all = 0;
    for (size_t i = 0; i < count; ++i) {
        to[i] = characters[i];
        all |= characters[i];
    }
    size += static_cast<int>(count);
    return all;
}

// The functions below append the text of QDebug for their type without a stream, which is faster.

void LogFormatter::appendText(const char* utf8, size_t size)
{
    Line& line = this->line();
    if (!line.hasRoom(size)) {
        debug() << utf8;
        return;
    }
    const int start = line.size;
    if (line.append(reinterpret_cast<const uchar*>(utf8), size) > 0x7f) {
        line.size = start;
        const QString text = QString::fromUtf8(utf8, static_cast<int>(size));
        line.append(text.utf16(), size_t(text.size())); // which are no more than the bytes
    }
    line.endItem();
}

void LogFormatter::appendQuoted(const QString& text)
{
    Line& line = this->line();
    const bool isQuoted = line.state.isQuoted;
    if (!line.hasRoom(size_t(text.size())) || (isQuoted && !debugtext::isPlain(text))) {
        debug() << text;
        return;
    }
    if (isQuoted)
        line.append('"');
    line.append(text.utf16(), size_t(text.size()));
    if (isQuoted)
        line.append('"');
    line.endItem();
}

void LogFormatter::appendBool(bool value)
{
    appendText(value ? "true" : "false", value ? 4 : 5);
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
    if (hasStream() || !std::isfinite(value)) {
        debug() << value;
    } else if (debugtext::isBeyondHalves(value)) {
        const QByteArray text = QString::number(value).toLatin1();
        appendText(text.constData(), size_t(text.size()));
    } else // adding 0.0 removes the sign of a negative zero
        appendNumber(debugtext::awayFromMiddle(value) + 0.0, std::chars_format::general,
                     significantDigits);
}

template <typename T, typename... Format>
void LogFormatter::appendNumber(T value, Format... format)
{
    char text[32];
    Line& line = this->line();
    if (!line.hasRoom(sizeof text)) {
        debug() << value;
        return;
    }
    const char* end = std::to_chars(text, text + sizeof text, value, format...).ptr;
    line.append(reinterpret_cast<const uchar*>(text), size_t(end - text));
    line.endItem();
}
