#pragma once

#include <zeltools/zeltools_export.h>

#include <QtGlobal>

#include <cstddef>

namespace zeltools
{

/// Writes the lines of a crash report. All functions are async-signal-safe: they take no locks and
/// no memory. The object collects the bytes; flush(), the destructor and a full buffer of 4 KiB
/// hand them to the system. Errors of the file are ignored.
///
/// A control character in a text is replaced by "?", so that a text never ends its line. A line
/// that begins with "[" gets a blank before it, so that it is not taken for a heading.
class ZELTOOLS_EXPORT CrashReportWriter final
{
public:
    /// Writes to the file, which must stay open and is not closed.
    explicit CrashReportWriter(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    /// Calls flush().
    ~CrashReportWriter() { flush(); }
    Q_DISABLE_COPY(CrashReportWriter)

    /// Writes a text that ends with NUL; null counts as empty.
    CrashReportWriter& text(const char* text);
    /// Writes `size` bytes, which may contain NUL.
    CrashReportWriter& text(const char* text, size_t size);
    /// Writes the number in decimal digits.
    CrashReportWriter& number(qint64 number);
    /// Writes the number as "0x1f".
    CrashReportWriter& hex(quint64 number);
    /// Ends the line with a line feed.
    void endLine();

    /// Begins a heading such as "[log]", whose text follows.
    CrashReportWriter& beginHeading();
    /// Ends the heading with "]" and a line feed.
    void endHeading();
    /// Hands all bytes to the system.
    void flush();

private:
    void add(char byte);
    void digits(quint64 number, unsigned base);

    const int m_descriptor;
    bool m_isLineBegun = false;
    size_t m_size = 0;
    char m_bytes[4096];
};

} // namespace zeltools
