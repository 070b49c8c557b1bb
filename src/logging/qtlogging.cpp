#include "logging/qtlogging_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QLoggingCategory>

#include <algorithm>
#include <array>

namespace
{

bool isIrrelevant(const QString& warning)
{
    static constexpr std::array<const char*, 5> beginnings{
        "QFont::setPointSizeF", "Warning: distance-field glyph is not available",
        "DirectShowPlayerService", "Both point size and pixel size set.",
        "libpng warning: iCCP: known incorrect sRGB"};
    return std::any_of(beginnings.begin(), beginnings.end(), [&](const char* beginning) {
        return warning.startsWith(QLatin1String(beginning));
    });
}

} // namespace

std::optional<LogLevel::Level> qtMessageLevel(QtMsgType type, const QString& message)
{
    switch (type) {
    case QtDebugMsg:
        return LogLevel::Debug;
    case QtInfoMsg:
        return LogLevel::Info;
    case QtWarningMsg:
        if (isIrrelevant(message))
            return std::nullopt;
        return LogLevel::Warning;
    case QtCriticalMsg:
    case QtFatalMsg:
        return LogLevel::Critical;
    default:
        return std::nullopt;
    }
}

void QtCategoryRules::add(const QStringList& categories, bool enable)
{
    for (const QString& category : categories)
        m_rules[category] = enable;
    QStringList texts;
    for (auto rule = m_rules.cbegin(); rule != m_rules.cend(); ++rule)
        texts.append(rule.key() +
                     (rule.value() ? QLatin1String("=true") : QLatin1String("=false")));
    LogFormatter(LogLevel::Info).log(Log::Global)
        << "Applying filter rules:" << texts.join(QLatin1Char(','));
    QLoggingCategory::setFilterRules(texts.join(QLatin1Char('\n')));
}
