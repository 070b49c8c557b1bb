#include "declarativestatemachine/scxmlplan_p.h"

#include "declarativestatemachine/signalutils.h"

namespace zeltools::declarativestatemachine
{

ScxmlPlan::ScxmlPlan(const DescriptionIndex& index)
    : m_index(index)
{
    for (size_t i = 0; i < index.states().size(); ++i)
        addState(int(i));
    findWrittenStates();
    for (size_t i = 0; i < index.transitions().size(); ++i)
        addTransition(int(i));
    for (size_t i = 0; i < index.states().size(); ++i)
        addEnteredEvent(int(i));
    for (size_t i = 0; i < index.transitions().size(); ++i)
        m_transitions[i].event = eventOf(int(i));
}

QString ScxmlPlan::identifier(const QString& text)
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

// The second taker of a name gets "_" behind it, the third one "_2". The count is kept, so that
// 10,000 takers need no quadratic time.
QString ScxmlPlan::Names::take(const QString& wanted)
{
    QString name = wanted;
    int& count = m_counts[wanted];
    while (m_taken.contains(name)) {
        ++count;
        name = wanted + QLatin1Char('_') + (count > 1 ? QString::number(count) : QString());
    }
    m_taken.insert(name);
    return name;
}

void ScxmlPlan::addState(int number)
{
    const DescriptionIndex::State& state = m_index.state(number);
    const bool isHistory = state.description->isHistory() && !state.isFinal;
    m_states.push_back({m_ids.take(identifier(state.description->name)), false, isHistory});
    int& initial = state.parent < 0 ? m_initial : m_states[size_t(state.parent)].initialChild;
    if (initial < 0 && !isHistory)
        initial = number;
}

// A history must have a state beside it and a state around it.
void ScxmlPlan::findWrittenStates()
{
    for (size_t i = 0; i < m_states.size(); ++i) {
        const int parent = m_index.state(int(i)).parent;
        m_states[i].isWritten =
            parent < 0 ? !m_states[i].isHistory
                       : state(parent).isWritten && !state(parent).isHistory &&
                             !m_index.state(parent).isFinal &&
                             (!m_states[i].isHistory || state(parent).initialChild >= 0);
    }
}

void ScxmlPlan::addTransition(int number)
{
    const DescriptionIndex::Transition& transition = m_index.transitions()[size_t(number)];
    const TransitionDescription& description = *transition.description;
    const bool isThere = transition.target >= 0 && state(transition.target).isWritten;
    Transition planned;
    planned.isWritten = description.isOfKnownType() && (description.isTargetless || isThere) &&
                        !m_index.state(transition.source).isFinal;
    if (description.hasGuard())
        planned.guard = QStringLiteral("guard%1").arg(++m_guardCount);
    if (isThere)
        planned.target = state(transition.target).id;
    m_transitions.push_back(planned);
}

// A transition without an event is tried again after each event, and before those of the states
// around it. Only for one that leaves a single state at once, both make no difference.
void ScxmlPlan::addEnteredEvent(int number)
{
    const DescriptionIndex::State& source = m_index.state(number);
    bool hasDirect = false;
    bool needsEvent = source.parent >= 0 || state(number).initialChild >= 0;
    for (size_t i = size_t(source.firstTransition);
         i < m_transitions.size() && m_index.transitions()[i].source == number; ++i) {
        const TransitionDescription& description = *m_index.transitions()[i].description;
        if (m_transitions[i].isWritten && description.type == TransitionDescription::Direct) {
            hasDirect = true;
            needsEvent = needsEvent || description.hasGuard() || description.isTargetless;
        }
    }
    if (hasDirect && needsEvent)
        m_states[size_t(number)].enteredEvent =
            m_events.take(QStringLiteral("entered.") +
                          QString(state(number).id).replace(QLatin1Char('.'), QLatin1Char('_')));
}

// A reader takes "a.b" for an event "a" too, so that the dots of an identifier must not stay.
QString ScxmlPlan::eventOf(int number)
{
    const DescriptionIndex::Transition& transition = m_index.transitions()[size_t(number)];
    if (!m_transitions[size_t(number)].isWritten)
        return {};
    const State& source = state(transition.source);
    if (transition.description->type == TransitionDescription::Signal)
        return signalEventOf(*transition.description);
    if (transition.description->type == TransitionDescription::Direct)
        return source.enteredEvent;
    const int place = number - m_index.state(transition.source).firstTransition + 1;
    return m_events.take(QStringLiteral("timeout.%1.%2")
                             .arg(QString(source.id).replace(QLatin1Char('.'), QLatin1Char('_')))
                             .arg(place));
}

QString ScxmlPlan::signalEventOf(const TransitionDescription& transition)
{
    const QString signal = signalutils::classAndSignalName(nullptr, transition.signal, true);
    QString& event = m_signalEvents[{transition.obj, signal}];
    if (event.isNull()) {
        QString name = signalutils::classAndSignalName(transition.obj, transition.signal, false);
        event = m_events.take(identifier(name.replace(QLatin1String("::"), QLatin1String("."))));
    }
    return event;
}

} // namespace zeltools::declarativestatemachine
