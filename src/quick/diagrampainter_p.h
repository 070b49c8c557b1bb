#pragma once

#include "quick/diagrampicture_p.h"
#include "quick/machinetrack_p.h"

#include <QColor>

class QPainter;
class QPainterPath;

namespace zeltools::quick
{

struct DiagramColors
{
    QColor background;
    QColor state;
    QColor current;
    QColor currentText;
    QColor taken;
    QColor text;
    QColor line;
};

/// Paints the part of a picture that is inside a rectangle, with what the machine has done.
class DiagramPainter
{
public:
    DiagramPainter(QPainter& painter, const DiagramPicture& picture, const MachineTrack& track,
                   const DiagramColors& colors, const QRectF& visible);

    void paint();

private:
    void paintFrames();
    void paintFrame(int state);
    void paintEdges(bool isTaken);
    void paintEdge(int edge, bool isTaken);
    void paintArrow(const DiagramLayout::Edge& edge, bool isLoop);
    void paintLabels();
    void paintLabel(int edge);
    void paintBoxes();
    void paintBox(int state);
    void paintHistory(int state);
    void paintTime(int state, const QRectF& place, int alignment);
    QPainterPath pathOf(const DiagramLayout::Edge& edge, bool isLoop) const;
    bool isTaken(int edge) const;
    bool isVisible(const QRectF& rect) const { return m_visible.intersects(rect); }
    QColor fillOf(int frame) const;
    int frameOf(const MachineGraph::Transition& transition) const;
    QColor borderOf(int state) const;
    double widthOf(int state) const;

    QPainter& m_painter;
    const DiagramPicture& m_picture;
    const MachineGraph& m_graph;
    const DiagramLayout& m_layout;
    const MachineTrack& m_track;
    const DiagramColors& m_colors;
    const QRectF m_visible;
    const std::vector<bool> m_enteredByDefault;
    const MachineTrack::Time m_now = MachineTrack::Clock::now();
};

} // namespace zeltools::quick
