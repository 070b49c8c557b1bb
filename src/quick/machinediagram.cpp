#include "quick/machinediagram.h"

#include "quick/diagrampainter_p.h"
#include "quick/language_p.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace zeltools::quick
{

MachineDiagram::MachineDiagram(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
    m_view.setLive(false);
    m_font.setPixelSize(17);
    setAntialiasing(true);
    connect(&m_view, &MachineView::machineChanged, this, &MachineDiagram::onMachineChanged);
    connect(&m_view, &MachineView::changed, this, [this] {
        updateAll();
        Q_EMIT currentRectChanged();
    });
    connect(&m_view, &MachineView::stateTimeChanged, this, &MachineDiagram::updateTimes);
    connect(this, &MachineDiagram::lookChanged, this, &MachineDiagram::updateAll);
    connect(this, &MachineDiagram::contentMoved, this, &MachineDiagram::updateAll);
    connect(Language::instance(), &Language::changed, this, &MachineDiagram::makePicture);
    connect(this, &QQuickItem::visibleChanged, this, &MachineDiagram::updateLive);
    connect(this, &QQuickItem::widthChanged, this, &MachineDiagram::fitPicture);
    connect(this, &QQuickItem::heightChanged, this, &MachineDiagram::fitPicture);
    updateLive();
}

MachineDiagram::~MachineDiagram() = default;

QString MachineDiagram::problem() const
{
    const MachineGraph* const graph = m_view.graph();
    if (graph != nullptr && m_picture == nullptr && !graph->isTooLarge() && isComponentComplete())
        return MachineView::tr("The machine has %n state(s) and is too large for a picture.",
                               nullptr, graph->stateCount);
    return m_view.problem();
}

qreal MachineDiagram::contentWidth() const
{
    return m_picture != nullptr ? std::ceil(m_picture->layout().size().width() * m_zoom) : 0;
}

qreal MachineDiagram::contentHeight() const
{
    return m_picture != nullptr ? std::ceil(m_picture->layout().size().height() * m_zoom) : 0;
}

qreal MachineDiagram::fitZoom() const
{
    return m_picture != nullptr ? m_picture->zoomFor({width(), height()}) : 1;
}

QRectF MachineDiagram::currentRect() const
{
    const int state = m_picture != nullptr ? m_view.track()->innermostState() : -1;
    if (state < 0)
        return {};
    const QRectF rect = m_picture->layout().nodes()[size_t(state)];
    return {rect.topLeft() * m_zoom + m_content + pictureOrigin(), rect.size() * m_zoom};
}

// Where the picture begins in the item.
QPointF MachineDiagram::pictureOrigin() const
{
    return QPointF(std::max(0.0, (width() - contentWidth()) / 2),
                   std::max(0.0, (height() - contentHeight()) / 2)) -
           m_content;
}

void MachineDiagram::setZoom(qreal zoom)
{
    constexpr qreal least = 0.1;
    constexpr qreal most = 4;
    const qreal allowed = std::isfinite(zoom) ? std::clamp(zoom, least, most) : 1;
    if (allowed == m_zoom)
        return;
    m_zoom = allowed;
    Q_EMIT layoutChanged();
    Q_EMIT currentRectChanged();
    updateAll();
}

void MachineDiagram::setContentX(qreal x)
{
    if (x == m_content.x())
        return;
    m_content.setX(x);
    Q_EMIT contentMoved();
}

void MachineDiagram::setContentY(qreal y)
{
    if (y == m_content.y())
        return;
    m_content.setY(y);
    Q_EMIT contentMoved();
}

void MachineDiagram::setFont(const QFont& font)
{
    if (font == m_font)
        return;
    m_font = font;
    makePicture();
    Q_EMIT lookChanged();
}

void MachineDiagram::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    makePicture();
}

void MachineDiagram::onMachineChanged()
{
    makePicture();
    Q_EMIT machineChanged();
}

// While QML sets the properties one after another, there is nothing to draw yet.
void MachineDiagram::makePicture()
{
    m_picture.reset();
    if (!isComponentComplete())
        return;
    if (m_view.hasPicture()) {
        m_picture = std::make_unique<DiagramPicture>(*m_view.graph(), m_font);
        if (m_picture->isTooLarge())
            m_picture.reset();
    }
    fitPicture();
}

void MachineDiagram::fitPicture()
{
    if (m_picture != nullptr && width() > 0 && height() > 0)
        m_picture->fitInto({width(), height()});
    Q_EMIT layoutChanged();
    Q_EMIT currentRectChanged();
    updateAll();
}

void MachineDiagram::updateLive()
{
    m_view.setLive(isVisible());
}

// Only the present states show a time.
void MachineDiagram::updateAll()
{
    // An update() without a rectangle would be forgotten if one with a rectangle followed before
    // the item is painted.
    update(boundingRect().toAlignedRect());
}

void MachineDiagram::updateTimes()
{
    if (m_picture == nullptr)
        return;
    const std::vector<QRectF>& nodes = m_picture->layout().nodes();
    for (int i = 0; i < int(m_picture->graph().states.size()); ++i) {
        if (!m_view.track()->isPresent(i))
            continue;
        const QRectF rect = nodes[size_t(i)];
        const QRectF shown(rect.topLeft() * m_zoom + pictureOrigin(), rect.size() * m_zoom);
        update(shown.toAlignedRect());
    }
}

void MachineDiagram::paint(QPainter* painter)
{
    if (m_picture == nullptr)
        return;
    const QRectF view(-pictureOrigin() / m_zoom, QSizeF(width(), height()) / m_zoom);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->scale(m_zoom, m_zoom);
    painter->translate(-view.topLeft());
    DiagramPainter(*painter, *m_picture, *m_view.track(),
                   {m_backgroundColor, m_stateColor, m_currentColor, m_currentTextColor,
                    m_takenColor, m_textColor, m_lineColor},
                   view)
        .paint();
}

} // namespace zeltools::quick
