#pragma once

#include "logging/eventhistory.h"

#include <QDate>

#include <string>
#include <string_view>

/// Tells whether a line of an event file belongs to a selection.
class EventMatcher
{
public:
    explicit EventMatcher(const EventSelection& selection);

    bool operator()(std::string_view line)
    {
        return (!m_hasDates || isInRange(line)) && (m_field.empty() || hasField(line));
    }

private:
    bool isInRange(std::string_view line);
    bool hasField(std::string_view line) const;

    bool m_hasDates;
    std::string m_field;
    QDate m_start;
    QDate m_stop;
    std::string m_lastText;
    bool m_isLastInRange = false;
};
