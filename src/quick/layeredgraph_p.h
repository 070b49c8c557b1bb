#pragma once

#include <QSizeF>

#include <optional>
#include <vector>

namespace zeltools::quick
{

/// Something that a layered layout places: a box, or the end of an edge at the border of a frame.
/// The breadth is the direction along a row, the depth the one from row to row.
struct LayeredItem
{
    enum Place { FirstRow, AnyRow, LastRow };

    double before = 0; ///< the breadth before the centre, to which edges are attached
    double after = 0;  ///< the breadth behind it
    double depth = 0;
    Place place = AnyRow;
};

/// An edge from an item to a later one in the list, whatever way its arrow points.
struct LayeredEdge
{
    int upper;
    int lower;
    /// Where the edge is attached, from the centre of the item; without a value it shares the
    /// breadth before and behind the centre with the others.
    std::optional<double> upperOffset;
    std::optional<double> lowerOffset;
    QSizeF label; ///< the width is its breadth, the height its depth; empty without a label
    bool isLabelAtLower = false;
};

/// Items and edges in rows, so that each edge leads downwards, from row to row, and crosses few
/// others. Rows with even numbers have the items; labels are in the rows between. Where an edge
/// passes a row, it has a cell there, so that nothing else is in its way.
class LayeredGraph
{
public:
    /// Larger graphs are not laid out.
    static constexpr int maximumCells = 50000;

    struct Cell
    {
        int item = -1; ///< -1 for an edge that passes
        int row = 0;
        double before = 0;
        double after = 0;
        double depth = 0;
        bool isLabel = false;
        int place = 0;          ///< in its row, from 0
        std::vector<int> above; ///< links
        std::vector<int> beneath;
    };
    struct Link
    {
        int upper;
        int lower;
        double upperOffset = 0;
        double lowerOffset = 0;
        bool isUpperFixed = true;
        bool isLowerFixed = true;
    };

    /// `columns` is the number of items without edges in a row.
    LayeredGraph(const std::vector<LayeredItem>& items, const std::vector<LayeredEdge>& edges,
                 int columns);

    bool isTooLarge() const { return m_isTooLarge; }
    /// The first cells are those of the items.
    const std::vector<Cell>& cells() const { return m_cells; }
    const std::vector<Link>& links() const { return m_links; }
    /// The cells of each row in their order.
    const std::vector<std::vector<int>>& rows() const { return m_rows; }
    /// The cells of an edge from the upper to the lower item.
    const std::vector<int>& cellsOf(int edge) const { return m_paths[size_t(edge)]; }
    /// The first link of an edge; the others follow.
    int firstLinkOf(int edge) const { return m_firstLinks[size_t(edge)]; }

private:
    void makeRanks(int columns);
    void raiseSources(const std::vector<std::vector<int>>& lowerItems);
    void placeLooseItems(int columns);
    void placeLastRow();
    void makeCells();
    void addPath(const LayeredEdge& edge);
    void addLink(const LayeredEdge& edge, int upper, int lower);
    void spreadLinks();
    void spread(const Cell& cell, const std::vector<int>& links, bool isUpper);

    const std::vector<LayeredItem>& m_items;
    const std::vector<LayeredEdge>& m_edges;
    bool m_isTooLarge = false;
    std::vector<int> m_ranks;
    std::vector<Cell> m_cells;
    std::vector<Link> m_links;
    std::vector<std::vector<int>> m_rows;
    std::vector<std::vector<int>> m_paths;
    std::vector<int> m_firstLinks;
};

} // namespace zeltools::quick
