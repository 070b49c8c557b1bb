#include "declarativestatemachine/scxmldocument_p.h"

#include "declarativestatemachine/scxmlparts_p.h"

namespace zeltools::declarativestatemachine
{

namespace
{

using State = ScxmlDocument::State;

constexpr int maximumSize_B = 16 * 1024 * 1024;
constexpr size_t maximumStates = 100000;
constexpr int maximumDepth = 64;

QString text(const char* latin1)
{
    return QLatin1String(latin1);
}

class ScxmlParser
{
public:
    explicit ScxmlParser(const QString& text)
        : m_elements(text)
    {
    }

    std::optional<ScxmlDocument> read(QString& error)
    {
        readMachine();
        readStates();
        m_elements.finish();
        if (!m_elements.isRefused())
            return std::move(m_document);
        error = m_elements.error();
        return std::nullopt;
    }

private:
    using Attributes = ScxmlElements::Attributes;

    State& state(int number) { return m_document.states[size_t(number)]; }

    void readMachine()
    {
        if (!m_elements.next() || !m_elements.isAt("scxml"))
            m_elements.refuse(
                QStringLiteral("there is no <scxml> of the namespace %1").arg(scxmlNamespace));
        const Attributes found =
            m_elements.attributes({text("version!"), text("datamodel"), text("binding"),
                                   text("name"), text("initial"), text("zel:name")});
        m_elements.choice(found, "version", {text("1.0")});
        m_elements.choice(found, "datamodel", {text("ecmascript"), text("null")});
        m_elements.choice(found, "binding", {text("early")});
        State machine;
        machine.line = m_elements.line();
        machine.name = found.value(text("zel:name"), found.value(text("name")));
        if (machine.name == QLatin1String("_")) // as toScxml() writes no name
            machine.name.clear();
        machine.initial = found.value(text("initial"));
        m_document.states.push_back(machine);
    }

    // The elements of states are read without recursion.
    void readStates()
    {
        int current = 0;
        while (current >= 0 && !m_elements.isRefused()) {
            if (!m_elements.next())
                current = state(current).parent;
            else if (const auto kind = stateKind())
                current = addState(*kind, current);
            else
                readPart(state(current), current == 0);
        }
    }

    std::optional<StateDescription::Kind> stateKind() const
    {
        if (m_elements.isAt("state"))
            return StateDescription::Ordinary;
        if (m_elements.isAt("parallel"))
            return StateDescription::Parallel;
        if (m_elements.isAt("final"))
            return StateDescription::Final;
        if (m_elements.isAt("history"))
            return StateDescription::ShallowHistory; // or a deep one
        return std::nullopt;
    }

    int addState(StateDescription::Kind kind, int parent)
    {
        State added;
        added.kind = kind;
        added.parent = parent;
        added.depth = state(parent).depth + 1;
        added.line = m_elements.line();
        if (!isAllowed(added))
            m_elements.refuseElement();
        if (added.depth > maximumDepth)
            m_elements.refuse(QStringLiteral("there are more than 64 levels of states"));
        if (m_document.states.size() > maximumStates)
            m_elements.refuse(QStringLiteral("there are more than 100,000 states"));
        readAttributes(added);
        m_document.states.push_back(added);
        return int(m_document.states.size()) - 1;
    }

    bool isAllowed(const State& added)
    {
        const State& parent = state(added.parent);
        if (parent.kind == StateDescription::Parallel && added.kind == StateDescription::Final)
            return false;
        return parent.kind != StateDescription::Final && !parent.isHistory() &&
               !(added.parent == 0 && added.isHistory());
    }

    void readAttributes(State& added)
    {
        QStringList allowed{text("id!"), text("zel:name"), text("zel:timeLimit")};
        if (added.kind == StateDescription::Ordinary)
            allowed.append(text("initial"));
        if (added.isHistory())
            allowed.append(text("type"));
        const Attributes found = m_elements.attributes(allowed);
        if (added.isHistory() &&
            m_elements.choice(found, "type", {text("shallow"), text("deep")}) ==
                QLatin1String("deep"))
            added.kind = StateDescription::DeepHistory;
        added.id = found.value(text("id"));
        added.name = found.value(text("zel:name"), added.id);
        added.initial = found.value(text("initial"));
        added.timeLimit = m_elements.time(found, "zel:timeLimit");
    }

    void readPart(State& around, bool isMachine)
    {
        const bool isState = !isMachine && (around.kind == StateDescription::Ordinary ||
                                            around.kind == StateDescription::Parallel);
        if (m_elements.isAt("transition") && (isState || around.isHistory()))
            around.transitions.push_back(m_parts.readTransition(around.isHistory()));
        else if (m_elements.isAt("onentry") && isState)
            m_parts.readEntry(around);
        else if (m_elements.isAt("onexit") && isState)
            m_parts.readExit(around);
        else if (m_elements.isAt("initial") && isState)
            m_parts.readInitial(around);
        else if (m_elements.isAt("datamodel") && isMachine)
            m_parts.readData();
        else
            m_elements.refuseElement();
    }

    ScxmlElements m_elements;
    ScxmlParts m_parts{m_elements};
    ScxmlDocument m_document;
};

} // namespace

std::optional<ScxmlDocument> ScxmlDocument::read(const QByteArray& text, QString& error)
{
    if (text.size() > maximumSize_B) {
        error = QStringLiteral("line 1: the document is larger than 16 MiB");
        return std::nullopt;
    }
    const QString decoded = QString::fromUtf8(text);
    if (decoded.toUtf8() != text) {
        error = QStringLiteral("line 1: the document is not UTF-8 without a byte order mark");
        return std::nullopt;
    }
    return ScxmlParser(decoded).read(error);
}

} // namespace zeltools::declarativestatemachine
