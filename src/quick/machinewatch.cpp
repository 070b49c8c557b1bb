#include "quick/machinewatch_p.h"

#include "declarativestatemachine/declarativestatemachine.h"
#include "quick/displaytext_p.h"
#include "quick/machineview.h"
#include "statemachine/statemachine.h"

namespace zeltools::quick
{

using Recording = declarativestatemachine::MachineRecording;

MachineWatch::MachineWatch(QObject* machine)
    : m_entry(MachineRegistry::instance()->entryOf(machine))
    , m_state(viewedmachine::stateOf(machine))
    , m_wasRunning(viewedmachine::isRunning(machine))
{
    m_entry.machine = machine;
    auto* const declarative = qobject_cast<Machine*>(machine);
    if (declarative != nullptr && m_entry.graph != nullptr && !m_entry.graph->isTooLarge()) {
        m_track.emplace(m_entry.graph);
        readRecording(*declarative);
        connect(declarative, &Machine::transitionFired, this, &MachineWatch::onFired);
    }
    viewedmachine::follow(machine, this, [this] { onStateChanged(); });
}

MachineWatch::~MachineWatch() = default;

void MachineWatch::readRecording(const Machine& machine)
{
    const MachineTrack::Time now = MachineTrack::Clock::now();
    const Recording recording = machine.recording();
    m_track->read(recording, now);
    m_track->setPresent(machine.currentStateNumbers(), now, false);
    for (const Recording::Entry& entry : recording.entries) {
        if (entry.kind != Recording::Entry::Fired)
            continue;
        const int number = m_track->numberOf(entry.transition);
        addStep(recording.start.addMSecs(entry.time.count() / 1000), number);
    }
}

void MachineWatch::onFired(int transition)
{
    m_track->fire(transition, MachineTrack::Clock::now());
    addStep(QDateTime::currentDateTime(), transition);
    Q_EMIT stepped();
}

// A StateMachine is between two states when it has left one.
void MachineWatch::onStateChanged()
{
    const auto* const plain = qobject_cast<const StateMachine*>(machine());
    if (plain != nullptr && plain->currentState() == StateMachine::Transition)
        return;
    const MachineTrack::Time now = MachineTrack::Clock::now();
    const QString state = m_track ? QString() : viewedmachine::stateOf(machine());
    const bool isRunning = viewedmachine::isRunning(machine());
    if (m_track) {
        if (isRunning && !m_wasRunning)
            m_track->start();
        m_track->setPresent(static_cast<Machine*>(machine())->currentStateNumbers(), now, true);
    } else if (plain != nullptr || state != m_state) {
        addStep({QDateTime::currentDateTime(), DisplayText::name(m_state, maximumName),
                 DisplayText::name(state, maximumName), -1});
        m_since = now;
        m_isSinceKnown = true;
    }
    m_state = state;
    m_wasRunning = isRunning;
    Q_EMIT stepped();
}

void MachineWatch::addStep(const QDateTime& time, int transition)
{
    if (transition < 0 || transition >= int(graph()->transitions.size()))
        return;
    const MachineGraph::Transition& fired = graph()->transitions[size_t(transition)];
    const QString& from = graph()->states[size_t(fired.source)].name;
    const QString& to = fired.target < 0 ? from : graph()->states[size_t(fired.target)].name;
    addStep({time, from, to, transition});
}

void MachineWatch::addStep(Step step)
{
    m_path.push_front(std::move(step));
    if (m_path.size() > size_t(MachineView::maximumPath))
        m_path.pop_back();
}

std::chrono::milliseconds MachineWatch::stateTime() const
{
    const MachineTrack::Time now = MachineTrack::Clock::now();
    if (!m_track)
        return std::chrono::duration_cast<std::chrono::milliseconds>(now - m_since);
    const int state = m_track->innermostState();
    return state < 0 ? std::chrono::milliseconds(0) : m_track->timeIn(state, now);
}

bool MachineWatch::isStateTimeKnown() const
{
    if (!m_track)
        return m_isSinceKnown;
    const int state = m_track->innermostState();
    return state < 0 || m_track->isTimeKnown(state);
}

} // namespace zeltools::quick
