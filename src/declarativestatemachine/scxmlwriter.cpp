#include "declarativestatemachine/scxmlwriter.h"

#include "declarativestatemachine/scxmlelements_p.h"
#include "declarativestatemachine/scxmlplan_p.h"

#include <QXmlStreamWriter>

#include <algorithm>
#include <limits>

namespace zeltools::declarativestatemachine
{

namespace
{

using Attributes = QVector<std::pair<const char*, QString>>;

// As long as a DelayedTransition waits.
QString delayText(std::chrono::milliseconds delay)
{
    using std::chrono::milliseconds;
    const milliseconds longest(std::numeric_limits<int>::max());
    return QStringLiteral("%1ms").arg(std::clamp(delay, milliseconds(0), longest).count());
}

bool isSurrogatePair(const QString& text, int place)
{
    return place >= 0 && place + 1 < text.size() && text[place].isHighSurrogate() &&
           text[place + 1].isLowSurrogate();
}

// The text with U+FFFD for what XML cannot hold.
QString xmlText(QString text)
{
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool isControl = c < QLatin1Char(' ') && c != QLatin1Char('\t') &&
                               c != QLatin1Char('\n') && c != QLatin1Char('\r');
        const bool isLone =
            c.isSurrogate() && !isSurrogatePair(text, c.isHighSurrogate() ? i : i - 1);
        if (isControl || isLone || c >= QChar(0xfffe))
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

class ScxmlWriter
{
public:
    ScxmlWriter(const StateMachineDescription& description, ScxmlExtensions extensions)
        : m_description(description)
        , m_index(description)
        , m_plan(m_index)
        , m_isExtended(extensions == ScxmlExtensions::Written)
        , m_xml(&m_text)
    {
        m_xml.setAutoFormatting(true);
    }

    QString write()
    {
        m_xml.writeStartDocument();
        writeHead();
        for (int i = 0; i < int(m_index.states().size()); ++i) {
            if (m_plan.state(i).isWritten)
                writeState(i);
        }
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

    void writeHead()
    {
        const QString id = ScxmlPlan::identifier(m_description.name);
        start("scxml", {{"xmlns", scxmlNamespace},
                        {"version", QStringLiteral("1.0")},
                        {"datamodel", QStringLiteral("ecmascript")},
                        {"name", id},
                        {"initial", m_plan.initial()}});
        if (m_isExtended) {
            m_xml.writeAttribute(QLatin1String("xmlns:zel"), scxmlExtensionNamespace);
            if (m_description.name != id)
                m_xml.writeAttribute(QLatin1String("zel:name"), xmlText(m_description.name));
        }
        start("datamodel");
        for (int i = 0; i < int(m_index.transitions().size()); ++i) {
            if (!m_plan.transition(i).guard.isEmpty())
                write("data",
                      {{"id", m_plan.transition(i).guard}, {"expr", QStringLiteral("true")}});
        }
        m_xml.writeEndElement();
    }

    void writeState(int number)
    {
        const DescriptionIndex::State& state = m_index.state(number);
        const ScxmlPlan::State& planned = m_plan.state(number);
        Attributes attributes{{"id", planned.id}};
        if (planned.isHistory) {
            const bool isDeep = state.description->kind == StateDescription::DeepHistory;
            attributes.append(
                {"type", isDeep ? QStringLiteral("deep") : QStringLiteral("shallow")});
        } else if (planned.initialChild >= 0 && !isParallel(number) && !state.isFinal) {
            attributes.append({"initial", m_plan.state(planned.initialChild).id});
        }
        open(number, attributes);
        if (planned.isHistory)
            writeDefault(number);
        else
            writeTransitions(number);
    }

    bool isParallel(int number) const
    {
        return number >= 0 && m_index.state(number).description->kind == StateDescription::Parallel;
    }

    // The element stays open until the first state that is not inside it. Deep states are not
    // indented, since the blanks before them would need quadratic space.
    void open(int number, const Attributes& attributes)
    {
        const DescriptionIndex::State& state = m_index.state(number);
        while (!m_open.empty() && m_open.back() != state.parent) {
            m_xml.writeEndElement();
            m_open.pop_back();
        }
        constexpr size_t deepestIndented = 64;
        m_xml.setAutoFormatting(m_open.size() < deepestIndented);
        m_open.push_back(number);
        start(elementOf(number), attributes);
        if (m_isExtended && state.description->name != m_plan.state(number).id)
            m_xml.writeAttribute(QLatin1String("zel:name"), xmlText(state.description->name));
        if (m_isExtended && state.description->timeLimit.count() > 0)
            m_xml.writeAttribute(QLatin1String("zel:timeLimit"),
                                 delayText(state.description->timeLimit));
    }

    // The standard knows no final state among parallel ones.
    const char* elementOf(int number) const
    {
        const DescriptionIndex::State& state = m_index.state(number);
        if (state.isFinal)
            return isParallel(state.parent) ? "state" : "final";
        if (m_plan.state(number).isHistory)
            return "history";
        return isParallel(number) ? "parallel" : "state";
    }

    template <typename Visitor>
    void eachTransition(int source, const Visitor& visit)
    {
        const auto& transitions = m_index.transitions();
        for (size_t i = size_t(m_index.state(source).firstTransition);
             i < transitions.size() && transitions[i].source == source; ++i) {
            if (m_plan.transition(int(i)).isWritten)
                visit(*transitions[i].description, m_plan.transition(int(i)));
        }
    }

    void writeTransitions(int source)
    {
        if (!m_plan.state(source).enteredEvent.isEmpty()) {
            start("onentry");
            write("raise", {{"event", m_plan.state(source).enteredEvent}});
            m_xml.writeEndElement();
        }
        eachTransition(source, [this](const auto& description, const auto& planned) {
            if (description.type == TransitionDescription::Timeout)
                writeTimeout(planned.event, description.timeout);
            const Attributes all{
                {"event", planned.event}, {"cond", planned.guard}, {"target", planned.target}};
            Attributes attributes;
            for (const auto& [name, value] : all) {
                if (!value.isEmpty())
                    attributes.append({name, value});
            }
            writeTransition(description, attributes);
        });
    }

    void writeTransition(const TransitionDescription& description, const Attributes& attributes)
    {
        start("transition", attributes);
        if (!description.description.isEmpty())
            write("log", {{"label", xmlText(description.description)}});
        m_xml.writeEndElement();
    }

    // The state sends the event after its timeout and cancels it when it is left earlier.
    void writeTimeout(const QString& event, std::chrono::milliseconds timeout)
    {
        start("onentry");
        write("send", {{"event", event}, {"id", event}, {"delay", delayText(timeout)}});
        m_xml.writeEndElement();
        start("onexit");
        write("cancel", {{"sendid", event}});
        m_xml.writeEndElement();
    }

    // The standard demands a default target of each history.
    void writeDefault(int history)
    {
        bool isWritten = false;
        eachTransition(history, [this, &isWritten](const auto& description, const auto& planned) {
            if (description.type == TransitionDescription::Direct && !planned.target.isEmpty() &&
                !isWritten) {
                isWritten = true;
                writeTransition(description, {{"target", planned.target}});
            }
        });
        if (isWritten)
            return;
        const int initial = m_plan.state(m_index.state(history).parent).initialChild;
        Attributes attributes{{"target", m_plan.state(initial).id}};
        if (m_isExtended)
            attributes.append({"zel:implied", QStringLiteral("true")});
        writeTransition({}, attributes);
    }

    const StateMachineDescription& m_description;
    const DescriptionIndex m_index;
    const ScxmlPlan m_plan;
    const bool m_isExtended;
    std::vector<int> m_open;
    QString m_text;
    QXmlStreamWriter m_xml;
};

} // namespace

QString toScxml(const StateMachineDescription& description, ScxmlExtensions extensions)
{
    return ScxmlWriter(description, extensions).write();
}

} // namespace zeltools::declarativestatemachine
