#pragma once

#include <zeltools/logging/logmodule.h>

#include <QMetaType>
#include <QSet>
#include <QStringList>

namespace zeltools
{
class DebugSwitch;
}

/// A set of log modules, stored by id. The class is a plain value: copies are cheap and may be
/// passed to other threads, but two threads must not write to the same instance.
class ZELTOOLS_EXPORT LogModules
{
public:
    LogModules() = default;
    // The constructor is not explicit so that log(level, Log::Payment, text) works.
    /// The set that has only this module.
    LogModules(const LogModule& module)
        : m_bits(module.id() < s_bitCount ? quint64(1) << module.id() : 0)
    {
        if (m_bits == 0)
            add(module);
    }

    /// Adds a module; it may be in the set already.
    void add(const LogModule& module);
    /// Removes a module, which need not be in the set.
    void remove(const LogModule& module);

    /// A copy of this set with the module added; this set does not change.
    LogModules operator|(const LogModule& module);

    /// Whether the module is in the set.
    bool contains(const LogModule& module) const;
    /// False when the other set is empty.
    bool containsOneOf(const LogModules& other) const;
    /// True when the set holds this module and no other.
    bool operator==(const LogModule& module) const;
    bool operator==(const LogModules& other) const
    {
        return m_bits == other.m_bits && m_others == other.m_others;
    }

    /// The modules with an id below 64, which include all predefined ones, as bits by their id.
    quint64 bits() const { return m_bits; }
    /// The set of the predefined and other modules whose bits are set, the reverse of bits().
    static LogModules fromBits(quint64 bits);

    /// The debug variables of all registered modules that have one, in the order of registration.
    static QStringList getEnvVars();
    /// Adds and removes modules according to the process environment. `ZEL_DEBUG_ALL=1` adds every
    /// module that has a variable, and no other variable is read. Otherwise `ZEL_DEBUG_<NAME>` adds
    /// its module if it is "1" and removes it if it is "0"; any other value changes nothing.
    /// Returns the names of the added modules in the order of registration.
    QStringList updateFromEnvVars();

private:
    friend class DebugModules;
    friend class zeltools::DebugSwitch;

    // The first ids, which include all predefined modules, are bits of one word, so that a log
    // line builds, copies and tests a set of them without heap memory.
    static constexpr quint32 s_bitCount = 64;
    quint64 m_bits = 0;
    QSet<quint32> m_others;
};

namespace Log
{
/// The name of the set in signals: the library registers it as the meta-type "Log::Modules".
using Modules = LogModules;
} // namespace Log

Q_DECLARE_METATYPE(LogModules)
