#include "declarativestatemachine/dotwriter.h"

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/dotlabels_p.h"
#include "declarativestatemachine/machinerecording.h"
#include "declarativestatemachine/picturemarks_p.h"

#include <QStringList>
#include <QTextStream>

#include <algorithm>

namespace zeltools::declarativestatemachine
{

namespace
{

using dotlabels::quoted;

// A state with children is a cluster with a point inside. Graphviz has no edges between clusters,
// but cuts an edge at the border of one: those to the state end at the point, which is above its
// children, and those from it begin at its last descendant, so that they leave it downwards.
class DotWriter
{
public:
    DotWriter(const StateMachineDescription& description, const DescriptionIndex& index,
              const PictureMarks& marks)
        : m_index(index)
        , m_marks(marks)
        , m_out(&m_text)
    {
        m_out << "digraph " << quoted(description.name) << " {\n";
        if (index.states().size() > description.states.size())
            line() << "compound=true;\n";
        if (!marks.caption().isEmpty())
            line() << "label=" << quoted(marks.caption()) << ";\n";
        line() << "node [shape=box, style=rounded];\n";
    }

    QString write()
    {
        const int states = static_cast<int>(m_index.states().size());
        for (int i = 0; i < states; ++i) {
            closeClusters(m_index.state(i).parent);
            if (m_index.hasChildren(i))
                openCluster(i);
            else
                writeNode(i);
        }
        closeClusters(-1);
        if (m_index.initialChildOf(-1) >= 0)
            line() << "start [shape=point];\n";
        for (int i = -1; i < states; ++i)
            writeInitialEdges(i);
        for (int i = 0; i < int(m_index.transitions().size()); ++i)
            writeEdge(i);
        m_out << "}\n";
        m_out.flush();
        return m_text;
    }

private:
    // Deep states have the indentation of the tenth level, which keeps the text short.
    QTextStream& line()
    {
        return m_out << QString(4 * (1 + std::min(int(m_clusters.size()), 10)), QLatin1Char(' '));
    }

    void writeAttributes(const QStringList& attributes)
    {
        if (!attributes.isEmpty())
            m_out << " [" << attributes.join(QStringLiteral(", ")) << ']';
        m_out << ";\n";
    }

    bool isParallel(int number) const
    {
        return number >= 0 && m_index.state(number).description->kind == StateDescription::Parallel;
    }

    QStringList attributesOf(int number) const
    {
        const bool isHistory = m_index.state(number).description->isHistory();
        QStringList styles{isHistory ? QStringLiteral("solid") : QStringLiteral("rounded")};
        if (isParallel(m_index.state(number).parent) && !isHistory)
            styles << QStringLiteral("dashed");
        if (!m_marks.caption().isEmpty())
            styles << QStringLiteral("filled");
        QStringList attributes{QLatin1String("label=") +
                               quoted(dotlabels::labelOf(m_index, number, m_marks))};
        if (isHistory)
            attributes << QStringLiteral("shape=ellipse");
        if (styles.size() > 1)
            attributes << QStringLiteral("style=\"%1\"").arg(styles.join(QLatin1Char(',')));
        else if (m_index.hasChildren(number))
            attributes << QStringLiteral("style=rounded");
        return attributes + m_marks.stateAttributes(number, m_index.hasChildren(number));
    }

    void writeNode(int number)
    {
        QStringList attributes = attributesOf(number);
        if (m_index.state(number).isFinal)
            attributes << QStringLiteral("peripheries=2");
        line() << 's' << number;
        writeAttributes(attributes);
    }

    void openCluster(int number)
    {
        line() << "subgraph cluster_" << number << " {\n";
        m_clusters.append(number);
        line() << "graph";
        writeAttributes(attributesOf(number));
        line() << 's' << number << " [shape=point];\n";
    }

    void closeClusters(int parent)
    {
        while (!m_clusters.isEmpty() && m_clusters.last() != parent) {
            m_clusters.removeLast();
            line() << "}\n";
        }
    }

    // To the initial child, or to all children of a parallel state.
    void writeInitialEdges(int number)
    {
        int child = m_index.initialChildOf(number);
        const int end = isParallel(number) ? m_index.state(number).end : child + 1;
        for (; child >= 0 && child < end; child = m_index.state(child).end) {
            if (m_index.state(child).description->isHistory())
                continue;
            QStringList attributes = m_marks.initialAttributes(number);
            if (m_index.hasChildren(child))
                attributes << QStringLiteral("lhead=cluster_%1").arg(child);
            line() << (number < 0 ? QStringLiteral("start") : QStringLiteral("s%1").arg(number))
                   << " -> s" << child;
            writeAttributes(attributes);
        }
    }

    void writeEdge(int number)
    {
        const auto& [description, source, target] = m_index.transitions()[size_t(number)];
        if (description->isTargetless)
            return;
        const bool isLeaving = target < 0 || !m_index.contains(source, target);
        const bool isEntering = target >= 0 && !m_index.contains(target, source);
        QStringList attributes;
        if (target < 0)
            attributes << QStringLiteral("style=dashed");
        if (isEntering && m_index.hasChildren(target))
            attributes << QStringLiteral("lhead=cluster_%1").arg(target);
        if (isLeaving && m_index.hasChildren(source))
            attributes << QStringLiteral("ltail=cluster_%1").arg(source);
        attributes << QLatin1String("label=") +
                          quoted(dotlabels::labelOf(*description, m_marks.transitionText(number)));
        line() << 's' << (isLeaving ? lastNodeOf(source) : source) << " -> ";
        if (target < 0)
            m_out << quoted(description->targetState + QLatin1Char('?'));
        else
            m_out << 's' << target;
        writeAttributes(attributes + m_marks.transitionAttributes(number));
    }

    // A history is at the top like the point of the state.
    int lastNodeOf(int number) const
    {
        int last = m_index.state(number).end - 1;
        while (last > number && m_index.state(last).description->isHistory())
            --last;
        return last;
    }

    const DescriptionIndex& m_index;
    const PictureMarks& m_marks;
    QString m_text;
    QTextStream m_out;
    QVector<int> m_clusters; // those that are open, from the outermost to the innermost one
};

} // namespace

QString toDot(const StateMachineDescription& description)
{
    const DescriptionIndex index(description);
    return DotWriter(description, index, PictureMarks()).write();
}

QString toDot(const StateMachineDescription& description, const MachineRecording& recording)
{
    const DescriptionIndex index(description);
    const PictureMarks marks(index, recording);
    return DotWriter(description, index, marks).write();
}

} // namespace zeltools::declarativestatemachine
