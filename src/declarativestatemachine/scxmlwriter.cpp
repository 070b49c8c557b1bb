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

QString eventOf(const TransitionDescription& transition)
{
    QString signal = signalutils::classAndSignalName(transition.obj, transition.signal, false);
    return identifierOf(signal.replace(QLatin1String("::"), QLatin1String(".")));
}

class ScxmlWriter
{
public:
    explicit ScxmlWriter(const StateMachineDescription& description)
        : m_description(description)
        , m_ids(identifiersOf(description.states))
        , m_xml(&m_text)
    {
        m_xml.setAutoFormatting(true);
    }

    QString write()
    {
        m_xml.writeStartDocument();
        start("scxml", {{"xmlns", QStringLiteral("http://www.w3.org/2005/07/scxml")},
                        {"version", QStringLiteral("1.0")},
                        {"datamodel", QStringLiteral("ecmascript")},
                        {"name", identifierOf(m_description.name)},
                        {"initial", m_ids.value(0)}});
        start("datamodel");
        for (const StateDescription& state : m_description.states) {
            for (const TransitionDescription& transition : state.transitions) {
                if (transition.guard)
                    write("data", {{"id", nextGuard()}, {"expr", QStringLiteral("true")}});
            }
        }
        m_guards = 0;
        m_xml.writeEndElement();
        for (int i = 0; i < m_ids.size(); ++i)
            writeState(i);
        m_xml.writeEndDocument();
        return m_text;
    }

private:
    void start(const char* name, const Attributes& attributes = {})
    {
        m_xml.writeStartElement(QLatin1String(name));
        for (const auto& [attribute, value] : attributes)
            m_xml.writeAttribute(QLatin1String(attribute), value);
    }

    void write(const char* name, const Attributes& attributes)
    {
        start(name, attributes);
        m_xml.writeEndElement();
    }

    QString nextGuard() { return QStringLiteral("guard%1").arg(++m_guards); }

    void writeState(int index)
    {
        const bool isFinal = m_description.isFinal(size_t(index));
        start(isFinal ? "final" : "state", {{"id", m_ids[index]}});
        int number = 0;
        for (const TransitionDescription& transition :
             m_description.states[size_t(index)].transitions) {
            const int target = m_description.indexOf(transition.targetState);
            const QString guard = transition.guard ? nextGuard() : QString();
            ++number;
            if (!isFinal && target >= 0 && transition.isOfKnownType()) {
                writeTransition(transition, guard,
                                QStringLiteral("timeout.%1.%2").arg(m_ids[index]).arg(number),
                                m_ids[target]);
            }
        }
        m_xml.writeEndElement();
    }

    void writeTransition(const TransitionDescription& transition, const QString& guard,
                         const QString& timeoutEvent, const QString& target)
    {
        Attributes attributes;
        if (transition.type == TransitionDescription::Timeout) {
            writeTimeout(timeoutEvent, transition.timeout);
            attributes.append({"event", timeoutEvent});
        } else if (transition.type == TransitionDescription::Signal) {
            attributes.append({"event", eventOf(transition)});
            if (!guard.isEmpty())
                attributes.append({"cond", guard});
        }
        attributes.append({"target", target});
        start("transition", attributes);
        if (!transition.description.isEmpty())
            write("log", {{"label", transition.description}});
        m_xml.writeEndElement();
    }

    // The state sends the event after its timeout and cancels it when it is left earlier.
    void writeTimeout(const QString& event, std::chrono::milliseconds timeout)
    {
        start("onentry");
        write("send", {{"event", event},
                       {"id", event},
                       {"delay", QStringLiteral("%1ms").arg(timeout.count())}});
        m_xml.writeEndElement();
        start("onexit");
        write("cancel", {{"sendid", event}});
        m_xml.writeEndElement();
    }

    const StateMachineDescription& m_description;
    const QStringList m_ids;
    int m_guards = 0;
    QString m_text;
    QXmlStreamWriter m_xml;
};

} // namespace

QString toScxml(const StateMachineDescription& description)
{
    return ScxmlWriter(description).write();
}

} // namespace zeltools::declarativestatemachine
