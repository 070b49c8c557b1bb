#include "dmesg/kmsgrecord.h"

#include "escapedutf8.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

#include <time.h>

namespace dmesg
{

namespace
{

constexpr const char* s_levels[]{"emerg", "alert",  "crit", "err",
                                 "warn",  "notice", "info", "debug"};
constexpr const char* s_facilities[]{"kern", "user", "mail", "daemon", "auth",     "syslog",
                                     "lpr",  "news", "uucp", "cron",   "authpriv", "ftp"};
constexpr quint32 s_firstLocal = 16;
constexpr quint32 s_lastLocal = 23;

/// Reads a number and the character that ends it. Returns the position behind that character, or
/// null.
template <typename Number>
const char* readNumber(const char* begin, const char* end, char separator, Number& number)
{
    const auto [rest, error] = std::from_chars(begin, end, number);
    return error == std::errc() && rest != end && *rest == separator ? rest + 1 : nullptr;
}

int hexValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const int letter = digit | 0x20;
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

QByteArray decoded(const char* begin, const char* end)
{
    QByteArray bytes;
    bytes.reserve(static_cast<int>(end - begin));
    while (begin != end) {
        const bool isEscape = end - begin >= 4 && begin[0] == '\\' && begin[1] == 'x' &&
                              hexValue(begin[2]) >= 0 && hexValue(begin[3]) >= 0;
        bytes +=
            isEscape ? static_cast<char>(hexValue(begin[2]) * 16 + hexValue(begin[3])) : *begin;
        begin += isEscape ? 4 : 1;
    }
    return bytes;
}

void readField(const QByteArray& line, QMap<QByteArray, QByteArray>& fields)
{
    const int equals = line.indexOf('=');
    const char* const begin = line.constData();
    if (line.startsWith(' ') && equals > 1)
        fields.insert(line.mid(1, equals - 1), decoded(begin + equals + 1, begin + line.size()));
}

/// White space counts as printable, as with dmesg.
bool isPrintable(char ascii)
{
    return (ascii >= ' ' && ascii < 0x7F) || (ascii >= '\t' && ascii <= '\r');
}

QByteArray printable(const QByteArray& text)
{
    return zeltools::escapedUtf8(text, isPrintable);
}

QString timeText(std::chrono::milliseconds time)
{
    const time_t seconds = std::chrono::floor<std::chrono::seconds>(time).count();
    tm local = {};
    char text[200];
    // The names of days and months are those of the process, as with dmesg.
    if (!localtime_r(&seconds, &local) ||
        strftime(text, sizeof text, "[%a %b %e %H:%M:%S %Y] ", &local) == 0)
        return {};
    return QString::fromLocal8Bit(text);
}

} // namespace

std::optional<KmsgRecord> KmsgRecord::parse(const QByteArray& record)
{
    const QList<QByteArray> lines = record.split('\n');
    const char* position = lines.first().constData();
    const char* const end = position + lines.first().size();
    KmsgRecord result;
    quint32 priority = 0;
    quint64 sinceBoot_us = 0;
    position = readNumber(position, end, ',', priority);
    position = position ? readNumber(position, end, ',', result.sequence) : nullptr;
    if (!position)
        return std::nullopt;
    const char* const semicolon = std::find(position, end, ';');
    const auto [timeEnd, error] = std::from_chars(position, semicolon, sinceBoot_us);
    // The time may be followed by a comma and more values.
    const bool hasTime = error == std::errc() && (timeEnd == semicolon || *timeEnd == ',');
    constexpr quint64 latest_us = std::numeric_limits<qint64>::max() / 2; // leaves room for 1970
    if (semicolon == end || !hasTime || sinceBoot_us > latest_us)
        return std::nullopt;
    result.level = static_cast<Level>(priority % 8);
    result.facility = priority / 8;
    result.sinceBoot = std::chrono::microseconds(static_cast<qint64>(sinceBoot_us));
    result.text = decoded(semicolon + 1, end);
    for (int i = 1; i < lines.size(); ++i)
        readField(lines[i], result.fields);
    return result;
}

QString KmsgRecord::printableText() const
{
    return QString::fromUtf8(printable(text));
}

QStringList KmsgRecord::lines() const
{
    if (text.isEmpty())
        return {QString()};
    const QList<QByteArray> parts = (timeText(time).toUtf8() + printable(text)).split('\n');
    QStringList lines;
    for (const QByteArray& line : parts)
        lines.append(QString::fromUtf8(line.trimmed()));
    return lines;
}

QString KmsgRecord::levelName(Level level)
{
    return QString::fromLatin1(s_levels[level]);
}

QString KmsgRecord::facilityName(quint32 facility)
{
    if (facility < std::size(s_facilities))
        return QString::fromLatin1(s_facilities[facility]);
    if (facility >= s_firstLocal && facility <= s_lastLocal)
        return QStringLiteral("local%1").arg(facility - s_firstLocal);
    return QString::number(facility);
}

} // namespace dmesg
