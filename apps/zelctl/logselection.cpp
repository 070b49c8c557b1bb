#include "logselection.h"

#include <QDateTime>

#include <algorithm>
#include <array>

namespace
{

/// Whether a part of the line between "|" is the field, as in the event history.
bool hasField(std::string_view line, std::string_view field)
{
    for (size_t at = line.find(field); at != line.npos; at = line.find(field, at + 1)) {
        const size_t end = at + field.size();
        if ((at == 0 || line[at - 1] == '|') && (end == line.size() || line[end] == '|'))
            return true;
    }
    return false;
}

} // namespace

bool LogSelection::accepts(const LogEntry& entry) const
{
    return severity(entry.level) >= level && entry.time >= from && entry.time <= to &&
           isWanted(entry);
}

bool LogSelection::isWanted(const LogEntry& entry) const
{
    if (kinds.empty() && eventFields.empty())
        return true;
    const auto isHere = [&entry](const std::string& field) { return hasField(entry.text, field); };
    return std::find(kinds.begin(), kinds.end(), entry.kind) != kinds.end() ||
           (entry.kind == LogKind::Events &&
            std::any_of(eventFields.begin(), eventFields.end(), isHere));
}

std::optional<LogTime> readLogTime(const QString& text, bool isEnd)
{
    struct Form
    {
        const char* format;
        const char* firstRest;
        const char* lastRest;
    };
    constexpr std::array<Form, 3> forms{{{"dd/MM/yyyy", "000000000", "235959999"},
                                         {"dd/MM/yyyy hh:mm", "00000", "59999"},
                                         {"dd/MM/yyyy hh:mm:ss", "000", "999"}}};
    for (const Form& form : forms) {
        // The time zone of this computer must not move the time, or skip it.
        const QDateTime time = QDateTime::fromString(
            text + QStringLiteral(" Z"), QString::fromLatin1(form.format) + QStringLiteral(" 'Z'"));
        const QString digits = QString(text).remove(QRegularExpression(QStringLiteral("\\D")));
        if (time.isValid() && digits.size() >= 8)
            return (digits.mid(4, 4) + digits.mid(2, 2) + digits.left(2) + digits.mid(8) +
                    QString::fromLatin1(isEnd ? form.lastRest : form.firstRest))
                .toLongLong();
    }
    return std::nullopt;
}
