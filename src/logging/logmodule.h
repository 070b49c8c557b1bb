#pragma once

#include <zeltools/zeltools_export.h>

#include <QHash>
#include <QString>
#include <QVector>

class LogModules;

/// A named area of the machine software ("Payment", "CanBus") whose debug lines can be switched on
/// separately. logging/log.h has the predefined modules; an application constructs its own.
/// Identity, equality, order and hash depend on the id alone.
///
/// The registry of modules is not locked: construct modules during static initialization, or at
/// least before other threads log.
class ZELTOOLS_EXPORT LogModule
{
public:
    /// Registers this object; its id is the number of modules registered before it. A module that
    /// is destroyed leaves the registry, so ids are unique only among modules that live to the end.
    LogModule(const QString& name, bool hasEnvVar);
    /// Copies id and name. The copy is not registered, and hasEnvVar() of the copy is always true.
    LogModule(const LogModule& other);
    LogModule& operator=(const LogModule&) = delete;
    /// Removes this object from the registry.
    ~LogModule();

    /// All registered modules, in the order of their construction.
    static const QVector<LogModule*>& registeredModulesConst();

    /// The identity of the module, see the constructor.
    quint32 id() const { return m_id; }
    /// The name in log lines, "CanBus" for example.
    const QString& name() const { return m_name; }
    /// Whether an environment variable switches the debug lines, see debugEnvVarName().
    bool hasEnvVar() const { return m_hasEnvVar; }

    /// The environment variable that switches debug output: `"CanBus"` gives `ZEL_DEBUG_CANBUS`.
    /// Empty if the module has none.
    QString debugEnvVarName() const;

    bool operator==(const LogModule& other) const { return m_id == other.m_id; }
    bool operator<(const LogModule& other) const { return m_id < other.m_id; }
    /// The set of this module and the other.
    LogModules operator|(const LogModule& other) const;

private:
    quint32 m_id;
    QString m_name;
    bool m_hasEnvVar;
};

inline uint qHash(const LogModule& module, uint seed = 0)
{
    return qHash(module.id(), seed);
}
