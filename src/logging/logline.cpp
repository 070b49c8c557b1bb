#include "logging/logline_p.h"

#include "logging/logrenderer.h"
#include "logging/logtimestamp.h"
#include "logging/standarderror_p.h"

#include <algorithm>

LogLine::LogLine(const QString& line)
{
    append(line);
    m_bytes.append('\n');
}

LogLine::LogLine(LogLevel::Level level, const QString& message)
{
    constexpr int longestPattern = 40;
    m_bytes.resize(longestPattern);
    char* end = m_bytes.data();
    LogRenderer::appendPattern(
        level, currentLogTimestamp(m_moment_ms),
        [&end](QLatin1String piece) { end = std::copy_n(piece.data(), piece.size(), end); });
    m_bytes.resize(static_cast<int>(end - m_bytes.data()));
    m_messageOffset = int(m_bytes.size());
    append(message);
    m_bytes.append('\n');
}

void LogLine::append(const QString& text)
{
    const int start = m_bytes.size();
    const int size = text.size();
    m_bytes.resize(start + size);
    const ushort* __restrict from = text.utf16();
    char* __restrict to = m_bytes.data() + start;
    // Compilers turn these two plain loops into vector instructions.
    ushort all = 0;
    for (int i = 0; i < size; ++i)
        all |= from[i];
    for (int i = 0; i < size; ++i)
        to[i] = static_cast<char>(from[i]);
    // All local encodings of Linux systems agree on ASCII.
    if (all > 0x7f) {
        const QByteArray encoded = text.toLocal8Bit();
        m_bytes.resize(start);
        m_bytes.append(encoded.constData(), encoded.size());
    }
}

void LogLine::print() const
{
    writeToStandardError(m_bytes.constData(), size_t(m_bytes.size()));
}
