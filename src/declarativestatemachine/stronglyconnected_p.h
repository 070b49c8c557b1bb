#pragma once

#include <vector>

namespace zeltools::declarativestatemachine
{

/// The groups of nodes of a directed graph that lie on common circles: from each node of a group
/// there is a way to each other one and back. A node on no circle is in no group. `edges` has the
/// targets of each node. The function is linear and not recursive.
std::vector<std::vector<int>> findConnectedGroups(const std::vector<std::vector<int>>& edges);

} // namespace zeltools::declarativestatemachine
