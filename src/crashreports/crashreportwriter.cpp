#include "crashreports/crashreportwriter.h"

#include "writewhole.h"

#include <cstring>

namespace zeltools
{

CrashReportWriter& CrashReportWriter::text(const char* text)
{
    return text == nullptr ? *this : this->text(text, std::strlen(text));
}

CrashReportWriter& CrashReportWriter::text(const char* text, size_t size)
{
    constexpr unsigned char lastControl = 0x1f;
    constexpr unsigned char deleteControl = 0x7f;
    if (size > 0 && !m_isLineBegun && text[0] == '[')
        add(' ');
    for (size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        add(byte <= lastControl || byte == deleteControl ? '?' : text[i]);
    }
    return *this;
}

CrashReportWriter& CrashReportWriter::number(qint64 number)
{
    if (number < 0)
        add('-');
    digits(number < 0 ? 0 - quint64(number) : quint64(number), 10);
    return *this;
}

CrashReportWriter& CrashReportWriter::hex(quint64 number)
{
    add('0');
    add('x');
    digits(number, 16);
    return *this;
}

void CrashReportWriter::endLine()
{
    add('\n');
    m_isLineBegun = false;
}

CrashReportWriter& CrashReportWriter::beginHeading()
{
    if (m_isLineBegun)
        endLine();
    add('[');
    return *this;
}

void CrashReportWriter::endHeading()
{
    add(']');
    endLine();
}

void CrashReportWriter::flush()
{
    writeWhole(m_descriptor, m_bytes, m_size);
    m_size = 0;
}

void CrashReportWriter::add(char byte)
{
    if (m_size == sizeof m_bytes)
        flush();
    m_bytes[m_size++] = byte;
    m_isLineBegun = true;
}

void CrashReportWriter::digits(quint64 number, unsigned base)
{
    char reversed[20]; // 2^64 has 20 decimal digits.
    size_t count = 0;
    do {
        reversed[count++] = "0123456789abcdef"[number % base];
        number /= base;
    } while (number > 0);
    while (count > 0)
        add(reversed[--count]);
}

} // namespace zeltools
