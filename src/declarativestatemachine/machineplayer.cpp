#include "declarativestatemachine/machineplayer.h"

#include "declarativestatemachine/recordingplayer_p.h"

namespace zeltools::declarativestatemachine
{

namespace
{

StateMachineDescription preparedForPlayback(const StateMachineDescription& description,
                                            bool callsActions)
{
    StateMachineDescription prepared = description;
    std::vector<std::vector<StateDescription>*> open{&prepared.states};
    while (!open.empty()) {
        std::vector<StateDescription>& states = *open.back();
        open.pop_back();
        for (StateDescription& state : states) {
            open.push_back(&state.states);
            state.timeLimit = {};
            if (callsActions)
                continue;
            state.action = state.exitAction = {};
            for (TransitionDescription& transition : state.transitions) {
                transition.action = {};
                transition.argumentsAction = {};
            }
        }
    }
    return prepared;
}

} // namespace

QString playBack(const MachineRecording& recording, const StateMachineDescription& description,
                 Playback options, QStringList* log)
{
    return RecordingPlayer(recording, preparedForPlayback(description, options.callsActions),
                           options.usesOwnGuards, log)
        .play();
}

} // namespace zeltools::declarativestatemachine
