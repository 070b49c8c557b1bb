#include "declarativestatemachine/stronglyconnected_p.h"

#include <algorithm>

namespace zeltools::declarativestatemachine
{

namespace
{

// Tarjan's algorithm, with a list of visits in place of the calls.
class GroupFinder
{
public:
    explicit GroupFinder(const std::vector<std::vector<int>>& edges)
        : m_edges(edges)
        , m_nodes(edges.size())
    {
        for (size_t node = 0; node < edges.size(); ++node) {
            if (m_nodes[node].order == 0)
                visit(static_cast<int>(node));
        }
    }

    std::vector<std::vector<int>> groups;

private:
    struct Node
    {
        int order = 0;  // of the visit, from 1
        int lowest = 0; // the lowest order of an open node that is known to be reached
        size_t nextEdge = 0;
        bool isOpen = false;
    };

    Node& at(int node) { return m_nodes[size_t(node)]; }

    void open(int node)
    {
        at(node).order = at(node).lowest = ++m_visited;
        at(node).isOpen = true;
        m_open.push_back(node);
        m_visits.push_back(node);
    }

    void visit(int start)
    {
        open(start);
        while (!m_visits.empty()) {
            const int node = m_visits.back();
            if (at(node).nextEdge < m_edges[size_t(node)].size())
                follow(node, m_edges[size_t(node)][at(node).nextEdge++]);
            else
                leave(node);
        }
    }

    void follow(int node, int target)
    {
        if (at(target).order == 0)
            open(target);
        else if (at(target).isOpen)
            at(node).lowest = std::min(at(node).lowest, at(target).order);
    }

    void leave(int node)
    {
        m_visits.pop_back();
        if (!m_visits.empty()) {
            Node& before = at(m_visits.back());
            before.lowest = std::min(before.lowest, at(node).lowest);
        }
        if (at(node).lowest == at(node).order)
            close(node);
    }

    void close(int root)
    {
        const auto first = std::find(m_open.rbegin(), m_open.rend(), root).base() - 1;
        std::vector<int> group(first, m_open.end());
        m_open.erase(first, m_open.end());
        for (const int node : group)
            at(node).isOpen = false;
        const std::vector<int>& targets = m_edges[size_t(root)];
        if (group.size() > 1 || std::find(targets.begin(), targets.end(), root) != targets.end())
            groups.push_back(std::move(group));
    }

    const std::vector<std::vector<int>>& m_edges;
    std::vector<Node> m_nodes;
    int m_visited = 0;
    std::vector<int> m_open;   // nodes whose group is not yet known
    std::vector<int> m_visits; // the way to the node that is visited
};

} // namespace

std::vector<std::vector<int>> findConnectedGroups(const std::vector<std::vector<int>>& edges)
{
    return GroupFinder(edges).groups;
}

} // namespace zeltools::declarativestatemachine
