#include "declarativestatemachine/dotlabels_p.h"

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/picturemarks_p.h"
#include "declarativestatemachine/signalutils.h"

#include <QRegularExpression>

namespace zeltools::declarativestatemachine::dotlabels
{

namespace
{

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

void appendLine(QString& label, const QString& line)
{
    if (!line.isEmpty())
        label += QLatin1Char('\n') + line;
}

} // namespace

// Graphviz reads entities such as "&lt;" in a label. An SVG document must not contain control
// characters, not even as entities.
QString quoted(QString text)
{
    static const QRegularExpression s_entity(QStringLiteral("&(?=#?\\w+;)"));
    text.replace(s_entity, QStringLiteral("&amp;"));
    for (QChar& c : text) {
        if (c < QLatin1Char(' ') && c != QLatin1Char('\n'))
            c = QChar(0x2400 + c.unicode());
        else if (c.unicode() >= 0xfffe)
            c = QChar::ReplacementCharacter;
    }
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString labelOf(const TransitionDescription& transition, const QString& timesFired)
{
    QString label = transition.description;
    if (!label.isEmpty())
        label += QLatin1Char('\n');
    label += triggerText(transition);
    if (transition.hasGuard())
        label += QLatin1String(" [guard]");
    if (transition.action || transition.argumentsAction)
        label += QLatin1String(" / action");
    appendLine(label, timesFired);
    return label;
}

QString labelOf(const DescriptionIndex& index, int state, const PictureMarks& marks)
{
    const StateDescription& description = *index.state(state).description;
    QString label = description.name;
    if (description.isHistory()) {
        const bool isDeep = description.kind == StateDescription::DeepHistory;
        label.prepend(QLatin1String(isDeep ? "H*\n" : "H\n"));
    }
    appendLine(label, marks.stateText(state));
    if (description.timeLimit.count() > 0)
        appendLine(label, QStringLiteral("at most %1 ms").arg(description.timeLimit.count()));
    int number = index.state(state).firstTransition;
    for (const TransitionDescription& transition : description.transitions) {
        if (transition.isTargetless) {
            appendLine(label, QLatin1String("inside: ") +
                                  labelOf(transition, marks.transitionText(number)));
        }
        ++number;
    }
    return label;
}

} // namespace zeltools::declarativestatemachine::dotlabels
