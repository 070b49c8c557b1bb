#include "logging/logrenderer.h"

#include "logging/logtimestamp.h"

#include <QStringList>

#include <array>

namespace
{

// The names in the order of the bits, from 0x0001. The files in the field have the doubled word.
constexpr std::array<const char*, 14> s_eventNames{
    QT_TRANSLATE_NOOP("QObject", "NONE"),
    QT_TRANSLATE_NOOP("QObject", "MenuAccess"),
    QT_TRANSLATE_NOOP("QObject", "MenuParameter"),
    QT_TRANSLATE_NOOP("QObject", "CleaningEvent"),
    QT_TRANSLATE_NOOP("QObject", "DispensedDrinkEvent"),
    QT_TRANSLATE_NOOP("QObject", "DatabaseError"),
    QT_TRANSLATE_NOOP("QObject", "CPUFanEvent"),
    QT_TRANSLATE_NOOP("QObject", "UpdateUpdateEvent"),
    QT_TRANSLATE_NOOP("QObject", "ConfigurationEvent"),
    QT_TRANSLATE_NOOP("QObject", "ApplicationStartEvent"),
    QT_TRANSLATE_NOOP("QObject", "IngredientLevel"),
    QT_TRANSLATE_NOOP("QObject", "WasteLevel"),
    QT_TRANSLATE_NOOP("QObject", "WarningEvent"),
    QT_TRANSLATE_NOOP("QObject", "EnergySavingEvent")};

} // namespace

QLatin1String LogRenderer::levelText(LogLevel::Level level)
{
    static constexpr std::array<const char*, 9> texts{"Debug   ", "Info    ", "Event   ",
                                                      "Warning ", "Error   ", "Critical",
                                                      "Grinder ", "Capsule",  "M4"};
    const auto index = static_cast<unsigned>(level);
    return index < texts.size() ? QLatin1String(texts[index]) : QLatin1String("");
}

QString LogRenderer::levelToString(LogLevel::Level level)
{
    return levelText(level);
}

QString LogRenderer::pattern(LogLevel::Level level)
{
    return formattedMessage(level, QString());
}

QString LogRenderer::formattedMessage(LogLevel::Level level, const QString& message)
{
    constexpr int longestPrefix = 40;
    QString line;
    line.reserve(longestPrefix + message.size());
    appendPattern(level, logTimestamp(), [&line](QLatin1String piece) { line += piece; });
    return line += message;
}

QString LogRenderer::eventToString(LogEventModule::EventModule event)
{
    if (event == LogEventModule::AllEvents)
        return QObject::tr("ALL");
    for (size_t i = 0; i < s_eventNames.size(); ++i) {
        if (event == 1U << i)
            return QObject::tr(s_eventNames[i]);
    }
    return QStringLiteral("Undefined");
}

QString LogRenderer::eventToString(LogEventModule::EventModules events)
{
    if (events == LogEventModule::AllEvents)
        return eventToString(LogEventModule::AllEvents);
    QStringList names;
    for (quint32 rest = static_cast<quint32>(int(events)); rest != 0; rest &= rest - 1) {
        const quint32 lowest = rest & ~(rest - 1);
        names.append(eventToString(static_cast<LogEventModule::EventModule>(lowest)));
    }
    return names.join(QLatin1Char(','));
}
