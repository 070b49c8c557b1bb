#pragma once

#include <zeltools/declarativestatemachine/signalutils.h>
#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <tuple>

namespace zeltools::declarativestatemachine
{

/// The key that transitions of one state share if the same event triggers them: the object and the
/// name of a signal, or only the type.
using TriggerKey = std::tuple<TransitionDescription::Type, QObject*, QString>;

inline TriggerKey signalKey(QObject* obj, const char* signal)
{
    return {TransitionDescription::Signal, obj, signalutils::classAndSignalName(obj, signal, true)};
}

inline TriggerKey triggerKey(const TransitionDescription& transition)
{
    return transition.type == TransitionDescription::Signal
               ? signalKey(transition.obj, transition.signal)
               : TriggerKey(transition.type, nullptr, QString());
}

/// A transition as a message names it, after its state.
inline QString targetText(const TransitionDescription& transition)
{
    return transition.isTargetless ? QStringLiteral("without a target")
                                   : QStringLiteral("to \"%1\"").arg(transition.targetState);
}

} // namespace zeltools::declarativestatemachine
