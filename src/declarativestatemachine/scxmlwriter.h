#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

namespace zeltools::declarativestatemachine
{

/// Whether toScxml() writes attributes of the namespace `urn:zeltools:statemachine` for what the
/// standard cannot say: names that are not identifiers, time limits, and which default targets of
/// histories the description does not name. Other readers skip them.
enum class ScxmlExtensions : qint32 { Omitted, Written };

/// Returns the machine as a State Chart XML document of the W3C, for editors, simulators,
/// QScxmlStateMachine and fromScxml(). Characters that an identifier cannot have become "_", and
/// characters that XML cannot hold become U+FFFD.
///
/// A signal becomes the event "Class.signal", with "_" at its end for a second object of the class.
/// Guards become the conditions `guard1`, `guard2` and so on, which are true until the reader of
/// the document changes them. A timeout becomes an event with a delay, an entry that direct
/// transitions wait for becomes an internal event, and the description of a transition becomes its
/// log text. In the document, each timeout of a state triggers its own transition, also if none of
/// them has a guard; fromScxml() refuses that.
///
/// Left out are the actions, transitions that lead nowhere or start at a final state, children of
/// final states, and histories that have no state beside them or belong to the machine itself. A
/// final state among parallel ones becomes a state without transitions. The function calls no
/// action or guard of the description.
ZELTOOLS_EXPORT QString toScxml(const StateMachineDescription& description,
                                ScxmlExtensions extensions = ScxmlExtensions::Omitted);

} // namespace zeltools::declarativestatemachine
