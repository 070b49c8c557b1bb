#include "quick/diagramlayouter_p.h"

#include <algorithm>
#include <cmath>

namespace zeltools::quick
{

namespace
{

constexpr double s_padding = 16;
constexpr double s_loopDepth = 26;
constexpr double s_loopGap = 6;

} // namespace

DiagramLayouter::DiagramLayouter(const Diagram& diagram, Diagram::Direction direction, Order order)
    : m_diagram(diagram)
    , m_isTurned(direction == Diagram::Rightwards)
    , m_levels(diagram.nodes.size() + 1)
    , m_items(diagram.nodes.size())
    , m_isForward(diagram.edges.size())
    , m_loops(diagram.nodes.size())
    , m_loopBreadths(diagram.nodes.size())
    , m_places(diagram.nodes.size())
{
    for (const Diagram::Node& node : diagram.nodes)
        m_sizes.push_back(turned(node.size));
    for (const bool isFirst : {true, false}) {
        for (size_t i = 0; i < diagram.nodes.size(); ++i) {
            if (diagram.nodes[i].isFirst == isFirst)
                levelOf(diagram.nodes[i].parent).children.push_back(static_cast<int>(i));
        }
    }
    if (order == Order::ByDistance)
        sortByDistance();
    m_layout.m_nodes.resize(diagram.nodes.size());
    m_layout.m_edges.resize(diagram.edges.size());
}

std::optional<DiagramLayout> DiagramLayouter::layOut()
{
    numberItems();
    divideEdges();
    for (int frame = static_cast<int>(m_diagram.nodes.size()) - 1; frame >= -1; --frame) {
        if (!layOutLevel(frame))
            return {};
    }
    for (int frame = -1; frame < static_cast<int>(m_diagram.nodes.size()); ++frame)
        placeNodes(frame);
    for (int i = 0; i < static_cast<int>(m_diagram.edges.size()); ++i)
        placeEdge(i);
    for (int i = 0; i < static_cast<int>(m_diagram.nodes.size()); ++i)
        placeLoops(i);
    return m_layout;
}

QSizeF DiagramLayouter::turned(const QSizeF& size) const
{
    return m_isTurned ? size.transposed() : size;
}

QPointF DiagramLayouter::turned(const QPointF& point) const
{
    return m_isTurned ? QPointF(point.y(), point.x()) : point;
}

bool DiagramLayouter::isInside(int node, int frame) const
{
    while (node > frame)
        node = m_diagram.nodes[size_t(node)].parent;
    return node == frame;
}

// The child of the frame that is the node or is around it.
int DiagramLayouter::childTowards(int frame, int node) const
{
    while (m_diagram.nodes[size_t(node)].parent != frame)
        node = m_diagram.nodes[size_t(node)].parent;
    return node;
}

// The innermost frame that is around both ends, or is one of them.
int DiagramLayouter::commonFrame(const Diagram::Edge& edge) const
{
    int source = edge.source;
    int target = edge.target;
    while (source != target) {
        if (source > target)
            source = m_diagram.nodes[size_t(source)].parent;
        else
            target = m_diagram.nodes[size_t(target)].parent;
    }
    return source;
}

void DiagramLayouter::sortByDistance()
{
    std::vector<std::vector<int>> next(m_diagram.nodes.size());
    for (const Diagram::Edge& edge : m_diagram.edges) {
        const int frame = commonFrame(edge);
        if (frame != edge.source && frame != edge.target)
            next[size_t(childTowards(frame, edge.source))].push_back(
                childTowards(frame, edge.target));
    }
    std::vector<bool> isKnown(m_diagram.nodes.size());
    for (Level& level : m_levels) {
        std::vector<int> sorted;
        const auto add = [&](int node) {
            if (!isKnown[size_t(node)])
                sorted.push_back(node);
            isKnown[size_t(node)] = true;
        };
        for (int child : level.children) {
            add(child);
            // Those that are added meanwhile follow.
            for (size_t i = sorted.size() - 1; i < sorted.size(); ++i)
                std::for_each(next[size_t(sorted[i])].begin(), next[size_t(sorted[i])].end(), add);
        }
        level.children = sorted;
    }
}

void DiagramLayouter::numberItems()
{
    for (Level& level : m_levels) {
        for (size_t i = 0; i < level.children.size(); ++i)
            m_items[size_t(level.children[i])] = static_cast<int>(i);
    }
}

void DiagramLayouter::divideEdges()
{
    for (size_t i = 0; i < m_diagram.edges.size(); ++i)
        divideEdge(static_cast<int>(i));
    // The ends at the upper border are the first items of a level, those at the lower the last.
    for (Level& level : m_levels) {
        const int first = static_cast<int>(level.firstEnds.size());
        const int last = first + static_cast<int>(level.children.size());
        for (size_t i = 0; i < level.firstEnds.size(); ++i)
            level.itemOfEnd.insert(level.firstEnds[i], static_cast<int>(i));
        for (size_t i = 0; i < level.lastEnds.size(); ++i)
            level.itemOfEnd.insert(level.lastEnds[i], last + static_cast<int>(i));
        for (int child : level.children)
            m_items[size_t(child)] += first;
    }
}

void DiagramLayouter::divideEdge(int number)
{
    const Diagram::Edge& edge = m_diagram.edges[size_t(number)];
    if (edge.source == edge.target) {
        m_loops[size_t(edge.source)].push_back(number);
        return;
    }
    const int frame = commonFrame(edge);
    Level& level = levelOf(frame);
    level.edges.push_back(number);
    bool isForward = true;
    if (frame == edge.source)
        level.firstEnds.push_back(number);
    else if (frame == edge.target)
        level.lastEnds.push_back(number);
    else
        isForward = m_items[size_t(childTowards(frame, edge.source))] <
                    m_items[size_t(childTowards(frame, edge.target))];
    m_isForward[size_t(number)] = isForward;
    addBorderEnds(number, edge.source, frame, isForward);
    addBorderEnds(number, edge.target, frame, !isForward);
}

// The edge leads through the borders of the frames around the node that are inside the given one.
void DiagramLayouter::addBorderEnds(int number, int node, int frame, bool isLast)
{
    if (node == frame)
        return;
    for (int around = m_diagram.nodes[size_t(node)].parent; around != frame;
         around = m_diagram.nodes[size_t(around)].parent) {
        Level& level = levelOf(around);
        level.edges.push_back(number);
        (isLast ? level.lastEnds : level.firstEnds).push_back(number);
    }
}

bool DiagramLayouter::layOutLevel(int frame)
{
    constexpr int fewColumns = 4;
    if (frame >= 0 && !m_diagram.nodes[size_t(frame)].isFrame) {
        growToLoops(frame);
        return true;
    }
    Level& level = levelOf(frame);
    const std::vector<LayeredItem> items = itemsOf(level);
    std::vector<LayeredEdge> edges;
    for (int number : level.edges)
        edges.push_back(layeredEdge(level, frame, number));
    const int columns =
        std::max(fewColumns, static_cast<int>(std::ceil(std::sqrt(level.children.size()))));
    const LayeredGraph graph(items, edges, columns);
    if (graph.isTooLarge())
        return false;
    const LayeredLayout layout(graph);
    for (size_t i = 0; i < items.size(); ++i) {
        level.centres.push_back(layout.centreOf(static_cast<int>(i)));
        level.middles.push_back(layout.middleOf(static_cast<int>(i)));
    }
    for (size_t i = 0; i < edges.size(); ++i)
        level.parts.push_back(layout.edge(static_cast<int>(i)));
    setFrameSize(frame, layout);
    return true;
}

std::vector<LayeredItem> DiagramLayouter::itemsOf(const Level& level) const
{
    std::vector<LayeredItem> items(level.firstEnds.size(), {0, 0, 0, LayeredItem::FirstRow});
    for (int child : level.children) {
        const QSizeF& size = m_sizes[size_t(child)];
        items.push_back({size.width() / 2, size.width() / 2 + m_loopBreadths[size_t(child)],
                         size.height(), LayeredItem::AnyRow});
    }
    items.insert(items.end(), level.lastEnds.size(), {0, 0, 0, LayeredItem::LastRow});
    return items;
}

LayeredEdge DiagramLayouter::layeredEdge(const Level& level, int frame, int number) const
{
    const Diagram::Edge& edge = m_diagram.edges[size_t(number)];
    const bool isForward = m_isForward[size_t(number)];
    const int upperNode = isForward ? edge.source : edge.target;
    const int lowerNode = isForward ? edge.target : edge.source;
    const auto [upper, upperOffset] = endOf(level, frame, number, upperNode);
    const auto [lower, lowerOffset] = endOf(level, frame, number, lowerNode);
    LayeredEdge layered{upper, lower, upperOffset, lowerOffset, {}, !isForward};
    if (frame == commonFrame(edge))
        layered.label = turned(edge.label);
    return layered;
}

// The item to which the edge is attached, and where, on its way to the node.
std::pair<int, std::optional<double>> DiagramLayouter::endOf(const Level& level, int frame,
                                                             int number, int node) const
{
    if (node == frame || !isInside(node, frame))
        return {level.itemOfEnd.value(number), 0.0};
    const int child = childTowards(frame, node);
    const int item = m_items[size_t(child)];
    if (child == node)
        return {item, std::nullopt};
    const Level& inner = m_levels[size_t(child) + 1];
    const int end = inner.itemOfEnd.value(number);
    return {item,
            inner.origin.x() + inner.centres[size_t(end)] - m_sizes[size_t(child)].width() / 2};
}

// The loops are behind the box in the direction of the row, with their labels behind them.
void DiagramLayouter::growToLoops(int node)
{
    double depth = 0;
    double& breadth = m_loopBreadths[size_t(node)];
    for (int loop : m_loops[size_t(node)]) {
        const QSizeF label = turned(m_diagram.edges[size_t(loop)].label);
        breadth = std::max(breadth, s_loopDepth + label.width());
        depth += std::max(label.height(), s_loopDepth) + s_loopGap;
    }
    QSizeF& size = m_sizes[size_t(node)];
    size.setHeight(std::max(size.height(), depth));
}

// The title is above the content. In a diagram that leads downwards, edges come from above, too;
// they are beside the title then.
void DiagramLayouter::setFrameSize(int frame, const LayeredLayout& layout)
{
    Level& level = levelOf(frame);
    const QSizeF title = frame < 0 ? QSizeF(0, s_padding) : m_diagram.nodes[size_t(frame)].size;
    const double head = title.height();
    const double tail = level.lastEnds.empty() ? s_padding : 0;
    const bool hasFirstEnds = !level.firstEnds.empty();
    QSizeF size;
    if (m_isTurned) {
        level.origin = {head, hasFirstEnds ? 0 : s_padding};
        size = {head + layout.breadth() + s_padding,
                std::max(level.origin.y() + layout.depth() + tail, title.width())};
    } else {
        double left = s_padding;
        for (size_t i = 0; i < level.firstEnds.size(); ++i)
            left = std::max(left, title.width() - level.centres[i]);
        level.origin = {left, head};
        size = {std::max(left + layout.breadth() + s_padding, title.width()),
                head + layout.depth() + tail};
    }
    if (frame < 0) {
        m_layout.m_size = turned(size);
        return;
    }
    m_sizes[size_t(frame)] = size;
    growToLoops(frame);
}

void DiagramLayouter::placeNodes(int frame)
{
    const Level& level = levelOf(frame);
    const QPointF origin = (frame < 0 ? QPointF() : m_places[size_t(frame)]) + level.origin;
    for (int child : level.children) {
        const QSizeF& size = m_sizes[size_t(child)];
        const size_t item = size_t(m_items[size_t(child)]);
        const QPointF place(level.centres[item] - size.width() / 2,
                            level.middles[item] - size.height() / 2);
        m_places[size_t(child)] = origin + place;
        m_layout.m_nodes[size_t(child)] = {turned(m_places[size_t(child)]), turned(size)};
    }
}

void DiagramLayouter::placeEdge(int number)
{
    const Diagram::Edge& described = m_diagram.edges[size_t(number)];
    if (described.source == described.target)
        return;
    const bool isForward = m_isForward[size_t(number)];
    const int frame = commonFrame(described);
    const auto framesAround = [&](int node) {
        std::vector<int> frames;
        while (node != frame && (node = m_diagram.nodes[size_t(node)].parent) != frame)
            frames.push_back(node);
        return frames;
    };
    DiagramLayout::Edge& edge = m_layout.m_edges[size_t(number)];
    for (int around : framesAround(isForward ? described.source : described.target))
        appendPart(edge, around, number);
    appendPart(edge, frame, number);
    const std::vector<int> lower = framesAround(isForward ? described.target : described.source);
    for (auto around = lower.rbegin(); around != lower.rend(); ++around)
        appendPart(edge, *around, number);
    if (!isForward)
        std::reverse(edge.points.begin(), edge.points.end());
    for (QPointF& point : edge.points)
        point = turned(point);
}

void DiagramLayouter::appendPart(DiagramLayout::Edge& edge, int frame, int number) const
{
    const Level& level = m_levels[size_t(frame) + 1];
    const QPointF place = frame < 0 ? QPointF() : m_places[size_t(frame)];
    const auto found = std::lower_bound(level.edges.begin(), level.edges.end(), number);
    const LayeredLayout::Edge& part = level.parts[size_t(found - level.edges.begin())];
    const int end = level.itemOfEnd.value(number, -1);
    const bool isFirstEnd = end >= 0 && end < static_cast<int>(level.firstEnds.size());
    const auto append = [&edge](const QPointF& point) {
        if (edge.points.isEmpty() || edge.points.last() != point)
            edge.points.append(point);
    };
    const QPointF origin = place + level.origin;
    if (isFirstEnd)
        append({origin.x() + part.points.first().x(), place.y()});
    for (const QPointF& point : part.points)
        append(origin + point);
    if (end >= 0 && !isFirstEnd)
        append({origin.x() + part.points.last().x(), place.y() + m_sizes[size_t(frame)].height()});
    const QSizeF label = m_diagram.edges[size_t(number)].label;
    if (!label.isEmpty() && frame == commonFrame(m_diagram.edges[size_t(number)])) {
        edge.label = {QPointF(), label};
        edge.label.moveCenter(turned(origin + part.label));
    }
}

void DiagramLayouter::placeLoops(int node)
{
    constexpr double halfWidth = 8;
    constexpr double bend = s_loopDepth * 1.2; // A cubic curve goes three quarters of the way.
    const QRectF box(m_places[size_t(node)], m_sizes[size_t(node)]);
    double depth = 0;
    const auto depthOf = [&](int loop) {
        return std::max(turned(m_diagram.edges[size_t(loop)].label).height(), s_loopDepth) +
               s_loopGap;
    };
    for (int loop : m_loops[size_t(node)])
        depth += depthOf(loop);
    double y = box.center().y() - depth / 2;
    for (int loop : m_loops[size_t(node)]) {
        const double middle = y + depthOf(loop) / 2;
        y += depthOf(loop);
        DiagramLayout::Edge& edge = m_layout.m_edges[size_t(loop)];
        edge.points = {turned(QPointF(box.right(), middle - halfWidth)),
                       turned(QPointF(box.right() + bend, middle - halfWidth - 4)),
                       turned(QPointF(box.right() + bend, middle + halfWidth + 4)),
                       turned(QPointF(box.right(), middle + halfWidth))};
        const QSizeF label = m_diagram.edges[size_t(loop)].label;
        edge.label = {QPointF(), label};
        edge.label.moveCenter(
            turned(QPointF(box.right() + s_loopDepth + turned(label).width() / 2, middle)));
    }
}

} // namespace zeltools::quick
