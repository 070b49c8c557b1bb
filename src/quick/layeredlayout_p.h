#pragma once

#include "quick/layeredgraph_p.h"

#include <QPointF>
#include <QVector>

namespace zeltools::quick
{

/// The places of the items and edges of a LayeredGraph. The x coordinate of a point is along the
/// rows, y from row to row; both begin with 0. Nothing overlaps, and edges cross no items and no
/// labels.
class LayeredLayout
{
public:
    struct Edge
    {
        /// From the upper to the lower item. Between two points, either x or the row changes.
        QVector<QPointF> points;
        QPointF label; ///< its centre
    };

    explicit LayeredLayout(const LayeredGraph& graph);

    double breadth() const { return m_breadth; }
    double depth() const { return m_depth; }
    double centreOf(int item) const { return m_centres[size_t(item)]; }
    /// The centre of the item in the other direction.
    double middleOf(int item) const;
    Edge edge(int number) const;

private:
    void placeInRows();
    void improve(bool usesAbove, bool usesBeneath);
    void improveRow(const std::vector<int>& row, bool usesAbove, bool usesBeneath);
    void settle(const std::vector<int>& row, const std::vector<double>& wishes,
                const std::vector<double>& weights);
    double distance(int left, int right) const;
    void moveToOrigin();
    void stackRows();
    double gapBelow(const std::vector<int>& row) const;

    const LayeredGraph& m_graph;
    std::vector<double> m_centres; // of the cells
    std::vector<double> m_tops;    // of the rows
    std::vector<double> m_bottoms;
    double m_breadth = 0;
    double m_depth = 0;
};

} // namespace zeltools::quick
