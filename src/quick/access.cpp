#include "quick/access.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "path.h"
#include "quick/displaytext_p.h"

namespace zeltools::quick
{

Access* Access::instance()
{
    static Access* const access = new Access;
    return access;
}

Access::Access() = default;
Access::~Access() = default;

void Access::setLevel(Level level)
{
    if (level < ReadOnly || level > Technician)
        level = ReadOnly;
    if (level == m_level)
        return;
    m_level = level;
    Q_EMIT levelChanged();
}

void Access::setUser(const QString& user)
{
    if (user == m_user)
        return;
    m_user = user;
    Q_EMIT userChanged();
}

QString Access::refusal(Level needed) const
{
    if (allows(needed) && Path::exists())
        return {};
    if (allows(needed)) // The log manager, which records the change, would end the program.
        return tr("This program has no folders for log files.");
    return needed == Operator ? tr("Only an operator may change this.")
                              : tr("Only a technician may change this.");
}

void Access::recordChange(const QString& text) const
{
    const QString user = m_user.isEmpty() ? QStringLiteral("unknown user") : m_user;
    QString line = QStringLiteral("Service: %1 (by %2)").arg(text, user);
    line = DisplayText(line, line.size()).text;
    line.replace(QLatin1Char('|'), QLatin1Char('/')); // It separates the fields of an event line.
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::ConfigurationEvent).noquote() << line;
}

} // namespace zeltools::quick
