#pragma once

#include <zeltools/logging/logmodule.h>

#include <QMetaType>
#include <QSet>
#include <QStringList>

/// A set of log modules, kept by id. A plain value: copies are cheap and safe to hand to another
/// thread, one instance is not to be written from two.
class ZELTOOLS_EXPORT LogModules
{
public:
    LogModules() = default;
    // Not explicit: log(level, Log::Payment, text) reads as it is meant.
    LogModules(const LogModule& module) { add(module); }

    void add(const LogModule& module);
    void remove(const LogModule& module);

    /// A copy of this set with the module added; this set stays as it is.
    LogModules operator|(const LogModule& module);

    bool contains(const LogModule& module) const;
    /// False when the other set is empty.
    bool containsOneOf(const LogModules& other) const;
    /// True when the set holds this module and no other.
    bool operator==(const LogModule& module) const;

    /// The debug variables of all registered modules that have one, in the order of registration.
    static QStringList getEnvVars();
    /// Adds and removes modules as the process environment says: `ZEL_DEBUG_ALL=1` adds every
    /// module that has a variable and nothing else is read; otherwise `ZEL_DEBUG_<NAME>` adds with
    /// "1" and removes with "0". Any other value changes nothing. Returns the names of the modules
    /// that were added, in the order of registration.
    QStringList updateFromEnvVars();

private:
    friend class DebugModules;

    // The first ids, all predefined modules among them, are bits of one word: a set of them is
    // built, copied and tested without memory from the heap on every log line.
    static constexpr quint32 s_bitCount = 64;
    quint64 m_bits = 0;
    QSet<quint32> m_others;
};

namespace Log
{
using Modules = LogModules;
}

Q_DECLARE_METATYPE(LogModules)
