#pragma once

#include "zeltools_export.h"

#include <QFlags>
#include <QMap>
#include <QObject>
#include <QString>

#include <atomic>
#include <optional>

namespace zeltools::envvar
{
Q_NAMESPACE_EXPORT(ZELTOOLS_EXPORT)

enum Type : int { Boolean = 0, String = 1, Integer = 2 };

/// "Boolean", "String" or "Integer"; "Boolean" for any other number.
ZELTOOLS_EXPORT QString typeToString(Type type);

/// What a variable belongs to, for display; the library only stores it. No variable uses 19.
enum Category {
    General = 0,
    Test = 1,
    CanBus = 2,
    Payment = 3,
    Watchdog = 4,
    Gui = 5,
    CupSensor = 6,
    I2c = 7,
    ErsProtocol = 8,
    RemoteServer = 9,
    Touchless = 10,
    VestaOne = 11,
    Android = 12,
    Miscellaneous = 13,
    PowerBoard = 14,
    Bluetooth = 15,
    Network = 16,
    DateTime = 17,
    Piston = 18,
    CapKeys = 20,
    SocketCan = 21
};
Q_ENUM_NS(Category)

/// The bits 2 and 4 are the application's own; the library only stores them.
enum Flag : int {
    Visible = 1 ///< to be shown to the user; see EnvVarStore::setVisibleIf()
};
Q_DECLARE_FLAGS(Flags, Flag)
Q_DECLARE_OPERATORS_FOR_FLAGS(Flags)

/// A named switch of the machine software. It can have a value from the build (a preprocessor
/// symbol of the same name) and one from the process environment, the environment file or set();
/// the latter wins. No value is not the same as an empty one.
///
/// Variables are objects that live to the end of the process, nearly always static; they register
/// themselves with EnvVarStore, which keeps the pointer until EnvVarStore::removeEnvVar().
///
/// Write from the main thread only. Meanwhile other threads may read Booleans and integers through
/// operator(); everything else they may read while nobody writes.
class ZELTOOLS_EXPORT EnvVar : public QObject
{
    Q_OBJECT

public:
    /// Where a value comes from.
    enum ValueType {
        Defines = 0, ///< from the build
        Env = 1      ///< from the environment, the environment file or set()
    };

    /// Both texts are Latin-1. Throws std::invalid_argument when the store has a variable of that
    /// name. Reads no value: derived constructors end with readOrUnregister().
    ///
    /// `type` is what that exception calls the new variable, since type() cannot answer yet.
    EnvVar(const char* name, const char* description, Category category, Flags flags,
           Type type = Boolean);
    ~EnvVar() override;

    virtual Type type() const = 0;
    /// Whether the text can be a value of this variable.
    virtual bool isStringValueValid(const QString& value) const = 0;

    const QString& name() const { return m_name; }
    const QString& description() const { return m_description; }
    Category category() const { return m_category; }
    Flags flags() const { return m_flags; }

    /// Emits changed() in any case.
    void setFlag(Flag flag, bool on);

    /// The value from that source, if there is one.
    std::optional<QString> stringValueOpt(ValueType source) const;
    /// The value in force: that from the environment, else that from the build.
    std::optional<QString> stringValueOpt() const;
    /// Sets or removes the value from that source, and emits changed() in any case. Throws
    /// std::invalid_argument, changing nothing, when isStringValueValid() refuses the value:
    /// `Invalid value yes for variable CANBUS_SIMULATION`.
    void setStringValueOpt(ValueType source, std::optional<QString> value);

    /// Reads both sources anew: the text of the build's symbol (Latin-1, may be null) and the
    /// process environment (UTF-8). A text equal to the name counts as no value, since that is what
    /// a symbol that is not defined turns into. Throws as setStringValueOpt().
    void update(const char* definedValue);

    /// A line for listings: the name, padded to the width in characters, where the value comes
    /// from, and the value. `"CANBUS_SIMULATION    (set from env)    : 1"` for a width of 20.
    QString toString(int nameWidth) const;

Q_SIGNALS:
    /// A value or the flags were set, perhaps to what they were. Emitted in the writer's thread.
    void changed();

protected:
    /// update(), for the end of a constructor: when it throws, the object, which will never exist,
    /// leaves the store.
    void readOrUnregister(const char* definedValue);

    /// The value in force as a number, 0 when there is none or it is not one. Takes about as long
    /// as reading an int; may be called from any thread.
    int number() const { return m_number.load(std::memory_order_relaxed); }

private:
    const QString m_name;
    const QString m_description;
    const Category m_category;
    Flags m_flags;
    QMap<ValueType, QString> m_values;
    std::atomic<int> m_number{0};
};

} // namespace zeltools::envvar
