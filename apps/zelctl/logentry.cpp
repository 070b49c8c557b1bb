#include "logentry.h"

#include <zeltools/logging/logrenderer.h>

#include <QDate>

#include <algorithm>
#include <array>

namespace
{

constexpr size_t s_timeLength = 23; // "dd/MM/yyyy hh:mm:ss:zzz"
constexpr size_t s_levelLength = 8;
constexpr size_t s_levelBegin = s_timeLength + 2; // behind "| "
constexpr size_t s_levelEnd = s_levelBegin + s_levelLength;

// The digits from `first` on; negative if one of them is not a digit.
template <int count>
LogTime digits(const char* first)
{
    LogTime value = 0;
    bool areDigits = true;
    for (int i = 0; i < count; ++i) {
        const auto digit = static_cast<unsigned char>(first[i] - '0');
        areDigits = areDigits && digit <= 9;
        value = value * 10 + digit;
    }
    return areDigits ? value : -1;
}

/// Whether there are such a day and time. No year has a shorter month than of 28 days.
bool isPossible(LogTime year, LogTime month, LogTime day, LogTime hour, LogTime minute,
                LogTime second)
{
    return year > 0 && month > 0 && month <= 12 && day > 0 &&
           (day <= 28 || QDate::isValid(int(year), int(month), int(day))) && hour < 24 &&
           minute < 60 && second < 60;
}

bool hasLevelText(std::string_view line)
{
    return line.size() >= s_levelEnd + 3 && line.substr(s_timeLength, 2) == "| " &&
           line.substr(s_levelEnd, 3) == " | ";
}

LogLevel::Level levelOfFile(LogKind kind)
{
    return logKinds()[static_cast<int>(kind)].level;
}

} // namespace

const QVector<LogKindProperties>& logKinds()
{
    static const QVector<LogKindProperties> kinds{
        {LogKind::General, QLatin1String("general"), QLatin1String("zel_logs.log"), LogLevel::Info},
        {LogKind::M4, QLatin1String("m4"), QLatin1String("m4_ab.log"), LogLevel::M4},
        {LogKind::Events, QLatin1String("events"), QLatin1String("zel_events.log"),
         LogLevel::Event},
        {LogKind::Grinder, QLatin1String("grinder"), QLatin1String("zel_grinder.log"),
         LogLevel::Grinder},
        {LogKind::Capsule, QLatin1String("capsule"), QLatin1String("zel_capsule.log"),
         LogLevel::Capsule}};
    return kinds;
}

LogTime logTime(std::string_view line)
{
    const char* const text = line.data();
    if (line.size() < s_timeLength || text[2] != '/' || text[5] != '/' || text[10] != ' ' ||
        text[13] != ':' || text[16] != ':' || text[19] != ':')
        return 0;
    const LogTime day = digits<2>(text);
    const LogTime month = digits<2>(text + 3);
    const LogTime year = digits<4>(text + 6);
    const LogTime hour = digits<2>(text + 11);
    const LogTime minute = digits<2>(text + 14);
    const LogTime second = digits<2>(text + 17);
    const LogTime millisecond = digits<3>(text + 20);
    if ((day | month | year | hour | minute | second | millisecond) < 0 ||
        !isPossible(year, month, day, hour, minute, second))
        return 0;
    return (((((year * 100 + month) * 100 + day) * 100 + hour) * 100 + minute) * 100 + second) *
               1000 +
           millisecond;
}

QString isoTime(LogTime time)
{
    if (time == 0)
        return QString();
    QString text = QString::number(time).rightJustified(17, QLatin1Char('0'));
    constexpr std::array<std::pair<int, char>, 6> separators{
        {{14, '.'}, {12, ':'}, {10, ':'}, {8, 'T'}, {6, '-'}, {4, '-'}}};
    for (const auto& [place, separator] : separators)
        text.insert(place, QLatin1Char(separator));
    return text;
}

LogLevel::Level logLevel(std::string_view line, LogKind kind)
{
    if (!hasLevelText(line))
        return levelOfFile(kind);
    const std::string_view text = line.substr(s_levelBegin, s_levelLength);
    const auto level = std::find_if(severities.begin(), severities.end(), [text](auto one) {
        return text == std::string_view(LogRenderer::levelText(one).data(), s_levelLength);
    });
    return level != severities.end() ? *level : levelOfFile(kind);
}

LogLevel::Level severity(LogLevel::Level level)
{
    return level > LogLevel::Critical ? LogLevel::Info : level;
}

QString levelName(LogLevel::Level level)
{
    return LogRenderer::levelToString(level).trimmed();
}

std::string_view eventKind(const LogEntry& entry)
{
    if (entry.kind != LogKind::Events || logTime(entry.text) == 0 ||
        entry.text.substr(s_timeLength, 2) != "| ")
        return {};
    const std::string_view rest = entry.text.substr(s_levelBegin);
    const size_t end = rest.find('|');
    return end == rest.npos ? std::string_view() : rest.substr(0, end);
}

std::string_view message(const LogEntry& entry)
{
    const std::string_view line = entry.text;
    if (logTime(line) == 0)
        return line;
    if (hasLevelText(line))
        return line.substr(s_levelEnd + 3);
    const std::string_view event = eventKind(entry);
    const std::string_view rest = line.substr(s_timeLength);
    if (!event.empty())
        return rest.substr(std::min(rest.size(), event.size() + 4)); // "| " event "| "
    constexpr std::string_view m4("| M4 | ");
    if (entry.kind == LogKind::M4 && rest.substr(0, m4.size()) == m4)
        return rest.substr(m4.size());
    return rest.substr(rest.substr(0, 1) == "|" ? 1 : 0);
}
