#pragma once

#include <zeltools/logging/logmodules.h>

#include <atomic>

class DebugModules;
class LogNode;

namespace zeltools
{

/// Decides whether a Debug line is off: only the log manager would receive it, and it would not
/// print it. LogFormatter asks before it collects any text, so the answer takes a few instructions
/// and no call. DebugModules and LogNode keep it up to date. Any thread may ask.
class ZELTOOLS_EXPORT DebugSwitch
{
public:
    /// False also if only LogNode::isHeard() knows the answer: after a change of the receivers of
    /// LogNode::logged(), and for a module whose id is above 63.
    static bool isOff(const LogModule& module)
    {
        return module.id() < LogModules::s_bitCount && isOff(quint64(1) << module.id());
    }
    static bool isOff(const LogModules& modules)
    {
        return isOff(modules.m_bits) && modules.m_others.isEmpty();
    }

private:
    friend class ::DebugModules;
    friend class ::LogNode;

    // The receivers of LogNode::logged(), in one word. The low two bits are a state, and the bits
    // above them count the changes of connections:
    //
    //     Unknown  --- LogNode counts the receivers --->  OnlyManager or Others
    //        ^                                                      |
    //        +---------- a connection has changed, count + 1 -------+
    //
    // LogNode only stores its answer if the word is still the one from before it counted the
    // receivers. The count makes sure of that, since the state alone may be Unknown again.
    enum Audience : quint64 {
        Unknown = 0,
        OnlyManager = 1,
        Others = 2,
        AudienceMask = 3,
        AudienceChange = 4
    };

    static bool isOff(quint64 moduleBits)
    {
        return (s_audience.load(std::memory_order_relaxed) & AudienceMask) == OnlyManager &&
               (s_moduleBits.load(std::memory_order_relaxed) & moduleBits) == 0;
    }

    static std::atomic<quint64> s_audience;
    static std::atomic<quint64> s_moduleBits; // of DebugModules
};

} // namespace zeltools
