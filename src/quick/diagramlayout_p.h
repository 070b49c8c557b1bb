#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QVector>

#include <optional>
#include <vector>

namespace zeltools::quick
{

/// A picture of boxes, frames around boxes, and arrows with labels.
struct Diagram
{
    enum Direction { Downwards, Rightwards };

    struct Node
    {
        int parent = -1; ///< the number of the frame around it, which is smaller than its own
        QSizeF size;     ///< of a box; of a frame, the size of its title
        bool isFrame = false;
        bool isFirst = false; ///< before all others of its frame, whatever its number is
    };
    struct Edge
    {
        int source;
        int target;
        QSizeF label; ///< empty without one
    };

    std::vector<Node> nodes;
    std::vector<Edge> edges;
};

/// The places of all parts of a diagram. A layout is the same for the same diagram, whenever and
/// wherever it is made. It has these properties:
/// - Boxes do not overlap, and each frame is around all its nodes.
/// - An edge begins at the border of its source and ends at the border of its target. If one is a
///   frame around the other, the edge is inside that frame; otherwise it is outside of both.
/// - No edge or label crosses a box or another label. Edges may cross each other.
///
/// Edges lead from the earlier to the later node where they can, in the direction of the diagram.
class DiagramLayout
{
public:
    struct Edge
    {
        /// From the source to the target. Where two points differ in both coordinates, the edge
        /// bends between them and leaves both in the direction of the diagram. The points of an
        /// edge from a node to itself are those of one cubic curve.
        QVector<QPointF> points;
        QRectF label;
    };

    /// Returns no value if the picture would be too large.
    static std::optional<DiagramLayout> of(const Diagram& diagram, Diagram::Direction direction);

    const QSizeF& size() const { return m_size; }
    /// One for each node.
    const std::vector<QRectF>& nodes() const { return m_nodes; }
    /// One for each edge.
    const std::vector<Edge>& edges() const { return m_edges; }

private:
    friend class DiagramLayouter;

    QSizeF m_size;
    std::vector<QRectF> m_nodes;
    std::vector<Edge> m_edges;
};

} // namespace zeltools::quick
