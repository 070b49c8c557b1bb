#include "quick/roworder_p.h"

#include <algorithm>

namespace zeltools::quick
{

RowOrder::RowOrder(std::vector<Cell>& cells, const std::vector<Link>& links, int itemCount)
    : m_cells(cells)
    , m_links(links)
{
    fillRows(itemCount);
    orderRows();
}

// Along the edges, so that what belongs together is in one column.
void RowOrder::fillRows(int itemCount)
{
    int rowCount = 0;
    for (const Cell& cell : m_cells)
        rowCount = std::max(rowCount, cell.row + 1);
    m_rows.resize(size_t(rowCount));
    std::vector<bool> isPlaced(m_cells.size());
    std::vector<int> open;
    for (int item = 0; item < itemCount; ++item) {
        open.push_back(item);
        while (!open.empty()) {
            const int number = open.back();
            open.pop_back();
            if (isPlaced[size_t(number)])
                continue;
            isPlaced[size_t(number)] = true;
            const Cell& cell = m_cells[size_t(number)];
            m_rows[size_t(cell.row)].push_back(number);
            for (auto link = cell.beneath.rbegin(); link != cell.beneath.rend(); ++link)
                open.push_back(m_links[size_t(*link)].lower);
        }
    }
    for (const std::vector<int>& row : m_rows)
        renumber(row);
}

void RowOrder::orderRows()
{
    constexpr size_t manyCells = 10000;
    const int sweeps = m_cells.size() > manyCells ? 4 : 12;
    qint64 least = crossings();
    std::vector<std::vector<int>> best = m_rows;
    for (int sweep = 0; sweep < sweeps && least > 0; ++sweep) {
        const int count = static_cast<int>(m_rows.size());
        const bool isDownwards = sweep % 2 == 0;
        bool hasChanged = false;
        for (int i = 0; i < count; ++i)
            hasChanged = sortRow(isDownwards ? i : count - 1 - i, isDownwards) || hasChanged;
        const qint64 found = crossings();
        if (found < least) {
            least = found;
            best = m_rows;
        }
        if (!hasChanged && sweep > 0)
            break;
    }
    m_rows = best;
    for (const std::vector<int>& row : m_rows)
        renumber(row);
}

void RowOrder::renumber(const std::vector<int>& row)
{
    for (size_t i = 0; i < row.size(); ++i)
        m_cells[size_t(row[i])].place = static_cast<int>(i);
}

// By the mean place of the cells to which each cell is linked.
bool RowOrder::sortRow(int number, bool isDownwards)
{
    std::vector<int>& row = m_rows[size_t(number)];
    std::vector<std::pair<double, int>> keys;
    for (int cellNumber : row) {
        const Cell& cell = m_cells[size_t(cellNumber)];
        double sum = 0;
        const std::vector<int>& links = isDownwards ? cell.above : cell.beneath;
        for (int link : links) {
            const Link& each = m_links[size_t(link)];
            const Cell& other = m_cells[size_t(isDownwards ? each.upper : each.lower)];
            const double offset = isDownwards ? each.upperOffset : each.lowerOffset;
            const double breadth = other.before + other.after;
            sum += other.place + (breadth > 0 ? 0.9 * offset / breadth : 0);
        }
        keys.emplace_back(links.empty() ? cell.place : sum / double(links.size()), cellNumber);
    }
    std::stable_sort(keys.begin(), keys.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    bool hasChanged = false;
    for (size_t i = 0; i < row.size(); ++i) {
        hasChanged = hasChanged || row[i] != keys[i].second;
        row[i] = keys[i].second;
    }
    renumber(row);
    return hasChanged;
}

qint64 RowOrder::crossings() const
{
    qint64 count = 0;
    for (const std::vector<int>& row : m_rows)
        count += crossingsBelow(row);
    return count;
}

// Two links cross if their ends are in different orders; a tree of sums counts them.
qint64 RowOrder::crossingsBelow(const std::vector<int>& row) const
{
    std::vector<std::pair<double, int>> sorted; // of one cell, by where they are attached
    std::vector<int> ends;
    int size = 0;
    for (int cell : row) {
        sorted.clear();
        for (int number : m_cells[size_t(cell)].beneath) {
            const Link& link = m_links[size_t(number)];
            sorted.emplace_back(link.upperOffset, m_cells[size_t(link.lower)].place + 1);
        }
        std::sort(sorted.begin(), sorted.end());
        for (const auto& [offset, end] : sorted)
            ends.push_back(end);
    }
    for (int end : ends)
        size = std::max(size, end);
    std::vector<int> sums(size_t(size) + 1);
    qint64 count = 0;
    for (size_t i = 0; i < ends.size(); ++i) {
        qint64 notLater = 0;
        for (int at = ends[i]; at > 0; at -= at & -at)
            notLater += sums[size_t(at)];
        count += qint64(i) - notLater;
        for (int at = ends[i]; at <= size; at += at & -at)
            ++sums[size_t(at)];
    }
    return count;
}

} // namespace zeltools::quick
