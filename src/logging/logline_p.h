#pragma once

#include "logging/loglevel.h"

#include <QDateTime>
#include <QString>
#include <QVarLengthArray>

/// The bytes of one finished line in the local 8-bit encoding, including the line feed. A line of
/// usual length in ASCII allocates no memory.
class LogLine
{
public:
    /// The unchanged line and a line feed.
    explicit LogLine(const QString& line);
    /// The bytes of LogRenderer::formattedMessage() for the moment since 1970, and a line feed.
    LogLine(LogLevel::Level level, const QString& message,
            qint64 moment_ms = QDateTime::currentMSecsSinceEpoch());

    const char* data() const { return m_bytes.constData(); }
    int size() const { return int(m_bytes.size()); }
    /// Where the message starts, behind time and level.
    int messageOffset() const { return m_messageOffset; }

    /// Writes the line to the standard error stream in one piece and flushes it.
    void print() const;

private:
    void append(const QString& text);

    QVarLengthArray<char, 512> m_bytes;
    int m_messageOffset = 0;
};
