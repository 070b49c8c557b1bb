#include "declarativestatemachine/recordingplayer_p.h"

#include "declarativestatemachine/recordingtext_p.h"

#include <algorithm>

namespace zeltools::declarativestatemachine
{

namespace
{

using Entry = MachineRecording::Entry;

bool isTransition(const Entry& entry)
{
    return entry.kind == Entry::Guard || entry.kind == Entry::Fired;
}

// The part of a trigger that has to be the same: its kind, and the signature of a signal.
QString essenceOf(const QString& trigger)
{
    const QString signal = QStringLiteral("signal ");
    if (!trigger.startsWith(signal))
        return trigger.section(QLatin1Char(' '), 0, 0);
    const auto colon = trigger.lastIndexOf(QLatin1Char(':'), trigger.indexOf(QLatin1Char('(')));
    return trigger.mid(colon < 0 ? signal.size() : colon + 1);
}

bool isSame(const Entry& a, const Entry& b)
{
    return a.kind == b.kind && a.transition == b.transition && a.isAccepted == b.isAccepted &&
           a.isFinished == b.isFinished && essenceOf(a.trigger) == essenceOf(b.trigger);
}

QString text(const Entry& entry)
{
    return QString::fromUtf8(happenedText(entry));
}

QVariantList valuesOf(const QVector<MachineRecording::Argument>& arguments)
{
    QVariantList values;
    for (const MachineRecording::Argument& argument : arguments)
        values.append(argument.value);
    return values;
}

bool hasDirectTransition(const DescriptionIndex::State& state)
{
    const auto& transitions = state.description->transitions;
    return std::any_of(transitions.begin(), transitions.end(), [](const auto& transition) {
        return transition.type == TransitionDescription::Direct;
    });
}

bool hasHistory(const DescriptionIndex& index)
{
    return std::any_of(index.states().begin(), index.states().end(),
                       [](const auto& state) { return state.description->isHistory(); });
}

} // namespace

RecordingPlayer::RecordingPlayer(const MachineRecording& recording,
                                 const StateMachineDescription& description, bool usesOwnGuards,
                                 QStringList* log)
    : m_recording(recording)
    , m_entries(recording.entries)
    , m_log(log)
    , m_machine(
          description, usesOwnGuards ? PlayedMachine::Guard()
                                     : [this](int transition) { return answerOf(transition); })
    , m_names(std::make_shared<RecordedNames>(m_machine.index()))
    , m_recorder(m_names, MachineRecording::maximumEntries)
{
}

QString RecordingPlayer::play()
{
    if (m_machine.index().states().empty())
        return QStringLiteral("The description has no states");
    if (m_entries.isEmpty())
        return QStringLiteral("The recording has no entries");
    if (!begin())
        return QStringLiteral("The machine cannot be in the states where the recording begins");
    m_machine.setRecorder(&m_recorder);
    while (m_difference.isEmpty() && m_next < m_entries.size())
        playStep();
    return m_difference;
}

bool RecordingPlayer::begin()
{
    std::vector<int> active;
    for (const MachineRecording::ActiveState& state : m_recording.activeBefore)
        active.push_back(m_names->numberOf(state.state));
    if (!m_recording.wasRunning)
        return active.empty();
    if (std::count(active.begin(), active.end(), -1) > 0)
        return false;
    // The machine may have reached a final state, in which it cannot be started.
    m_next = m_entries.first().kind == Entry::Stopped ? 1 : 0;
    return m_next > 0 || m_machine.startIn(active);
}

void RecordingPlayer::playStep()
{
    const Entry& entry = m_entries[m_next];
    m_nextGuard = m_next;
    m_stepEnd = m_next + 1;
    while (m_stepEnd < m_entries.size() && !m_entries[m_stepEnd].beginsStep)
        ++m_stepEnd;
    if (m_machine.isRunning() == (entry.kind == Entry::Started)) {
        differ(m_machine.isRunning() ? QStringLiteral("the machine runs already")
                                     : QStringLiteral("the machine does not run"));
        return;
    }
    if (entry.kind == Entry::Started)
        m_machine.startNow();
    else if (entry.kind != Entry::Stopped)
        causeStep();
    else if (!entry.isFinished)
        m_machine.stopNow();
    if (m_difference.isEmpty())
        compareStep();
}

// Gives the machine the event of the step, which the first guard or transition tells.
void RecordingPlayer::causeStep()
{
    const auto end = m_entries.begin() + m_stepEnd;
    const auto cause = std::find_if(m_entries.begin() + m_next, end, isTransition);
    const int transition = cause == end ? -1 : m_names->numberOf(cause->transition);
    if (transition >= 0) {
        if (isNext(transition))
            m_machine.happen(transition, valuesOf(cause->arguments));
    } else if (cause != end) {
        differ(QStringLiteral("the description has no such transition: ") + text(*cause));
    } else if (m_recording.isStepUnfinished && m_stepEnd == m_entries.size()) {
        m_next = m_stepEnd; // The recording ends before it tells why states are left.
    } else {
        differ(QStringLiteral("nothing causes this step"));
    }
}

// A direct transition comes before any timeout. (A signal may come before it, since an action
// of the state may have caused the signal.)
bool RecordingPlayer::isNext(int transition)
{
    const auto& [description, source, target] = m_machine.index().transition(transition);
    if (description->type == TransitionDescription::Direct)
        m_direct.erase(source);
    if (description->type != TransitionDescription::Timeout || m_direct.empty())
        return true;
    differ(QStringLiteral("before that, the machine tries the direct transitions of \"%1\"")
               .arg(m_machine.index().nameOf(*m_direct.begin())));
    return false;
}

void RecordingPlayer::compareStep()
{
    for (const MachineRecorder::Happened& happened : m_recorder.take()) {
        const Entry did = m_recorder.entryOf(happened);
        if (m_log != nullptr)
            m_log->append(text(did));
        follow(happened);
        compare(did);
        if (!m_difference.isEmpty())
            return;
    }
    if (m_next < m_stepEnd)
        differ(QStringLiteral("the machine does nothing"));
}

void RecordingPlayer::compare(const Entry& did)
{
    if (m_next < m_entries.size()) {
        if (isSame(m_entries[m_next], did)) {
            ++m_next;
            return;
        }
        const bool mayRemember = (did.kind == Entry::Entered || did.kind == Entry::Left) &&
                                 m_recording.wasRunning && hasHistory(m_machine.index());
        differ(QStringLiteral("the machine does this: ") + text(did) +
               (mayRemember ? QStringLiteral(" (what histories remembered before is lost)")
                            : QString()));
        return;
    }
    // The end of a step may be missing, and a final state stops the machine later.
    if (!m_recording.isStepUnfinished && did.kind != Entry::Stopped)
        m_difference = QStringLiteral("after the last entry, the machine does this: ") + text(did);
}

void RecordingPlayer::follow(const MachineRecorder::Happened& happened)
{
    if (happened.kind == Entry::Left)
        m_direct.erase(happened.number);
    else if (happened.kind == Entry::Started || happened.kind == Entry::Stopped)
        m_direct.clear();
    else if (happened.kind == Entry::Entered &&
             hasDirectTransition(m_machine.index().state(happened.number)))
        m_direct.insert(happened.number);
}

// The answer of the guard in this step of the recording. One that was not asked then is a
// difference, which the comparison finds.
bool RecordingPlayer::answerOf(int transition)
{
    while (m_nextGuard < m_stepEnd && m_entries[m_nextGuard].kind != Entry::Guard)
        ++m_nextGuard;
    if (m_nextGuard == m_stepEnd)
        return false;
    const Entry& guard = m_entries[m_nextGuard++];
    return guard.isAccepted && m_names->numberOf(guard.transition) == transition;
}

void RecordingPlayer::differ(const QString& instead)
{
    m_difference = QStringLiteral("entry %1, %2: %3")
                       .arg(QString::number(m_next + 1), text(m_entries[m_next]), instead);
}

} // namespace zeltools::declarativestatemachine
