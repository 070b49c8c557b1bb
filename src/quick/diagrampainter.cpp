#include "quick/diagrampainter_p.h"

#include "quick/durationtext_p.h"
#include "quick/language_p.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace zeltools::quick
{

namespace
{

constexpr double s_radius = 9;
constexpr double s_thin = 1.5;
constexpr double s_bold = 3;

QColor blended(const QColor& under, const QColor& over, double share)
{
    const auto mix = [share](double low, double high) { return low + (high - low) * share; };
    return QColor::fromRgbF(mix(under.redF(), over.redF()), mix(under.greenF(), over.greenF()),
                            mix(under.blueF(), over.blueF()));
}

} // namespace

DiagramPainter::DiagramPainter(QPainter& painter, const DiagramPicture& picture,
                               const MachineTrack& track, const DiagramColors& colors,
                               const QRectF& visible)
    : m_painter(painter)
    , m_picture(picture)
    , m_graph(picture.graph())
    , m_layout(picture.layout())
    , m_track(track)
    , m_colors(colors)
    , m_visible(visible)
    , m_enteredByDefault(track.enteredByDefault())
{
}

void DiagramPainter::paint()
{
    paintFrames();
    paintEdges(false);
    paintEdges(true);
    paintLabels();
    paintBoxes();
}

// A frame stands before those inside it.
void DiagramPainter::paintFrames()
{
    for (int i = 0; i < int(m_graph.states.size()); ++i) {
        if (m_picture.diagram().nodes[size_t(i)].isFrame && isVisible(m_layout.nodes()[size_t(i)]))
            paintFrame(i);
    }
}

QColor DiagramPainter::borderOf(int state) const
{
    if (m_track.isPresent(state))
        return m_colors.current;
    return m_track.isVisited(state) ? m_colors.taken : m_colors.line;
}

double DiagramPainter::widthOf(int state) const
{
    return m_track.isVisited(state) ? s_bold : s_thin;
}

QColor DiagramPainter::fillOf(int frame) const
{
    if (frame < 0)
        return m_colors.background;
    return m_track.isPresent(frame) ? blended(m_colors.background, m_colors.current, 0.12)
                                    : blended(m_colors.background, m_colors.state, 0.5);
}

// The innermost frame around both ends, or the one of them that is around the other.
int DiagramPainter::frameOf(const MachineGraph::Transition& transition) const
{
    int frame = transition.source;
    while (frame >= 0 && !m_graph.contains(frame, std::max(transition.target, 0)))
        frame = m_graph.states[size_t(frame)].parent;
    while (frame >= 0 && !m_picture.diagram().nodes[size_t(frame)].isFrame)
        frame = m_graph.states[size_t(frame)].parent;
    return frame;
}

void DiagramPainter::paintFrame(int state)
{
    const MachineGraph::State& described = m_graph.states[size_t(state)];
    const QRectF rect = m_layout.nodes()[size_t(state)];
    const bool isRegion = described.parent >= 0 && m_graph.states[size_t(described.parent)].kind ==
                                                       MachineGraph::Kind::Parallel;
    QPen pen(borderOf(state), widthOf(state) * 0.75);
    if (isRegion)
        pen.setStyle(Qt::DashLine);
    m_painter.setPen(pen);
    m_painter.setBrush(fillOf(state));
    m_painter.drawRoundedRect(rect, s_radius * 1.3, s_radius * 1.3);

    const QFontMetricsF metrics(m_picture.font());
    const QString& text = m_picture.stateText(state);
    const QRectF title(rect.left() + s_radius * 1.4, rect.top() + metrics.height() * 0.35,
                       metrics.horizontalAdvance(text) + 2, metrics.height());
    m_painter.setPen(m_colors.text);
    m_painter.setFont(m_picture.font());
    m_painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
    const QRectF time(title.right() + s_radius, title.top(),
                      rect.right() - title.right() - s_radius, title.height());
    m_painter.setPen(m_colors.text);
    paintTime(state, time, Qt::AlignLeft | Qt::AlignVCenter);
}

void DiagramPainter::paintTime(int state, const QRectF& place, int alignment)
{
    if (!m_track.isPresent(state))
        return;
    QString text = durationText(
        std::chrono::duration_cast<std::chrono::seconds>(m_track.timeIn(state, m_now)));
    if (!m_track.isTimeKnown(state))
        text.prepend(QStringLiteral("≥ "));
    m_painter.setFont(m_picture.smallFont());
    m_painter.drawText(place, alignment | Qt::TextSingleLine, text);
}

bool DiagramPainter::isTaken(int edge) const
{
    const int initial = m_picture.initialStateOf(edge);
    return initial < 0 ? m_track.timesFired(edge) > 0 : m_enteredByDefault[size_t(initial)];
}

void DiagramPainter::paintEdges(bool taken)
{
    for (int i = 0; i < int(m_layout.edges().size()); ++i) {
        if (isTaken(i) == taken)
            paintEdge(i, taken);
    }
}

void DiagramPainter::paintEdge(int number, bool taken)
{
    const Diagram::Edge& described = m_picture.diagram().edges[size_t(number)];
    const DiagramLayout::Edge& edge = m_layout.edges()[size_t(number)];
    const bool isLoop = described.source == described.target;
    const QPainterPath path = pathOf(edge, isLoop);
    if (!isVisible(path.controlPointRect().adjusted(-s_radius, -s_radius, s_radius, s_radius)))
        return;
    const QColor color = taken ? m_colors.taken : m_colors.line;
    QPen pen(color, taken ? s_bold : s_thin);
    const bool isInitial = m_picture.initialStateOf(number) >= 0;
    if (isLoop && m_graph.transitions[size_t(number)].target < 0) // No state is left.
        pen.setStyle(Qt::DashLine);
    m_painter.setPen(pen);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawPath(path);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(color);
    paintArrow(edge, isLoop);
    if (isInitial)
        m_painter.drawEllipse(m_layout.nodes()[size_t(described.source)]);
}

QPainterPath DiagramPainter::pathOf(const DiagramLayout::Edge& edge, bool isLoop) const
{
    const QVector<QPointF>& points = edge.points;
    QPainterPath path(points.first());
    if (isLoop) {
        path.cubicTo(points[1], points[2], points[3]);
        return path;
    }
    for (int i = 1; i < points.size(); ++i) {
        const QPointF from = points[i - 1];
        const QPointF to = points[i];
        const QPointF middle = (from + to) / 2;
        if (qFuzzyCompare(from.x(), to.x()) || qFuzzyCompare(from.y(), to.y()))
            path.lineTo(to);
        else if (m_picture.isDownwards())
            path.cubicTo({from.x(), middle.y()}, {to.x(), middle.y()}, to);
        else
            path.cubicTo({middle.x(), from.y()}, {middle.x(), to.y()}, to);
    }
    return path;
}

void DiagramPainter::paintArrow(const DiagramLayout::Edge& edge, bool isLoop)
{
    constexpr double length = 10;
    constexpr double halfWidth = 5.5;
    const QPointF tip = edge.points.last();
    QPointF from = edge.points[edge.points.size() - 2];
    for (int i = edge.points.size() - 2; i > 0 && from == tip; --i)
        from = edge.points[i - 1];
    QPointF along = tip - from;
    if (!isLoop) // The edge ends in the direction of the diagram.
        (m_picture.isDownwards() ? along.rx() : along.ry()) = 0;
    const double size = std::hypot(along.x(), along.y());
    if (size <= 0)
        return;
    along /= size;
    const QPointF across(-along.y(), along.x());
    const QPointF base = tip - along * length;
    const QPointF corners[]{tip, base + across * halfWidth, base - across * halfWidth};
    m_painter.drawPolygon(corners, 3);
}

void DiagramPainter::paintLabels()
{
    m_painter.setFont(m_picture.smallFont());
    for (int i = 0; i < int(m_graph.transitions.size()); ++i) {
        if (isVisible(m_layout.edges()[size_t(i)].label))
            paintLabel(i);
    }
}

// The label interrupts its edge; that of a loop is beside it.
void DiagramPainter::paintLabel(int edge)
{
    const QFontMetricsF metrics(m_picture.smallFont());
    const MachineGraph::Transition& transition = m_graph.transitions[size_t(edge)];
    const QRectF place = m_layout.edges()[size_t(edge)].label;
    const QString text = m_picture.edgeText(edge);
    const int times = m_track.timesFired(edge);
    const QString number = Language::instance()->locale().toString(std::min(times, 999));
    const QString count = times == 0     ? QString()
                          : times < 1000 ? QStringLiteral("%1×").arg(number)
                                         : QStringLiteral("%1+").arg(number);
    const double gap = text.isEmpty() || count.isEmpty() ? 0 : metrics.height() / 3;
    const double textWidth = metrics.horizontalAdvance(text);
    const double countWidth = metrics.horizontalAdvance(count);
    if (textWidth + countWidth <= 0)
        return;
    const bool isLoop = transition.target < 0 || transition.target == transition.source;
    QRectF rect(0, 0, textWidth + gap + countWidth + metrics.height() / 2, place.height());
    rect.moveCenter(place.center());
    if (isLoop && m_picture.isDownwards())
        rect.moveLeft(place.left());
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(fillOf(frameOf(transition)));
    if (!isLoop)
        m_painter.drawRect(rect);
    const QRectF textRect(rect.left() + metrics.height() / 4, rect.top(), textWidth, rect.height());
    const QRectF countRect(textRect.right() + gap, rect.top(), countWidth, rect.height());
    constexpr int flags = Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextDontClip;
    m_painter.setPen(times > 0 ? m_colors.text : m_colors.line);
    m_painter.drawText(textRect, flags, text);
    m_painter.setPen(m_colors.taken);
    m_painter.drawText(countRect, flags, count);
}

void DiagramPainter::paintBoxes()
{
    for (int i = 0; i < int(m_graph.states.size()); ++i) {
        if (m_picture.diagram().nodes[size_t(i)].isFrame || !isVisible(m_layout.nodes()[size_t(i)]))
            continue;
        if (m_graph.states[size_t(i)].isHistory())
            paintHistory(i);
        else
            paintBox(i);
    }
}

void DiagramPainter::paintHistory(int state)
{
    const QRectF rect = m_layout.nodes()[size_t(state)];
    const bool isDeep = m_graph.states[size_t(state)].kind == MachineGraph::Kind::DeepHistory;
    m_painter.setPen({m_colors.line, s_thin});
    m_painter.setBrush(m_colors.state);
    m_painter.drawEllipse(rect);
    m_painter.setPen(m_colors.text);
    m_painter.setFont(m_picture.smallFont());
    m_painter.drawText(rect, Qt::AlignCenter, QLatin1String(isDeep ? "H*" : "H"));
}

void DiagramPainter::paintBox(int state)
{
    const QRectF rect = m_layout.nodes()[size_t(state)];
    const bool isPresent = m_track.isPresent(state);
    m_painter.setPen({borderOf(state), widthOf(state)});
    m_painter.setBrush(isPresent ? m_colors.current : m_colors.state);
    m_painter.drawRoundedRect(rect, s_radius, s_radius);
    const QColor text = isPresent ? m_colors.currentText : m_colors.text;
    if (m_graph.states[size_t(state)].kind == MachineGraph::Kind::Final) {
        constexpr double inset = 4;
        m_painter.setPen({isPresent ? text : borderOf(state), s_thin});
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), s_radius - inset,
                                  s_radius - inset);
    }
    m_painter.setPen(text);
    m_painter.setFont(m_picture.font());
    const double time = isPresent ? QFontMetricsF(m_picture.smallFont()).height() : 0;
    const double name = QFontMetricsF(m_picture.font()).height();
    const QRectF nameRect(rect.left(), rect.center().y() - (name + time) / 2, rect.width(), name);
    m_painter.drawText(nameRect, Qt::AlignCenter | Qt::TextSingleLine, m_picture.stateText(state));
    paintTime(state, {rect.left(), nameRect.bottom(), rect.width(), time}, Qt::AlignCenter);
}

} // namespace zeltools::quick
