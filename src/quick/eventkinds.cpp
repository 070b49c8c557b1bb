#include "quick/eventkinds_p.h"

#include "logging/logmanager.h"
#include "logging/logrenderer.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVariantMap>

#include <array>

namespace zeltools::quick::eventkinds
{

namespace
{

// In the order of the bits of LogEventModule, whose first one, for events without a kind, is the
// filter that accepts all.
constexpr std::array<const char*, 14> s_names{QT_TRANSLATE_NOOP("EventKinds", "Other"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Menu access"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Menu parameter"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Cleaning"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Dispensed drink"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Database error"),
                                              QT_TRANSLATE_NOOP("EventKinds", "CPU fan"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Update"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Configuration"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Application start"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Ingredient level"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Waste level"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Warning"),
                                              QT_TRANSLATE_NOOP("EventKinds", "Energy saving")};

QString translated(const char* name)
{
    return QCoreApplication::translate("EventKinds", name);
}

QString shownSingleName(const QString& nameInFile)
{
    for (size_t bit = 0; bit < s_names.size(); ++bit) {
        if (nameInFile == LogRenderer::eventToString(LogEventModule::EventModule(1U << bit)))
            return translated(s_names[bit]);
    }
    return nameInFile;
}

} // namespace

QVariantList filters()
{
    QVariantList list;
    for (int value = LogManager::AllEvent; value <= LogManager::WarningEventFilter; ++value) {
        const char* const name = value == LogManager::AllEvent
                                     ? QT_TRANSLATE_NOOP("EventKinds", "All events")
                                     : s_names[size_t(value)];
        list.append(QVariantMap{{QStringLiteral("value"), value},
                                {QStringLiteral("name"), translated(name)}});
    }
    return list;
}

bool isFilter(int value)
{
    return value >= LogManager::AllEvent && value <= LogManager::WarningEventFilter;
}

QString shownName(const QString& nameInFile)
{
    QStringList names = nameInFile.split(QLatin1Char(','));
    for (QString& name : names)
        name = shownSingleName(name);
    return names.join(QStringLiteral(", "));
}

} // namespace zeltools::quick::eventkinds
