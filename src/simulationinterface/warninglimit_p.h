#pragma once

#include <QObject>

namespace zeltools::simulationinterface
{

/// Limits the Warnings that others can cause to ten a minute. At the end of such a minute, or of
/// the object, one more Warning reports the number of the others.
class WarningLimit : public QObject
{
public:
    /// `cause` begins the last Warning: "CAUSE caused 15 more warnings". It must outlive the
    /// object.
    WarningLimit(const char* cause, QObject* parent);
    ~WarningLimit() override;

    /// Counts a Warning and returns whether it may be logged.
    bool mayWarn();

private:
    void endMinute();

    const char* const m_cause;
    int m_count = 0; // in the minute that began with the first of them
};

} // namespace zeltools::simulationinterface
