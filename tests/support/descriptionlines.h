#pragma once

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/signalutils.h"

#include <QStringList>

namespace support
{

/// One line for each state and each transition, with all that a description says of it as data.
inline QStringList
linesOf(const zeltools::declarativestatemachine::StateMachineDescription& description)
{
    const zeltools::declarativestatemachine::DescriptionIndex index(description);
    QStringList lines(description.name);
    size_t next = 0;
    for (const auto& state : index.states()) {
        const int kind = state.isFinal ? state.description->Final : state.description->kind;
        lines.append(QStringLiteral("%1 in %2, kind %3, limit %4")
                         .arg(state.description->name)
                         .arg(state.parent)
                         .arg(kind)
                         .arg(state.description->timeLimit.count()));
        for (const auto& transition : state.description->transitions) {
            lines.append(QStringLiteral("  %1 to %2 (%3), type %4 %5, %6 ms, label %7, guard %8")
                             .arg(transition.isTargetless ? QString() : transition.targetState)
                             .arg(index.transitions()[next++].target)
                             .arg(transition.isTargetless)
                             .arg(transition.type)
                             .arg(zeltools::signalutils::classAndSignalName(
                                 transition.obj, transition.signal, true))
                             .arg(transition.timeout.count())
                             .arg(transition.description)
                             .arg(transition.hasGuard()));
        }
    }
    return lines;
}

} // namespace support
