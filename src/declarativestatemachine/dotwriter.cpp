#include "declarativestatemachine/dotwriter.h"

#include "declarativestatemachine/signalutils.h"

#include <QTextStream>

namespace zeltools::declarativestatemachine
{

namespace
{

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
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
        return signalutils::classAndSignalName(transition.obj, transition.signal, true) +
               (transition.guard ? QLatin1String(" [guard]") : QLatin1String());
    }
    return QStringLiteral("never");
}

QString labelOf(const TransitionDescription& transition)
{
    const QString trigger = triggerText(transition);
    return transition.description.isEmpty() ? trigger
                                            : transition.description + QLatin1Char('\n') + trigger;
}

} // namespace

QString toDot(const StateMachineDescription& description)
{
    QString text;
    QTextStream out(&text);
    out << "digraph " << quoted(description.name) << " {\n"
        << "    node [shape=box, style=rounded];\n";
    for (size_t i = 0; i < description.states.size(); ++i) {
        out << "    s" << i << " [label=" << quoted(description.states[i].name)
            << (description.isFinal(i) ? ", peripheries=2];\n" : "];\n");
    }
    if (!description.states.empty())
        out << "    start [shape=point];\n    start -> s0;\n";
    for (size_t i = 0; i < description.states.size(); ++i) {
        for (const TransitionDescription& transition : description.states[i].transitions) {
            const int target = description.indexOf(transition.targetState);
            out << "    s" << i << " -> ";
            if (target >= 0)
                out << 's' << target << " [";
            else
                out << quoted(transition.targetState + QLatin1Char('?')) << " [style=dashed, ";
            out << "label=" << quoted(labelOf(transition)) << "];\n";
        }
    }
    out << "}\n";
    out.flush();
    return text;
}

} // namespace zeltools::declarativestatemachine
