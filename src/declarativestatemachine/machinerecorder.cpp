#include "declarativestatemachine/machinerecorder_p.h"

#include "declarativestatemachine/recordedargument_p.h"

#include <algorithm>
#include <utility>

Q_DECLARE_METATYPE(zeltools::declarativestatemachine::MachineRecording::Argument)

namespace zeltools::declarativestatemachine
{

namespace
{

std::chrono::microseconds microseconds(qint64 time_ns)
{
    return std::chrono::microseconds(time_ns / 1000);
}

// The ring keeps values of the host only if they are small; the type of anything else stands for
// it.
QVariantList keptArguments(const QVariantList& arguments)
{
    if (std::all_of(arguments.begin(), arguments.end(), isKeptAsItIs))
        return arguments;
    QVariantList kept;
    for (const QVariant& argument : arguments)
        kept.append(QVariant::fromValue(recordedArgument(argument)));
    return kept;
}

MachineRecording::Argument argumentOf(const QVariant& kept)
{
    if (kept.userType() == qMetaTypeId<MachineRecording::Argument>())
        return kept.value<MachineRecording::Argument>();
    return recordedArgument(kept);
}

} // namespace

void MachineRecorder::Situation::follow(const Happened& happened)
{
    switch (happened.kind) {
    case Kind::Started:
    case Kind::Stopped:
        isRunning = happened.kind == Kind::Started;
        std::fill(since_ns.begin(), since_ns.end(), -1);
        break;
    case Kind::Entered:
        since_ns[size_t(happened.number)] = happened.time_ns;
        break;
    case Kind::Left:
        since_ns[size_t(happened.number)] = -1;
        break;
    case Kind::Guard:
    case Kind::Fired:
        break;
    }
}

MachineRecorder::MachineRecorder(std::shared_ptr<const RecordedNames> names, int maximumEntries,
                                 bool isRunning, const std::vector<int>& activeStates)
    : m_names(std::move(names))
    , m_ring(size_t(std::clamp(maximumEntries, 1, MachineRecording::maximumEntries)))
    , m_before{isRunning, std::vector<qint64>(size_t(m_names->stateCount()), -1)}
{
    m_clock.start();
    for (int state : activeStates)
        m_before.since_ns[size_t(state)] = 0;
}

void MachineRecorder::started()
{
    stepBegun();
    add(Kind::Started);
}

void MachineRecorder::stopped(bool isFinished)
{
    stepBegun();
    add(Kind::Stopped).isAccepted = isFinished;
    stepEnded();
}

void MachineRecorder::guardChecked(int transition, bool accepted, const QVariantList& arguments)
{
    Happened& happened = add(Kind::Guard, transition);
    happened.isAccepted = accepted;
    happened.arguments = keptArguments(arguments);
}

void MachineRecorder::fired(int transition, const QVariantList& arguments)
{
    add(Kind::Fired, transition).arguments = keptArguments(arguments);
}

void MachineRecorder::stepBegun()
{
    m_isStepNew = true;
    m_isInStep = true;
}

MachineRecorder::Happened& MachineRecorder::add(Kind kind, int number)
{
    Happened& place = m_ring[size_t(m_next)];
    if (m_count == static_cast<int>(m_ring.size())) {
        m_before.follow(place);
        ++m_dropped;
    } else {
        ++m_count;
    }
    m_next = m_next + 1 == static_cast<int>(m_ring.size()) ? 0 : m_next + 1;
    place.time_ns = m_clock.nsecsElapsed();
    place.number = number;
    place.kind = kind;
    place.isAccepted = false;
    place.beginsStep = std::exchange(m_isStepNew, false);
    if (!place.arguments.isEmpty())
        place.arguments.clear();
    return place;
}

const MachineRecorder::Happened& MachineRecorder::at(int index) const
{
    const int size = static_cast<int>(m_ring.size());
    const int place = m_next - m_count + index;
    return m_ring[size_t(place < 0 ? place + size : place)];
}

MachineRecording MachineRecorder::recording(const QString& machine) const
{
    MachineRecording recording;
    recording.machine = machine;
    recording.start = m_start;
    recording.duration = microseconds(m_clock.nsecsElapsed());
    recording.isStepUnfinished = m_isInStep;
    // A step whose beginning is lost is lost too.
    Situation before = m_before;
    int first = 0;
    for (; first < m_count && !at(first).beginsStep; ++first)
        before.follow(at(first));
    recording.dropped = m_dropped + first;
    recording.wasRunning = before.isRunning;
    for (size_t i = 0; i < before.since_ns.size(); ++i) {
        if (before.since_ns[i] >= 0)
            recording.activeBefore.append(
                {m_names->state(static_cast<int>(i)), microseconds(before.since_ns[i])});
    }
    for (int i = first; i < m_count; ++i)
        recording.entries.append(entryOf(at(i)));
    return recording;
}

MachineRecording::Entry MachineRecorder::entryOf(const Happened& happened) const
{
    MachineRecording::Entry entry;
    entry.kind = happened.kind;
    entry.time = microseconds(happened.time_ns);
    entry.beginsStep = happened.beginsStep;
    entry.isAccepted = happened.kind == Kind::Guard && happened.isAccepted;
    entry.isFinished = happened.kind == Kind::Stopped && happened.isAccepted;
    if (happened.kind == Kind::Guard || happened.kind == Kind::Fired) {
        entry.transition = m_names->transition(happened.number);
        entry.trigger = m_names->triggerOf(happened.number);
    } else if (happened.kind == Kind::Entered || happened.kind == Kind::Left) {
        entry.transition.source = m_names->state(happened.number);
    }
    for (const QVariant& argument : happened.arguments)
        entry.arguments.append(argumentOf(argument));
    return entry;
}

std::vector<MachineRecorder::Happened> MachineRecorder::take()
{
    std::vector<Happened> taken;
    for (int i = 0; i < m_count; ++i)
        taken.push_back(at(i));
    m_count = 0;
    return taken;
}

} // namespace zeltools::declarativestatemachine
