#pragma once

#include "quick/diagramlayout_p.h"
#include "quick/machinegraph_p.h"

#include <QFont>

namespace zeltools::quick
{

/// The diagram of a machine with its texts; in both directions, unless it is large. States and
/// transitions have the numbers of the graph; the diagram also has a dot and an arrow for each
/// initial state.
class DiagramPicture
{
public:
    /// The graph must not be too large, and must outlive the picture.
    DiagramPicture(const MachineGraph& graph, const QFont& font);

    /// Whether there are too many edges for a layout.
    bool isTooLarge() const { return !m_layouts[Diagram::Downwards]; }
    /// Takes the direction in which more of the picture fits into a view of that size.
    void fitInto(const QSizeF& view);
    /// The greatest zoom, at most 1.5, at which all fits into a view of that size.
    double zoomFor(const QSizeF& view) const;

    const MachineGraph& graph() const { return m_graph; }
    const Diagram& diagram() const { return m_diagram; }
    const DiagramLayout& layout() const { return *m_layouts[m_direction]; }
    bool isDownwards() const { return m_direction == Diagram::Downwards; }
    QString stateText(int state) const { return m_stateTexts[size_t(state)]; }
    /// Empty for an arrow to an initial state.
    QString edgeText(int edge) const;
    /// The state to which the arrow leads, or -1 for a transition.
    int initialStateOf(int edge) const;

    const QFont& font() const { return m_font; }
    const QFont& smallFont() const { return m_smallFont; }

private:
    void addState(int number);
    void addTransition(const MachineGraph::Transition& transition);
    void addInitial(int frame, int state);
    double zoomFor(const DiagramLayout& layout, const QSizeF& view) const;

    const MachineGraph& m_graph;
    const QFont m_font;
    QFont m_smallFont;
    Diagram m_diagram;
    std::vector<QString> m_stateTexts;
    std::vector<QString> m_edgeTexts;
    std::optional<DiagramLayout> m_layouts[2]; // by direction
    Diagram::Direction m_direction = Diagram::Downwards;
};

} // namespace zeltools::quick
