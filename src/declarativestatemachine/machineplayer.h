#pragma once

#include <zeltools/declarativestatemachine/machinerecording.h>
#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QStringList>

namespace zeltools::declarativestatemachine
{

/// The settings of playBack(): how much of the description takes part.
struct Playback
{
    /// Calls the guards of the description and compares their answers with the recording. Without
    /// it, the recording answers and no guard is called. Arguments that the recording does not keep
    /// are invalid values.
    bool usesOwnGuards = false;
    /// Calls the actions of the description.
    bool callsActions = false;
};

/// Takes a machine of this description through the recording, and compares each guard, state and
/// transition. Returns an empty text if the machine goes the same way, and otherwise the first
/// difference with the number of its entry, from 1. The log gets a line for each thing that the
/// machine did: `left "Filling"`, as in the text of a recording.
///
/// Signals and timeouts come from the recording, without waiting; signals that the objects of the
/// description emit and time limits have no effect. A transition is the same if its state, its
/// number and what it waits for are the same. The class of the object that emits a signal and the
/// length of a timeout do not count, so that a test may use others.
///
/// The function runs no event loop. A recording that has lost entries is played from the states
/// that were active at its first entry, but without the states that its histories remembered, which
/// may show as a difference.
ZELTOOLS_EXPORT QString playBack(const MachineRecording& recording,
                                 const StateMachineDescription& description, Playback options = {},
                                 QStringList* log = nullptr);

} // namespace zeltools::declarativestatemachine
