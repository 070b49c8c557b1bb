#include "quick/diagrampicture_p.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace zeltools::quick
{

namespace
{

QFont smaller(QFont font)
{
    constexpr double share = 0.82;
    if (font.pixelSize() > 0)
        font.setPixelSize(std::max(8, int(std::lround(font.pixelSize() * share))));
    else
        font.setPointSizeF(font.pointSizeF() * share);
    return font;
}

double widthOf(const QFontMetricsF& metrics, const QString& text)
{
    return std::ceil(metrics.horizontalAdvance(text));
}

} // namespace

DiagramPicture::DiagramPicture(const MachineGraph& graph, const QFont& font)
    : m_graph(graph)
    , m_font(font)
    , m_smallFont(smaller(font))
{
    const int states = static_cast<int>(graph.states.size());
    for (int i = 0; i < states; ++i)
        addState(i);
    for (const MachineGraph::Transition& transition : graph.transitions)
        addTransition(transition);
    if (graph.initialState >= 0)
        addInitial(-1, graph.initialState);
    for (int i = 0; i < states; ++i) {
        const MachineGraph::State& state = graph.states[size_t(i)];
        if (state.initialChild >= 0 && state.kind != MachineGraph::Kind::Parallel)
            addInitial(i, state.initialChild);
    }
    // A large picture is not seen whole in either direction.
    constexpr int statesOfSmall = 200;
    m_layouts[Diagram::Downwards] = DiagramLayout::of(m_diagram, Diagram::Downwards);
    if (m_layouts[Diagram::Downwards] && states <= statesOfSmall)
        m_layouts[Diagram::Rightwards] = DiagramLayout::of(m_diagram, Diagram::Rightwards);
}

// A box has a second line for the time, and a frame has the time behind its title.
void DiagramPicture::addState(int number)
{
    const MachineGraph::State& state = m_graph.states[size_t(number)];
    const QFontMetricsF metrics(m_font);
    const QFontMetricsF small(m_smallFont);
    const double unit = metrics.height() / 2;
    const QString text = metrics.elidedText(state.name, Qt::ElideRight, 20 * unit);
    const double time = widthOf(small, QStringLiteral("≥ 59 min 59 s"));
    m_stateTexts.push_back(text);
    Diagram::Node node;
    node.parent = state.parent;
    node.isFrame = state.end > number + 1;
    if (node.isFrame)
        node.size = {widthOf(metrics, text) + time + 4 * unit, metrics.height() + 1.6 * unit};
    else if (state.isHistory())
        node.size = {3.2 * unit, 3.2 * unit};
    else
        node.size = {std::max({widthOf(metrics, text), time, 7 * unit}) + 3 * unit,
                     metrics.height() + small.height() + 1.2 * unit};
    m_diagram.nodes.push_back(node);
}

// The label has room for the number of times that the transition fired.
void DiagramPicture::addTransition(const MachineGraph::Transition& transition)
{
    const QFontMetricsF metrics(m_smallFont);
    const double unit = metrics.height() / 2;
    const QString text = metrics.elidedText(transition.text(), Qt::ElideRight, 20 * unit);
    m_edgeTexts.push_back(text);
    const double width = widthOf(metrics, text + QStringLiteral(" 999×")) + unit;
    const int target = transition.target < 0 ? transition.source : transition.target;
    m_diagram.edges.push_back({transition.source, target, {width, metrics.height() + 2}});
}

void DiagramPicture::addInitial(int frame, int state)
{
    const double size = std::ceil(QFontMetricsF(m_font).height() * 0.6);
    const int number = static_cast<int>(m_diagram.nodes.size());
    m_diagram.nodes.push_back({frame, {size, size}, false, true});
    m_diagram.edges.push_back({number, state, {}});
}

void DiagramPicture::fitInto(const QSizeF& view)
{
    if (m_layouts[Diagram::Rightwards])
        m_direction = zoomFor(*m_layouts[Diagram::Rightwards], view) >
                              zoomFor(*m_layouts[Diagram::Downwards], view)
                          ? Diagram::Rightwards
                          : Diagram::Downwards;
}

double DiagramPicture::zoomFor(const QSizeF& view) const
{
    constexpr double greatest = 1.5;
    return std::min(greatest, zoomFor(layout(), view));
}

double DiagramPicture::zoomFor(const DiagramLayout& layout, const QSizeF& view) const
{
    return std::min(view.width() / layout.size().width(), view.height() / layout.size().height());
}

QString DiagramPicture::edgeText(int edge) const
{
    return edge < int(m_edgeTexts.size()) ? m_edgeTexts[size_t(edge)] : QString();
}

int DiagramPicture::initialStateOf(int edge) const
{
    return edge < int(m_edgeTexts.size()) ? -1 : m_diagram.edges[size_t(edge)].target;
}

} // namespace zeltools::quick
