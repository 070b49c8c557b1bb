#pragma once

#include "quick/layeredgraph_p.h"

namespace zeltools::quick
{

/// Orders the cells of each row of a LayeredGraph, so that few links cross. It sweeps down and up
/// over the rows and sorts the cells of each by those to which they are linked.
class RowOrder
{
public:
    using Cell = LayeredGraph::Cell;
    using Link = LayeredGraph::Link;

    /// Numbers the cells (Cell::place). The first `itemCount` cells are those of items.
    RowOrder(std::vector<Cell>& cells, const std::vector<Link>& links, int itemCount);

    /// The cells of each row in their order.
    const std::vector<std::vector<int>>& rows() const { return m_rows; }

private:
    void fillRows(int itemCount);
    void orderRows();
    bool sortRow(int row, bool isDownwards);
    void renumber(const std::vector<int>& row);
    qint64 crossings() const;
    qint64 crossingsBelow(const std::vector<int>& row) const;

    std::vector<Cell>& m_cells;
    const std::vector<Link>& m_links;
    std::vector<std::vector<int>> m_rows;
};

} // namespace zeltools::quick
