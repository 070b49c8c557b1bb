#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>
#include <zeltools/zeltools_export.h>

#include <QString>

class QObject;
class StateMachine;

namespace zeltools::declarativestatemachine
{
class DeclarativeStateMachine;
}

namespace zeltools::quick
{

/// The state machines that the host offers for viewing on the screen, in the order in which it
/// offers them. A machine that nobody looks at is neither followed nor slowed down.
///
/// Machines must live in the thread of the QML engine, from which the functions are called; a
/// machine of another thread is refused with a Warning. A machine that is destroyed is withdrawn.
class ZELTOOLS_EXPORT ViewedMachines
{
public:
    /// Offers a machine with its picture. The description must be that of the machine. Only names
    /// and structure are copied: about 200 bytes for each state and each transition. A machine that
    /// is offered again has the new name and description.
    static void offer(const QString& name,
                      declarativestatemachine::DeclarativeStateMachine* machine,
                      const declarativestatemachine::StateMachineDescription& description);
    /// Offers a machine that has no picture, only a present state and its last changes.
    static void offer(const QString& name, StateMachine* machine);
    /// Does nothing for a machine that is not offered.
    static void withdraw(QObject* machine);
};

} // namespace zeltools::quick
