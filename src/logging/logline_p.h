#pragma once

#include "logging/loglevel.h"

#include <QString>
#include <QVarLengthArray>

/// The bytes of one finished line in the local 8-bit encoding, including the line feed. A line of
/// usual length in ASCII allocates no memory.
class LogLine
{
public:
    /// The unchanged line and a line feed.
    explicit LogLine(const QString& line);
    /// The bytes of LogRenderer::formattedMessage(), and a line feed.
    LogLine(LogLevel::Level level, const QString& message);

    const char* data() const { return m_bytes.constData(); }
    int size() const { return int(m_bytes.size()); }
    /// Where the message starts, behind time and level.
    int messageOffset() const { return m_messageOffset; }
    /// The time in the line, in milliseconds since 1970.
    qint64 moment_ms() const { return m_moment_ms; }

    /// Writes the line to the standard error stream in one piece and flushes it.
    void print() const;

private:
    void append(const QString& text);

    QVarLengthArray<char, 512> m_bytes;
    int m_messageOffset = 0;
    qint64 m_moment_ms = 0;
};
