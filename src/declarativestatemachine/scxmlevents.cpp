#include "declarativestatemachine/scxmlevents_p.h"

namespace zeltools::declarativestatemachine
{

ScxmlEvents::ScxmlEvents(const ScxmlDocument& document, QString& error)
    : m_document(document)
    , m_error(error)
    , m_raises(document.states.size())
{
}

bool ScxmlEvents::fail(qint64 line, const QString& reason, const QString& event)
{
    m_error = QStringLiteral("line %1: ").arg(line) + reason.arg(event);
    return false;
}

bool ScxmlEvents::collect()
{
    for (size_t i = 0; i < m_document.states.size(); ++i) {
        for (const ScxmlDocument::Transition& transition : m_document.states[i].transitions) {
            if (!transition.event.isNull())
                m_received.insert(transition.event);
        }
        if (!collect(int(i)))
            return false;
    }
    return true;
}

bool ScxmlEvents::collect(int state)
{
    const ScxmlDocument::State& source = m_document.states[size_t(state)];
    QSet<QString> canceled(source.canceledIds.begin(), source.canceledIds.end());
    for (const ScxmlDocument::SentEvent& sent : source.sentEvents) {
        if (m_senders.contains(sent.event))
            return fail(sent.line, QStringLiteral("the event \"%1\" is sent twice"), sent.event);
        m_senders.insert(sent.event, {state, sent.delay, 0});
        if (!sent.delay)
            m_raises[size_t(state)] = true;
        else if (!canceled.remove(sent.id) || m_ids.contains(sent.id))
            return fail(sent.line, QStringLiteral("<onexit> does not cancel \"%1\" alone"),
                        sent.id);
        m_ids.insert(sent.id);
    }
    return canceled.isEmpty() ||
           fail(source.line, QStringLiteral("the state does not send \"%1\""), *canceled.begin());
}

bool ScxmlEvents::receive(int state, const ScxmlDocument::Transition& transition,
                          const Sender*& sender)
{
    sender = nullptr;
    if (!isAlone(transition.event, transition.line))
        return false;
    const auto found = m_senders.find(transition.event);
    if (found == m_senders.end())
        return true;
    if (found->state != state || (found->delay && found->receivers > 0))
        return fail(transition.line,
                    QStringLiteral("another state or transition has the event \"%1\""),
                    transition.event);
    ++found->receivers;
    sender = &*found;
    return true;
}

bool ScxmlEvents::areAllReceived()
{
    for (const ScxmlDocument::State& state : m_document.states) {
        for (const ScxmlDocument::SentEvent& sent : state.sentEvents) {
            if (m_senders.value(sent.event).receivers == 0)
                return fail(sent.line, QStringLiteral("no transition of the state takes \"%1\""),
                            sent.event);
            if (!isAlone(sent.event, sent.line))
                return false;
        }
    }
    return true;
}

// A transition on "a" takes "a.b" too.
bool ScxmlEvents::isAlone(const QString& event, qint64 line)
{
    for (int dot = event.indexOf(QLatin1Char('.')); dot >= 0;
         dot = event.indexOf(QLatin1Char('.'), dot + 1)) {
        if (m_received.contains(event.left(dot)))
            return fail(line, QStringLiteral("transitions on a part of \"%1\" take it, too"),
                        event);
    }
    return true;
}

} // namespace zeltools::declarativestatemachine
