#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace dmesg
{

/// One record of the kernel log in the form of /dev/kmsg, which the kernel's document
/// ABI/testing/dev-kmsg describes:
///
///     6,339,5140900,-;NET: Registered protocol family 10
///      SUBSYSTEM=net
///
/// The numbers are the priority (eight times the facility plus the level), the sequence number and
/// the microseconds since the start of the kernel. Lines with a leading blank add fields.
struct ZELTOOLS_EXPORT KmsgRecord
{
    /// The severity. A smaller number is more severe.
    enum Level {
        Emergency = 0,
        Alert = 1,
        Critical = 2,
        Error = 3,
        Warning = 4,
        Notice = 5,
        Info = 6,
        Debug = 7
    };

    Level level = Emergency; ///< The severity of syslog(3).
    quint32 facility = 0;    ///< The number of syslog(3); 0 is the kernel itself.
    /// The number of the record. It grows by 1 from record to record of one boot, so that a gap
    /// means lost records.
    quint64 sequence = 0;
    /// The monotonic clock of the kernel, which stops while the machine sleeps.
    std::chrono::microseconds sinceBoot{0};
    /// The time since 1970 in UTC. KmsgReader calculates it; parse() leaves it at 0.
    std::chrono::milliseconds time{0};
    /// How many records directly before this one were overwritten before KmsgReader could read
    /// them.
    quint64 overwritten = 0;
    QByteArray text; ///< Any bytes, usually UTF-8; may contain line feeds.
    /// The continuation lines `KEY=value`, such as SUBSYSTEM and DEVICE.
    QMap<QByteArray, QByteArray> fields;

    /// Reads one record, without or with its last line feed. An escape sequence such as "\x09" is
    /// decoded to the byte. Values before the semicolon that later kernels add, and lines after the
    /// first that are not a field, are skipped. Any other form has no result.
    static std::optional<KmsgRecord> parse(const QByteArray& record);

    /// The text as dmesg(1) prints it: control characters other than white space, and bytes that
    /// are not UTF-8, have the form "\x1b".
    QString printableText() const;
    /// The lines that `dmesg --ctime` prints for the record, without white space at both ends. A
    /// line feed in the text begins another line, which has no time. A record without text is an
    /// empty line.
    QStringList lines() const;

    /// The names that dmesg(1) uses: "emerg", "alert", "crit", "err", "warn", "notice", "info",
    /// "debug".
    static QString levelName(Level level);
    /// "kern", "user", "daemon" and so on, or the number of a facility that has no name.
    static QString facilityName(quint32 facility);
};

} // namespace dmesg
