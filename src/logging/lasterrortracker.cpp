#include "logging/lasterrortracker.h"

#include "logging/logformatter.h"

namespace zeltools
{

LastErrorTracker::LastErrorTracker(const LogModules& modules, QObject* parent)
    : QObject(parent)
    , m_modules(modules)
{
}

LastErrorTracker::~LastErrorTracker() = default;

void LastErrorTracker::setError(const QString& text)
{
    m_lastError = text;
    if (!text.isEmpty()) {
        LogFormatter(LogLevel::Warning).log(m_modules).noquote().nospace()
            << "Last error message updated into: " << text;
    }
}

} // namespace zeltools
