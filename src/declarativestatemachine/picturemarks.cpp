#include "declarativestatemachine/picturemarks_p.h"

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/machinerecording.h"
#include "declarativestatemachine/recordednames_p.h"

#include <algorithm>

namespace zeltools::declarativestatemachine
{

namespace
{

using Entry = MachineRecording::Entry;

QString timeText(std::chrono::microseconds time)
{
    const qint64 time_us = std::max<qint64>(time.count(), 0);
    const qint64 time_s = time_us / 1000000;
    if (time_us < 1000)
        return QStringLiteral("%1 µs").arg(time_us);
    if (time_s < 1)
        return QStringLiteral("%1 ms").arg(time_us / 1000);
    if (time_s < 60)
        return QStringLiteral("%1.%2 s").arg(time_s).arg(time_us / 100000 % 10);
    if (time_s < 3600)
        return QStringLiteral("%1 min %2 s").arg(time_s / 60).arg(time_s % 60);
    return QStringLiteral("%1 h %2 min").arg(time_s / 3600).arg(time_s / 60 % 60);
}

QString captionOf(const MachineRecording& recording, int misfits)
{
    QStringList lines;
    if (!recording.machine.isEmpty())
        lines << recording.machine;
    lines << QStringLiteral("recorded from %1, for %2, entries: %3")
                 .arg(recording.start.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")),
                      timeText(recording.duration))
                 .arg(recording.entries.size());
    if (recording.dropped > 0)
        lines << QStringLiteral("older entries, which are lost: %1").arg(recording.dropped);
    if (misfits > 0)
        lines << QStringLiteral("entries that do not fit to this description: %1").arg(misfits);
    lines << QStringLiteral("filled: active at the end | bold: entered or fired");
    return lines.join(QLatin1Char('\n'));
}

QStringList lineAttributes(bool isTrodden, const QString& width)
{
    if (isTrodden)
        return {QStringLiteral("color=\"#0b5394\""), QLatin1String("penwidth=") + width};
    return {QStringLiteral("color=\"#8c8c8c\""), QStringLiteral("penwidth=1"),
            QStringLiteral("fontcolor=\"#5f5f5f\"")};
}

} // namespace

PictureMarks::PictureMarks(const DescriptionIndex& index, const MachineRecording& recording)
    : m_states(index.states().size())
    , m_timesFired(index.transitions().size())
{
    const RecordedNames names(index);
    readEntries(names, recording);
    readStates(names, recording);
    countDefaultEntries(index);
    m_caption = captionOf(recording, m_misfits);
}

void PictureMarks::readEntries(const RecordedNames& names, const MachineRecording& recording)
{
    for (const Entry& entry : recording.entries) {
        switch (entry.kind) {
        case Entry::Started:
            ++m_starts;
            break;
        case Entry::Stopped:
            break;
        case Entry::Entered:
        case Entry::Left: {
            const int state = names.numberOf(entry.transition.source);
            m_misfits += state < 0 ? 1 : 0;
            if (state >= 0 && entry.kind == Entry::Entered)
                ++m_states[size_t(state)].visits;
            break;
        }
        case Entry::Guard:
        case Entry::Fired: {
            const int transition = names.numberOf(entry.transition);
            const bool fits = transition >= 0 && names.triggerOf(transition) == entry.trigger;
            m_misfits += fits ? 0 : 1;
            if (fits && entry.kind == Entry::Fired)
                ++m_timesFired[size_t(transition)];
            break;
        }
        }
    }
}

void PictureMarks::readStates(const RecordedNames& names, const MachineRecording& recording)
{
    for (const MachineRecording::ActiveState& active : recording.activeBefore) {
        const int state = names.numberOf(active.state);
        m_misfits += state < 0 ? 1 : 0;
        if (state >= 0)
            ++m_states[size_t(state)].visits;
    }
    const auto times = recording.timesSpent();
    for (auto time = times.cbegin(); time != times.cend(); ++time) {
        const int state = names.numberOf(time.key());
        if (state >= 0)
            m_states[size_t(state)].spent = *time;
    }
    const QVector<MachineRecording::State> present = recording.currentStates();
    for (const MachineRecording::State& name : present) {
        const int state = names.numberOf(name);
        if (state >= 0)
            m_states[size_t(state)].isPresent = true;
    }
}

// A parent has a smaller number than its children. The regions of a parallel state that are entered
// beside the target of a transition are not counted.
void PictureMarks::countDefaultEntries(const DescriptionIndex& index)
{
    for (size_t i = 0; i < m_timesFired.size(); ++i) {
        const int target = index.transitions()[i].target;
        if (target >= 0)
            m_states[size_t(target)].entriesByDefault += m_timesFired[i];
    }
    const int initial = index.initialChildOf(-1);
    if (initial >= 0)
        m_states[size_t(initial)].entriesByDefault += m_starts;
    for (int child = 0; child < int(m_states.size()); ++child) {
        const int parent = index.state(child).parent;
        if (parent >= 0 && (index.initialChildOf(parent) == child ||
                            index.state(parent).description->kind == StateDescription::Parallel)) {
            m_states[size_t(child)].entriesByDefault += m_states[size_t(parent)].entriesByDefault;
        }
    }
}

QString PictureMarks::stateText(int state) const
{
    if (m_states.empty() || m_states[size_t(state)].visits == 0)
        return {};
    const State& marks = m_states[size_t(state)];
    const QString time = timeText(marks.spent);
    return marks.visits == 1 ? time : QStringLiteral("%1 in %2 visits").arg(time).arg(marks.visits);
}

QStringList PictureMarks::stateAttributes(int state, bool isFrame) const
{
    if (m_states.empty())
        return {};
    const State& marks = m_states[size_t(state)];
    const QLatin1String fill(!marks.isPresent ? "white" : isFrame ? "#fff3cf" : "#ffdb75");
    return lineAttributes(marks.visits > 0,
                          marks.isPresent ? QStringLiteral("4") : QStringLiteral("2"))
           << QStringLiteral("fillcolor=\"%1\"").arg(fill);
}

QString PictureMarks::transitionText(int transition) const
{
    if (m_states.empty() || m_timesFired[size_t(transition)] == 0)
        return {};
    return QStringLiteral("%1x").arg(m_timesFired[size_t(transition)]);
}

QStringList PictureMarks::transitionAttributes(int transition) const
{
    if (m_states.empty())
        return {};
    return lineAttributes(m_timesFired[size_t(transition)] > 0, QStringLiteral("2.5"));
}

QStringList PictureMarks::initialAttributes(int state) const
{
    if (m_states.empty())
        return {};
    return lineAttributes(state < 0 ? m_starts > 0 : m_states[size_t(state)].entriesByDefault > 0,
                          QStringLiteral("2.5"));
}

} // namespace zeltools::declarativestatemachine
