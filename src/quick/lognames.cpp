#include "quick/lognames_p.h"

#include "logging/loglevel.h"
#include "logging/logmodules.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVariantMap>

#include <array>

namespace zeltools::quick::lognames
{

namespace
{

constexpr std::array<const char*, 9> s_levels{
    QT_TRANSLATE_NOOP("LogLevels", "Debug"),         QT_TRANSLATE_NOOP("LogLevels", "Info"),
    QT_TRANSLATE_NOOP("LogLevels", "Event"),         QT_TRANSLATE_NOOP("LogLevels", "Warning"),
    QT_TRANSLATE_NOOP("LogLevels", "Error"),         QT_TRANSLATE_NOOP("LogLevels", "Critical"),
    QT_TRANSLATE_NOOP("LogLevels", "Grinder"),       QT_TRANSLATE_NOOP("LogLevels", "Capsule"),
    QT_TRANSLATE_NOOP("LogLevels", "Actuator board")};

} // namespace

QString level(int level)
{
    const auto index = size_t(level);
    return index < s_levels.size() ? QCoreApplication::translate("LogLevels", s_levels[index])
                                   : QString();
}

QVariantList levels()
{
    QVariantList list;
    for (int value = LogLevel::Debug; value <= int(LogLevel::Critical); ++value)
        list.append(
            QVariantMap{{QStringLiteral("value"), value}, {QStringLiteral("name"), level(value)}});
    return list;
}

QString modules(quint64 bits)
{
    QStringList names;
    for (const LogModule* module : LogModule::registeredModulesConst()) {
        if ((LogModules(*module).bits() & bits) != 0)
            names.append(module->name());
    }
    return names.join(QStringLiteral(", "));
}

} // namespace zeltools::quick::lognames
