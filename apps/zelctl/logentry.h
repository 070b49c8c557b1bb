#pragma once

#include <zeltools/logging/loglevel.h>

#include <QString>
#include <QVector>

#include <array>
#include <string_view>

/// The five log files of a machine.
enum class LogKind { General, M4, Events, Grinder, Capsule };

/// A local time as the decimal number yyyyMMddhhmmsszzz, whose order is that of the times. 0 is no
/// time. A log file does not tell the zone of its times, so there is no conversion into UTC.
using LogTime = qint64;

/// A line of a log file without its line feed. A line without a time stamp continues the line
/// before it, and has its time and level.
struct LogEntry
{
    std::string_view text; ///< the bytes of the file
    LogTime time = 0;
    LogLevel::Level level = LogLevel::Info;
    LogKind kind = LogKind::General;
    const QString* path = nullptr;
};

struct LogKindProperties
{
    LogKind kind;
    QLatin1String name;    ///< on the command line
    QLatin1String file;    ///< the name of the live file
    LogLevel::Level level; ///< of the lines that name none
};
/// The kinds in the order of their values.
const QVector<LogKindProperties>& logKinds();

/// The time in "dd/MM/yyyy hh:mm:ss:zzz" at the start of the line; 0 if there is none, or one that
/// no clock shows.
LogTime logTime(std::string_view line);
/// "yyyy-MM-ddThh:mm:ss.zzz"; empty for no time.
QString isoTime(LogTime time);

/// The levels that lines of the general file name, least severe first.
constexpr std::array<LogLevel::Level, 6> severities{LogLevel::Debug, LogLevel::Info,
                                                    LogLevel::Event, LogLevel::Warning,
                                                    LogLevel::Error, LogLevel::Critical};
/// The level that the text of a line with a time stamp names. A line that names none has the level
/// that belongs to its file: Event, Grinder, Capsule or M4, and Info in the general file.
LogLevel::Level logLevel(std::string_view line, LogKind kind);
/// The place of a level in the order of severities: Grinder, Capsule and M4 count as Info.
LogLevel::Level severity(LogLevel::Level level);
/// "Debug", "Info" and so on.
QString levelName(LogLevel::Level level);

/// The kind of an event line, " MenuAccess" as "MenuAccess"; empty for another line.
std::string_view eventKind(const LogEntry& entry);
/// The text of a line behind its time, level and kind.
std::string_view message(const LogEntry& entry);
