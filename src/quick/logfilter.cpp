#include "quick/logfilter_p.h"

#include "logging/logmodules.h"

namespace zeltools::quick
{

namespace
{

// Lines for the files of grinders, capsules and boards have no severity, and rank as Info.
LogLevel::Level rank(LogLevel::Level level)
{
    return level > LogLevel::Critical ? LogLevel::Info : level;
}

} // namespace

void LogFilter::setModule(const QString& name)
{
    m_module = name;
    m_moduleBits = 0;
    for (const LogModule* module : LogModule::registeredModulesConst()) {
        if (module->name() == name)
            m_moduleBits |= LogModules(*module).bits();
    }
}

void LogFilter::setText(const QString& text)
{
    m_text = text;
    m_matcher = QStringMatcher(text, Qt::CaseInsensitive);
}

bool LogFilter::accepts(const KeptLine& line) const
{
    return rank(line.level) >= m_level &&
           (m_module.isEmpty() || (line.modules & m_moduleBits) != 0) &&
           (m_text.isEmpty() || m_matcher.indexIn(line.text) >= 0);
}

} // namespace zeltools::quick
