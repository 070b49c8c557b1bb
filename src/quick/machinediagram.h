#pragma once

#include <zeltools/quick/machineview.h>
#include <zeltools/zeltools_export.h>

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>

#include <memory>

namespace zeltools::quick
{

class DiagramPicture;

/// The picture of a machine that the host offers (see ViewedMachines), which is live: present
/// states are filled and show how long they have been present; transitions that have fired are bold
/// and have a count, which are those of MachineView.
///
/// The item is a window on the picture, so that a large picture needs no large item: it shows the
/// part that begins at contentX, contentY, and centres a smaller picture. The picture leads down or
/// to the right, whichever shows more of it, and it is not mirrored for languages that are written
/// from right to left. It is painted only when something has changed, at most once in 16 ms, and
/// when a second of the time in a state has passed while the item is visible.
class ZELTOOLS_EXPORT MachineDiagram : public QQuickPaintedItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MachineDiagram)
    Q_PROPERTY(QObject* machine READ machine WRITE setMachine NOTIFY machineChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY layoutChanged)
    Q_PROPERTY(qreal contentWidth READ contentWidth NOTIFY layoutChanged)
    /// The height of the picture at the present zoom.
    Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY layoutChanged)
    Q_PROPERTY(qreal fitZoom READ fitZoom NOTIFY layoutChanged)
    Q_PROPERTY(QRectF currentRect READ currentRect NOTIFY currentRectChanged)
    Q_PROPERTY(qreal zoom READ zoom WRITE setZoom NOTIFY layoutChanged)
    /// The left edge of the visible part, from 0 to the width of the picture.
    Q_PROPERTY(qreal contentX READ contentX WRITE setContentX NOTIFY contentMoved)
    /// The top edge of the visible part, from 0 to the height of the picture.
    Q_PROPERTY(qreal contentY READ contentY WRITE setContentY NOTIFY contentMoved)
    /// The font of all texts in the picture.
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY lookChanged)
    /// The colour of the background.
    Q_PROPERTY(QColor backgroundColor MEMBER m_backgroundColor NOTIFY lookChanged)
    /// The colour of states.
    Q_PROPERTY(QColor stateColor MEMBER m_stateColor NOTIFY lookChanged)
    /// The colour of the present states.
    Q_PROPERTY(QColor currentColor MEMBER m_currentColor NOTIFY lookChanged)
    /// The colour of texts in the present states.
    Q_PROPERTY(QColor currentTextColor MEMBER m_currentTextColor NOTIFY lookChanged)
    /// The colour of the path that the machine has taken.
    Q_PROPERTY(QColor takenColor MEMBER m_takenColor NOTIFY lookChanged)
    /// The colour of texts.
    Q_PROPERTY(QColor textColor MEMBER m_textColor NOTIFY lookChanged)
    /// The colour of lines and arrows.
    Q_PROPERTY(QColor lineColor MEMBER m_lineColor NOTIFY lookChanged)

public:
    /// A diagram without a machine is empty.
    explicit MachineDiagram(QQuickItem* parent = nullptr);
    ~MachineDiagram() override;

    /// The machine that is shown, one of MachinesModel; null for none.
    QObject* machine() const { return m_view.machine(); }
    void setMachine(QObject* machine) { m_view.setMachine(machine); }
    /// Why there is no picture, in the language of the screen; empty if there is one.
    QString problem() const;

    /// The size of the whole picture at the present zoom; 0 without one.
    qreal contentWidth() const;
    qreal contentHeight() const;
    /// The zoom at which the whole picture fits into the item, at most 1.5.
    qreal fitZoom() const;
    /// The state that was entered last, in the coordinates of contentX and contentY; empty if there
    /// is none. A page scrolls there.
    QRectF currentRect() const;

    /// From 0.1 to 4; 1, the default, shows texts in the size of the font.
    qreal zoom() const { return m_zoom; }
    void setZoom(qreal zoom);
    qreal contentX() const { return m_content.x(); }
    void setContentX(qreal x);
    qreal contentY() const { return m_content.y(); }
    void setContentY(qreal y);
    QFont font() const { return m_font; }
    void setFont(const QFont& font);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void machineChanged();
    void layoutChanged();
    void contentMoved();
    void currentRectChanged();
    void lookChanged();

protected:
    void componentComplete() override;

private:
    void onMachineChanged();
    void makePicture();
    void fitPicture();
    void updateAll();
    void updateTimes();
    void updateLive();
    QPointF pictureOrigin() const;

    MachineView m_view;
    std::unique_ptr<DiagramPicture> m_picture; // null without one
    qreal m_zoom = 1;
    QPointF m_content;
    QFont m_font;
    QColor m_backgroundColor = QStringLiteral("#12161c");
    QColor m_stateColor = QStringLiteral("#252d38");
    QColor m_currentColor = QStringLiteral("#4fb3bf");
    QColor m_currentTextColor = QStringLiteral("#062b30");
    QColor m_takenColor = QStringLiteral("#4fb3bf");
    QColor m_textColor = QStringLiteral("#f0f3f6");
    QColor m_lineColor = QStringLiteral("#a3b0bf");
};

} // namespace zeltools::quick
