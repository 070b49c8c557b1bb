#pragma once

#include <zeltools/zeltools_export.h>

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

/// The group of a variable for display, which the library only stores. No variable uses 19.
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

/// The flags of a variable. The bits 2 and 4 belong to the application; the library only stores
/// them.
enum Flag : int {
    Visible = 1 ///< The variable is shown to the user; see EnvVarStore::setVisibleIf().
};
Q_DECLARE_FLAGS(Flags, Flag)
Q_DECLARE_OPERATORS_FOR_FLAGS(Flags)

/// A named switch of the machine software. It can have a value from the build (a preprocessor
/// symbol of the same name) and a value from the process environment, the environment file or
/// set(), which takes precedence. An empty value is not the same as no value.
///
/// Variables live until the process ends and are nearly always static. They register themselves
/// with EnvVarStore, which keeps the pointer until EnvVarStore::removeEnvVar().
///
/// Only the main thread may write. At the same time other threads may read Booleans and integers
/// through operator(); they may use all other functions only while no thread writes.
class ZELTOOLS_EXPORT EnvVar : public QObject
{
    Q_OBJECT

public:
    /// The source of a value.
    enum ValueType {
        Defines = 0, ///< The value comes from the build.
        Env = 1      ///< It comes from the environment, the environment file or set().
    };

    /// Registers the variable; both texts are Latin-1. Throws std::invalid_argument if the store
    /// has a variable of that name. It reads no value: derived constructors end with
    /// readOrUnregister().
    ///
    /// `type` is the type in the text of that exception, since type() cannot be called yet.
    EnvVar(const char* name, const char* description, Category category, Flags flags,
           Type type = Boolean);
    ~EnvVar() override;

    /// The kind of values.
    virtual Type type() const = 0;
    /// Whether the text can be a value of this variable.
    virtual bool isStringValueValid(const QString& value) const = 0;

    /// The name in the environment and in the file.
    const QString& name() const { return m_name; }
    /// The effect of the switch, in English, for the people who set it.
    const QString& description() const { return m_description; }
    /// The group in which screens and programs show the variable.
    Category category() const { return m_category; }
    /// The properties of the variable, see Flag.
    Flags flags() const { return m_flags; }

    /// Sets or clears a flag, and always emits changed().
    void setFlag(Flag flag, bool on);

    /// The value from that source, if there is one.
    std::optional<QString> stringValueOpt(ValueType source) const;
    /// The effective value: the one from the environment, otherwise the one from the build.
    std::optional<QString> stringValueOpt() const;
    /// Sets or removes the value from that source, and always emits changed(). If
    /// isStringValueValid() refuses the value, it changes nothing and throws std::invalid_argument:
    /// `Invalid value yes for variable CANBUS_SIMULATION`.
    void setStringValueOpt(ValueType source, std::optional<QString> value);

    /// Reads both sources again: the text of the build's symbol (Latin-1, may be null) and the
    /// process environment (UTF-8). A text equal to the name counts as no value, since an undefined
    /// symbol expands to its own name. Throws like setStringValueOpt().
    void update(const char* definedValue);

    /// A line for listings: the name padded to the width in characters, the source of the value,
    /// and the value. A width of 20 gives `"CANBUS_SIMULATION    (set from env)    : 1"`.
    QString toString(int nameWidth) const;

Q_SIGNALS:
    /// Announces that a value or the flags were set, even if they did not change. Emitted in the
    /// thread of the writer.
    void changed();

protected:
    /// Calls update() at the end of a constructor. If update() throws, the incomplete object is
    /// removed from the store.
    void readOrUnregister(const char* definedValue);

    /// The effective value as a number; 0 if there is none or it is not a number. The call is about
    /// as fast as reading an int, and any thread may make it.
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
