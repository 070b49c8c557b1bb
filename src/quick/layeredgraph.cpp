#include "quick/layeredgraph_p.h"

#include "quick/roworder_p.h"

#include <algorithm>

namespace zeltools::quick
{

namespace
{

bool isInFirstRow(const LayeredItem& item)
{
    return item.place == LayeredItem::FirstRow;
}

} // namespace

LayeredGraph::LayeredGraph(const std::vector<LayeredItem>& items,
                           const std::vector<LayeredEdge>& edges, int columns)
    : m_items(items)
    , m_edges(edges)
{
    makeRanks(columns);
    qint64 count = qint64(items.size());
    for (const LayeredEdge& edge : edges)
        count += m_ranks[size_t(edge.lower)] - m_ranks[size_t(edge.upper)] - 1;
    m_isTooLarge = count > maximumCells;
    if (m_isTooLarge)
        return;
    makeCells();
    m_rows = RowOrder(m_cells, m_links, int(items.size())).rows();
    spreadLinks();
}

// Places each item in the highest row that its edges allow.
void LayeredGraph::makeRanks(int columns)
{
    const bool hasFirstRow = std::any_of(m_items.begin(), m_items.end(), isInFirstRow);
    for (const LayeredItem& item : m_items)
        m_ranks.push_back(hasFirstRow && !isInFirstRow(item) ? 2 : 0);
    std::vector<std::vector<int>> lowerItems(m_items.size());
    for (const LayeredEdge& edge : m_edges)
        lowerItems[size_t(edge.upper)].push_back(edge.lower);
    for (size_t i = 0; i < m_items.size(); ++i) {
        for (int lower : lowerItems[i])
            m_ranks[size_t(lower)] = std::max(m_ranks[size_t(lower)], m_ranks[i] + 2);
    }
    raiseSources(lowerItems);
    placeLooseItems(columns);
    placeLastRow();
}

// An item to which nothing leads is directly above the first one to which it leads.
void LayeredGraph::raiseSources(const std::vector<std::vector<int>>& lowerItems)
{
    std::vector<bool> hasUpper(m_items.size());
    for (const LayeredEdge& edge : m_edges)
        hasUpper[size_t(edge.lower)] = true;
    for (size_t i = m_items.size(); i-- > 0;) {
        if (hasUpper[i] || lowerItems[i].empty() || m_items[i].place != LayeredItem::AnyRow)
            continue;
        int next = m_ranks[size_t(lowerItems[i].front())];
        for (int lower : lowerItems[i])
            next = std::min(next, m_ranks[size_t(lower)]);
        m_ranks[i] = next - 2;
    }
}

void LayeredGraph::placeLooseItems(int columns)
{
    std::vector<bool> hasEdge(m_items.size());
    for (const LayeredEdge& edge : m_edges) {
        hasEdge[size_t(edge.upper)] = true;
        hasEdge[size_t(edge.lower)] = true;
    }
    int loose = 0;
    for (size_t i = 0; i < m_items.size(); ++i) {
        if (!hasEdge[i] && m_items[i].place == LayeredItem::AnyRow)
            m_ranks[i] += 2 * (loose++ / columns);
    }
}

void LayeredGraph::placeLastRow()
{
    int last = 0;
    for (size_t i = 0; i < m_items.size(); ++i)
        last = std::max(last, m_ranks[i] + (m_items[i].place == LayeredItem::LastRow ? 0 : 2));
    for (size_t i = 0; i < m_items.size(); ++i) {
        if (m_items[i].place == LayeredItem::LastRow)
            m_ranks[i] = last;
    }
}

void LayeredGraph::makeCells()
{
    for (size_t i = 0; i < m_items.size(); ++i) {
        const LayeredItem& item = m_items[i];
        m_cells.push_back({static_cast<int>(i),
                           m_ranks[i],
                           item.before,
                           item.after,
                           item.depth,
                           false,
                           0,
                           {},
                           {}});
    }
    for (const LayeredEdge& edge : m_edges)
        addPath(edge);
}

void LayeredGraph::addPath(const LayeredEdge& edge)
{
    const int first = m_ranks[size_t(edge.upper)] + 1;
    const int end = m_ranks[size_t(edge.lower)];
    const int labelRow = edge.isLabelAtLower ? end - 1 : first;
    std::vector<int> path{edge.upper};
    for (int row = first; row < end; ++row) {
        Cell cell;
        cell.row = row;
        if (row == labelRow && !edge.label.isEmpty()) {
            cell.before = edge.label.width() / 2;
            cell.after = cell.before;
            cell.depth = edge.label.height();
            cell.isLabel = true;
        }
        path.push_back(static_cast<int>(m_cells.size()));
        m_cells.push_back(cell);
    }
    path.push_back(edge.lower);
    m_firstLinks.push_back(static_cast<int>(m_links.size()));
    for (size_t i = 1; i < path.size(); ++i)
        addLink(edge, path[i - 1], path[i]);
    m_paths.push_back(std::move(path));
}

void LayeredGraph::addLink(const LayeredEdge& edge, int upper, int lower)
{
    Link link{upper, lower};
    if (upper == edge.upper) {
        link.isUpperFixed = edge.upperOffset.has_value();
        link.upperOffset = edge.upperOffset.value_or(0);
    }
    if (lower == edge.lower) {
        link.isLowerFixed = edge.lowerOffset.has_value();
        link.lowerOffset = edge.lowerOffset.value_or(0);
    }
    const int number = static_cast<int>(m_links.size());
    m_links.push_back(link);
    m_cells[size_t(upper)].beneath.push_back(number);
    m_cells[size_t(lower)].above.push_back(number);
}

void LayeredGraph::spreadLinks()
{
    for (const Cell& cell : m_cells) {
        if (cell.item < 0)
            continue;
        spread(cell, cell.beneath, true);
        spread(cell, cell.above, false);
    }
}

// In the order of the other ends, so that edges do not cross at the box.
void LayeredGraph::spread(const Cell& cell, const std::vector<int>& links, bool isUpper)
{
    constexpr double widest = 24;
    constexpr double corner = 12;
    std::vector<Link*> free;
    for (int number : links) {
        Link& link = m_links[size_t(number)];
        if (!(isUpper ? link.isUpperFixed : link.isLowerFixed))
            free.push_back(&link);
    }
    std::stable_sort(free.begin(), free.end(), [&](const Link* left, const Link* right) {
        return m_cells[size_t(isUpper ? left->lower : left->upper)].place <
               m_cells[size_t(isUpper ? right->lower : right->upper)].place;
    });
    const double room = std::max(0.0, 2 * cell.before - 2 * corner);
    const double step = std::min(widest, room / double(std::max<size_t>(free.size(), 1)));
    for (size_t i = 0; i < free.size(); ++i) {
        const double offset = step * (double(i) - double(free.size() - 1) / 2);
        (isUpper ? free[i]->upperOffset : free[i]->lowerOffset) = offset;
    }
}

} // namespace zeltools::quick
