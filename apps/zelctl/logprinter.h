#pragma once

#include "logentry.h"

#include <string>

/// Writes log lines to the standard output, through a buffer: the bytes of the file, text for a
/// terminal with masked control characters, or JSON.
class LogPrinter
{
public:
    enum Style { Plain, Masked, Coloured, Json };

    /// Construct it before the pager takes the standard output: JSON for a terminal is masked too.
    explicit LogPrinter(Style style);

    void print(const LogEntry& entry);
    /// Writes what is in the buffer.
    void flush();
    /// Whether the output takes no more, because its reader has gone or because of an error.
    bool isClosed() const { return m_isClosed; }
    /// The error, or an empty text.
    QString error() const { return m_error; }

private:
    void printJson(const LogEntry& entry);

    const Style m_style;
    const bool m_isTerminal; ///< also where a pager comes between later
    std::string m_buffer;
    bool m_isClosed = false;
    QString m_error;
};
