#include "declarativestatemachine/scxmlwriter.h"

#include "declarativestatemachine/signalutils.h"

#include <QStringList>
#include <QXmlStreamWriter>

namespace zeltools::declarativestatemachine
{

namespace
{

using Attributes = QVector<std::pair<const char*, QString>>;

QString identifierOf(const QString& text)
{
    QString id;
    for (const QChar c : text) {
        const bool mayStart = c.isLetter() || c == QLatin1Char('_');
        const bool mayFollow =
            mayStart || c.isDigit() || c == QLatin1Char('.') || c == QLatin1Char('-');
        if (!mayFollow || (id.isEmpty() && !mayStart))
            id += QLatin1Char('_');
        if (mayFollow)
            id += c;
    }
    return id.isEmpty() ? QStringLiteral("_") : id;
}

QStringList identifiersOf(const std::vector<StateDescription>& states)
{
    QStringList ids;
    for (const StateDescription& state : states) {
        QString id = identifierOf(state.name);
        while (ids.contains(id))
            id += QLatin1Char('_');
        ids.append(id);
    }
    return ids;
}

void start(QXmlStreamWriter& xml, const char* name, const Attributes& attributes)
{
    xml.writeStartElement(QLatin1String(name));
    for (const auto& [attribute, value] : attributes)
        xml.writeAttribute(QLatin1String(attribute), value);
}

void write(QXmlStreamWriter& xml, const char* name, const Attributes& attributes)
{
    start(xml, name, attributes);
    xml.writeEndElement();
}

// The event that a timeout sends, from the moment the state is entered until it is left.
void writeTimeout(QXmlStreamWriter& xml, const QString& event, std::chrono::milliseconds timeout)
{
    start(xml, "onentry", {});
    write(
        xml, "send",
        {{"event", event}, {"id", event}, {"delay", QStringLiteral("%1ms").arg(timeout.count())}});
    xml.writeEndElement();
    start(xml, "onexit", {});
    write(xml, "cancel", {{"sendid", event}});
    xml.writeEndElement();
}

void writeTransition(QXmlStreamWriter& xml, const TransitionDescription& transition,
                     const QString& timeoutEvent, const QString& target)
{
    Attributes attributes;
    if (transition.type == TransitionDescription::Timeout) {
        writeTimeout(xml, timeoutEvent, transition.timeout);
        attributes.append({"event", timeoutEvent});
    } else if (transition.type == TransitionDescription::Signal) {
        QString signal = signalutils::classAndSignalName(transition.obj, transition.signal, false);
        signal.replace(QLatin1String("::"), QLatin1String("."));
        attributes.append({"event", identifierOf(signal)});
        if (transition.guard)
            attributes.append({"cond", QStringLiteral("guard")});
    }
    attributes.append({"target", target});
    start(xml, "transition", attributes);
    if (!transition.description.isEmpty())
        write(xml, "log", {{"label", transition.description}});
    xml.writeEndElement();
}

void writeState(QXmlStreamWriter& xml, const StateMachineDescription& description, int index,
                const QStringList& ids)
{
    const bool isFinal = description.isFinal(size_t(index));
    start(xml, isFinal ? "final" : "state", {{"id", ids[index]}});
    int number = 0;
    for (const TransitionDescription& transition : description.states[size_t(index)].transitions) {
        const int target = description.indexOf(transition.targetState);
        if (isFinal || target < 0 || !transition.isOfKnownType())
            continue;
        writeTransition(xml, transition,
                        QStringLiteral("timeout.%1.%2").arg(ids[index]).arg(++number), ids[target]);
    }
    xml.writeEndElement();
}

} // namespace

QString toScxml(const StateMachineDescription& description)
{
    const QStringList ids = identifiersOf(description.states);
    QString text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    start(xml, "scxml",
          {{"xmlns", QStringLiteral("http://www.w3.org/2005/07/scxml")},
           {"version", QStringLiteral("1.0")},
           {"datamodel", QStringLiteral("ecmascript")},
           {"name", identifierOf(description.name)},
           {"initial", ids.value(0)}});
    start(xml, "datamodel", {});
    write(xml, "data", {{"id", QStringLiteral("guard")}, {"expr", QStringLiteral("true")}});
    xml.writeEndElement();
    for (int index = 0; index < ids.size(); ++index)
        writeState(xml, description, index, ids);
    xml.writeEndDocument();
    return text;
}

} // namespace zeltools::declarativestatemachine
