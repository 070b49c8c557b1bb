#pragma once

namespace zeltools::declarativestatemachine
{

/// Whether a transition can leave the parent of the history to which it leads. The machine looks up
/// a history before it leaves states, so that such a transition does not lead to the states which
/// are active when it fires, but to those which were active when the parent was left before.
///
/// `States` has the functions parentOf(state), which returns -1 for none, contains(outer, inner)
/// and isParallel(state).
template <typename States>
bool leavesParentOfHistory(const States& states, int source, int history)
{
    int common = states.parentOf(history);
    while (common >= 0 && !states.contains(common, source))
        common = states.parentOf(common);
    return common >= 0 && (common == source || states.isParallel(common));
}

} // namespace zeltools::declarativestatemachine
