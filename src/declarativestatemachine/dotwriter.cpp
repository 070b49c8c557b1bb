#include "declarativestatemachine/dotwriter.h"

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/signalutils.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTextStream>

namespace zeltools::declarativestatemachine
{

namespace
{

// An SVG document must not contain control characters, not even as entities, and Graphviz reads
// entities such as "&lt;" in a label.
QString quoted(QString text)
{
    static const QRegularExpression s_entity(QStringLiteral("&(?=#?\\w+;)"));
    text.replace(s_entity, QStringLiteral("&amp;"));
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    for (QChar& c : text) {
        if (c < QLatin1Char(' '))
            c = QChar(0x2400 + c.unicode()); // the character's symbol
        else if (c.unicode() >= 0xfffe)
            c = QChar::ReplacementCharacter;
    }
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString triggerText(const TransitionDescription& transition)
{
    switch (transition.type) {
    case TransitionDescription::Direct:
        return QStringLiteral("direct");
    case TransitionDescription::Timeout:
        return QStringLiteral("after %1 ms").arg(transition.timeout.count());
    case TransitionDescription::Signal:
        return signalutils::classAndSignalName(transition.obj, transition.signal, true);
    }
    return QStringLiteral("never");
}

QString labelOf(const TransitionDescription& transition)
{
    QString label = transition.description;
    if (!label.isEmpty())
        label += QLatin1Char('\n');
    label += triggerText(transition);
    if (transition.hasGuard())
        label += QLatin1String(" [guard]");
    if (transition.action || transition.argumentsAction)
        label += QLatin1String(" / action");
    return label;
}

// The transitions without a target are lines inside of the box, below the name of the state.
QString labelOf(const StateDescription& state)
{
    QString label = state.name;
    if (state.isHistory())
        label.prepend(QLatin1String(state.kind == StateDescription::DeepHistory ? "H*\n" : "H\n"));
    if (state.timeLimit.count() > 0)
        label += QStringLiteral("\nat most %1 ms").arg(state.timeLimit.count());
    for (const TransitionDescription& transition : state.transitions) {
        if (transition.isTargetless)
            label += QLatin1String("\ninside: ") + labelOf(transition);
    }
    return label;
}

// A state with children is a cluster with a point inside. Graphviz has no edges between clusters,
// but cuts an edge at the border of one: those to the state end at the point, which is above its
// children, and those from it begin at its last descendant, so that they leave it downwards.
class DotWriter
{
public:
    explicit DotWriter(const StateMachineDescription& description)
        : m_description(description)
        , m_index(description)
        , m_out(&m_text)
    {
    }

    QString write()
    {
        m_out << "digraph " << quoted(m_description.name) << " {\n";
        if (m_index.states().size() > m_description.states.size())
            m_out << "    compound=true;\n";
        m_out << "    node [shape=box, style=rounded];\n";
        for (int i = 0; i < int(m_index.states().size()); ++i) {
            closeClusters(m_index.state(i).parent);
            if (m_index.hasChildren(i))
                openCluster(i);
            else
                writeNode(i);
        }
        closeClusters(-1);
        if (m_index.initialChildOf(-1) >= 0)
            line() << "start [shape=point];\n";
        for (int i = -1; i < int(m_index.states().size()); ++i)
            writeInitialEdge(i);
        for (const DescriptionIndex::Transition& transition : m_index.transitions())
            writeEdge(transition);
        m_out << "}\n";
        m_out.flush();
        return m_text;
    }

private:
    // Deep states have the indentation of the tenth level, which keeps the text short.
    QTextStream& line()
    {
        return m_out << QString(4 * (1 + std::min(m_clusters.size(), 10)), QLatin1Char(' '));
    }

    bool isRegion(int number) const
    {
        const int parent = m_index.state(number).parent;
        return parent >= 0 && m_index.state(parent).description->kind == StateDescription::Parallel;
    }

    void closeClusters(int parent)
    {
        while (!m_clusters.isEmpty() && m_clusters.last() != parent) {
            m_clusters.removeLast();
            line() << "}\n";
        }
    }

    void openCluster(int number)
    {
        const bool isParallel =
            m_index.state(number).description->kind == StateDescription::Parallel;
        line() << "subgraph cluster_" << number << " {\n";
        m_clusters.append(number);
        line() << "label=" << quoted(labelOf(*m_index.state(number).description)) << ";\n";
        line() << "style=" << (isRegion(number) ? "\"rounded,dashed\"" : "rounded") << ";\n";
        line() << 's' << number << " [shape=point" << (isParallel ? ", style=invis];\n" : "];\n");
    }

    void writeNode(int number)
    {
        const StateDescription& state = *m_index.state(number).description;
        QStringList attributes{QLatin1String("label=") + quoted(labelOf(state))};
        if (state.isHistory())
            attributes << QStringLiteral("shape=ellipse");
        else if (isRegion(number))
            attributes << QStringLiteral("style=\"rounded,dashed\"");
        if (m_index.state(number).isFinal)
            attributes << QStringLiteral("peripheries=2");
        line() << 's' << number << " [" << attributes.join(QStringLiteral(", ")) << "];\n";
    }

    void writeInitialEdge(int number)
    {
        const int child = m_index.initialChildOf(number);
        const bool isParallel =
            number >= 0 && m_index.state(number).description->kind == StateDescription::Parallel;
        if (child < 0 || isParallel)
            return;
        line() << (number < 0 ? QStringLiteral("start") : QStringLiteral("s%1").arg(number))
               << " -> s" << child;
        if (m_index.hasChildren(child))
            m_out << " [lhead=cluster_" << child << ']';
        m_out << ";\n";
    }

    void writeEdge(const DescriptionIndex::Transition& transition)
    {
        if (transition.description->isTargetless)
            return;
        const int source = transition.source;
        const int target = transition.target;
        const bool isLeaving = target < 0 || !m_index.contains(source, target);
        const bool isEntering = target >= 0 && !m_index.contains(target, source);
        QStringList attributes;
        if (target < 0)
            attributes << QStringLiteral("style=dashed");
        if (isEntering && m_index.hasChildren(target))
            attributes << QStringLiteral("lhead=cluster_%1").arg(target);
        if (isLeaving && m_index.hasChildren(source))
            attributes << QStringLiteral("ltail=cluster_%1").arg(source);
        attributes << QLatin1String("label=") + quoted(labelOf(*transition.description));
        line() << 's' << (isLeaving ? lastNodeOf(source) : source) << " -> ";
        if (target < 0)
            m_out << quoted(transition.description->targetState + QLatin1Char('?'));
        else
            m_out << 's' << target;
        m_out << " [" << attributes.join(QStringLiteral(", ")) << "];\n";
    }

    // A history is at the top like the point of the state.
    int lastNodeOf(int number) const
    {
        int last = m_index.state(number).end - 1;
        while (last > number && m_index.state(last).description->isHistory())
            --last;
        return last;
    }

    const StateMachineDescription& m_description;
    const DescriptionIndex m_index;
    QString m_text;
    QTextStream m_out;
    QVector<int> m_clusters; // those that are open, from the outermost to the innermost one
};

} // namespace

QString toDot(const StateMachineDescription& description)
{
    return DotWriter(description).write();
}

} // namespace zeltools::declarativestatemachine
