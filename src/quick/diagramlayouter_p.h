#pragma once

#include "quick/diagramlayout_p.h"
#include "quick/layeredlayout_p.h"

#include <QHash>

namespace zeltools::quick
{

/// Makes a DiagramLayout. It lays out each frame and then the frame around it, in which it is one
/// item. An edge that leads out of a frame is several edges: one to the border of each frame around
/// its end, and one between the outermost of these.
///
/// Inside the class, the x coordinate is along the rows and y from row to row, also in a diagram
/// that leads rightwards.
class DiagramLayouter
{
public:
    /// The order of the nodes. AsListed keeps that of the description, which its author chose.
    /// ByDistance sorts by the distance from the first node and needs fewer rows.
    enum class Order { AsListed, ByDistance };

    DiagramLayouter(const Diagram& diagram, Diagram::Direction direction, Order order);

    std::optional<DiagramLayout> layOut();

private:
    /// The inside of a frame or, for level 0, of the whole picture.
    struct Level
    {
        std::vector<int> children;  // nodes in their order
        std::vector<int> firstEnds; // edges that begin at the frame's upper border
        std::vector<int> lastEnds;  // edges that end at its lower border
        QHash<int, int> itemOfEnd;  // the item of an edge that ends at the border
        std::vector<int> edges;     // in the order of those of the layout
        QPointF origin;             // of the inside, in the frame
        std::vector<double> centres;
        std::vector<double> middles;
        std::vector<LayeredLayout::Edge> parts;
    };

    Level& levelOf(int node) { return m_levels[size_t(node) + 1]; }
    QSizeF turned(const QSizeF& size) const;
    QPointF turned(const QPointF& point) const;
    bool isInside(int node, int frame) const;
    int childTowards(int frame, int node) const;
    int commonFrame(const Diagram::Edge& edge) const;

    void sortByDistance();
    void divideEdges();
    void divideEdge(int number);
    void addBorderEnds(int number, int node, int frame, bool isLast);
    void numberItems();
    bool layOutLevel(int frame);
    std::vector<LayeredItem> itemsOf(const Level& level) const;
    LayeredEdge layeredEdge(const Level& level, int frame, int number) const;
    std::pair<int, std::optional<double>> endOf(const Level& level, int frame, int number,
                                                int node) const;
    void growToLoops(int node);
    void setFrameSize(int frame, const LayeredLayout& layout);
    void placeNodes(int frame);
    void placeEdge(int number);
    void appendPart(DiagramLayout::Edge& edge, int frame, int number) const;
    void placeLoops(int node);

    const Diagram& m_diagram;
    const bool m_isTurned;
    std::vector<Level> m_levels;           // that of the picture, then one for each node
    std::vector<int> m_items;              // of each node in its level
    std::vector<bool> m_isForward;         // of each edge
    std::vector<std::vector<int>> m_loops; // of each node
    std::vector<QSizeF> m_sizes;           // of the boxes
    std::vector<double> m_loopBreadths;    // beside the boxes
    std::vector<QPointF> m_places;         // the upper left corners of the boxes
    DiagramLayout m_layout;
};

} // namespace zeltools::quick
