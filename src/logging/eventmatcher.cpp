#include "logging/eventmatcher_p.h"

namespace
{

int parseDigits(std::string_view digits)
{
    int value = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9')
            return -1;
        value = value * 10 + (digit - '0');
    }
    return value;
}

// The "dd/MM/yyyy" at the start of the line, or an invalid date.
QDate dateOf(std::string_view line)
{
    if (line.size() < 10 || line[2] != '/' || line[5] != '/')
        return QDate();
    const int day = parseDigits(line.substr(0, 2));
    const int month = parseDigits(line.substr(3, 2));
    const int year = parseDigits(line.substr(6, 4));
    return QDate::isValid(year, month, day) ? QDate(year, month, day) : QDate();
}

} // namespace

EventMatcher::EventMatcher(const EventSelection& selection)
    : m_hasDates(!selection.startDate.isEmpty() && !selection.stopDate.isEmpty())
{
    if (!selection.kind.isEmpty())
        m_field = ' ' + selection.kind.toStdString();
    const QString format = QStringLiteral("dd/MM/yyyy");
    m_start = QDate::fromString(selection.startDate, format);
    m_stop = QDate::fromString(selection.stopDate, format);
}

// The last date is kept, since neighbouring lines mostly have the same one.
bool EventMatcher::isInRange(std::string_view line)
{
    const std::string_view text = line.substr(0, 10);
    if (text != m_lastText || m_lastText.empty()) {
        const QDate date = dateOf(line);
        m_lastText.assign(text.begin(), text.end());
        m_isLastInRange = m_start <= date && date <= m_stop;
    }
    return m_isLastInRange;
}

// A field of the line lies between "|", or between "|" and an end of the line.
bool EventMatcher::hasField(std::string_view line) const
{
    for (size_t at = line.find(m_field); at != line.npos; at = line.find(m_field, at + 1)) {
        const size_t after = at + m_field.size();
        if ((at == 0 || line[at - 1] == '|') && (after == line.size() || line[after] == '|'))
            return true;
    }
    return false;
}
