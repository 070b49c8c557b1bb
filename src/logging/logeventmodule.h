#pragma once

#include <zeltools/zeltools_export.h>

#include <QFlags>
#include <QObject>

/// The kinds of events in the event history, whose names QML can use.
class ZELTOOLS_EXPORT LogEventModule : public QObject
{
    Q_OBJECT

public:
    /// The kinds, one bit each. The files have the same names, except that NoneEvent is
    /// "NONE" and UpdateEvent is "UpdateUpdateEvent".
    enum EventModule : quint32 {
        NoneEvent = 0x0001,
        MenuAccess = 0x0002,
        MenuParameter = 0x0004,
        CleaningEvent = 0x0008,
        DispensedDrinkEvent = 0x0010,
        DatabaseError = 0x0020,
        CPUFanEvent = 0x0040,
        UpdateEvent = 0x0080,
        ConfigurationEvent = 0x0100,
        ApplicationStartEvent = 0x0200,
        IngredientLevel = 0x0400,
        WasteLevel = 0x0800,
        WarningEvent = 0x1000,
        EnergySavingEvent = 0x2000,
        AllEvents = 0xFFFE ///< Every bit but NoneEvent, including bits without a kind.
    };
    Q_ENUM(EventModule)
    Q_DECLARE_FLAGS(EventModules, EventModule)

    ~LogEventModule() override;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(LogEventModule::EventModules)
