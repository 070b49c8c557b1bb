#include "declarativestatemachine/scxmlparts_p.h"

namespace zeltools::declarativestatemachine
{

using Attributes = ScxmlElements::Attributes;

namespace
{

QString text(const char* latin1)
{
    return QLatin1String(latin1);
}

} // namespace

ScxmlParts::ScxmlParts(ScxmlElements& elements)
    : m_elements(elements)
{
}

ScxmlDocument::Transition ScxmlParts::readTransition(bool isDefault)
{
    const Attributes found = m_elements.attributes(
        {text("event"), text("cond"), text("target"), text("type"), text("zel:implied")});
    m_elements.choice(found, "type", {text("external")});
    ScxmlDocument::Transition transition;
    transition.line = m_elements.line();
    transition.event = m_elements.event(found);
    transition.condition = found.value(text("cond"));
    transition.target = found.value(text("target"));
    transition.isImplied = isDefault && found.contains(text("zel:implied"));
    while (m_elements.next()) {
        if (!m_elements.isAt("log") || !transition.label.isNull())
            m_elements.refuseElement();
        transition.label = m_elements.attributes({text("label!")}).value(text("label"));
        m_elements.finish();
    }
    return transition;
}

void ScxmlParts::readEntry(ScxmlDocument::State& around)
{
    m_elements.attributes({});
    while (m_elements.next()) {
        const bool isTimeout = m_elements.isAt("send");
        if (!isTimeout && !m_elements.isAt("raise"))
            m_elements.refuseElement();
        QStringList names{text("event!")};
        if (isTimeout)
            names += {text("id!"), text("delay!")};
        const Attributes found = m_elements.attributes(names);
        ScxmlDocument::SentEvent sent{m_elements.line(), m_elements.event(found),
                                      found.value(text("id"))};
        if (isTimeout)
            sent.delay = m_elements.time(found, "delay");
        around.sentEvents.push_back(sent);
        m_elements.finish();
    }
}

void ScxmlParts::readExit(ScxmlDocument::State& around)
{
    m_elements.attributes({});
    while (m_elements.next()) {
        if (!m_elements.isAt("cancel"))
            m_elements.refuseElement();
        around.canceledIds.append(m_elements.attributes({text("sendid!")}).value(text("sendid")));
        m_elements.finish();
    }
}

// The element says the same as the attribute.
void ScxmlParts::readInitial(ScxmlDocument::State& around)
{
    if (!around.initial.isNull() || around.kind == StateDescription::Parallel)
        m_elements.refuseElement();
    m_elements.attributes({});
    if (!m_elements.next() || !m_elements.isAt("transition"))
        m_elements.refuse(QStringLiteral("<initial> has no <transition>"));
    around.initial = m_elements.attributes({text("target!")}).value(text("target"));
    m_elements.finish();
    m_elements.finish();
}

// The data that toScxml() writes, so that its conditions have a value.
void ScxmlParts::readData()
{
    m_elements.attributes({});
    while (m_elements.next()) {
        if (!m_elements.isAt("data"))
            m_elements.refuseElement();
        const Attributes found = m_elements.attributes({text("id!"), text("expr!")});
        m_elements.choice(found, "expr", {text("true")});
        m_elements.finish();
    }
}

} // namespace zeltools::declarativestatemachine
