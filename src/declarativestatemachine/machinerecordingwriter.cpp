#include "declarativestatemachine/machinerecording.h"
#include "declarativestatemachine/recordedargument_p.h"
#include "declarativestatemachine/recordingtext_p.h"
#include "quotedwords.h"

#include <vector>

namespace zeltools::declarativestatemachine
{

namespace
{

using Entry = MachineRecording::Entry;

QByteArray quoted(const QString& text)
{
    return quotedWord(text.toUtf8());
}

// Milliseconds with the decimals that are needed: "12", "0.25".
QByteArray timeText(std::chrono::microseconds time)
{
    const auto microseconds = time.count();
    QByteArray text = QByteArray::number(qint64(microseconds / 1000));
    QByteArray decimals = QByteArray::number(qint64(microseconds % 1000)).rightJustified(3, '0');
    while (decimals.endsWith('0'))
        decimals.chop(1);
    return decimals.isEmpty() ? text : text + '.' + decimals;
}

QByteArray stateText(const MachineRecording::State& state)
{
    const QByteArray name = quoted(state.name);
    return state.copy == 1 ? name : name + " copy " + QByteArray::number(state.copy);
}

QByteArray argumentsText(const Entry& entry)
{
    QByteArray text;
    for (const MachineRecording::Argument& argument : entry.arguments)
        text += ' ' + argumentText(argument);
    return text.isEmpty() ? text : " with" + text;
}

QByteArray transitionText(const Entry& entry)
{
    return stateText(entry.transition.source) + " transition " +
           QByteArray::number(entry.transition.number) + " by " + quoted(entry.trigger);
}

QByteArray headText(const MachineRecording& recording)
{
    QByteArray text = "zeltools machine recording 1\nmachine " + quoted(recording.machine) + '\n';
    if (recording.start.isValid())
        text += "start " + recording.start.toUTC().toString(Qt::ISODateWithMs).toLatin1() + '\n';
    text += "duration " + timeText(recording.duration) + '\n';
    text += "dropped " + QByteArray::number(recording.dropped) + '\n';
    if (recording.wasRunning)
        text += "running\n";
    for (const MachineRecording::ActiveState& active : recording.activeBefore)
        text += "active " + stateText(active.state) + " since " + timeText(active.since) + '\n';
    return text;
}

QByteArray lineText(const Entry& entry)
{
    return timeText(entry.time) + (entry.beginsStep ? " " : " + ") + happenedText(entry) + '\n';
}

struct LastSteps
{
    int first = 0; // the number of their first entry
    QByteArray text;
};

// As many whole steps as fit into the room.
LastSteps lastSteps(const QVector<Entry>& entries, qint64 room_B)
{
    std::vector<QByteArray> lines; // the last one first
    LastSteps steps{static_cast<int>(entries.size()), {}};
    for (int i = steps.first - 1; i >= 0; --i) {
        lines.push_back(lineText(entries[i]));
        room_B -= lines.back().size();
        if (room_B < 0)
            break;
        if (entries[i].beginsStep)
            steps.first = i;
    }
    lines.resize(size_t(entries.size() - steps.first));
    for (auto line = lines.rbegin(); line != lines.rend(); ++line)
        steps.text += *line;
    return steps;
}

} // namespace

QByteArray happenedText(const Entry& entry)
{
    switch (entry.kind) {
    case Entry::Started:
        return "started";
    case Entry::Stopped:
        return entry.isFinished ? "finished" : "stopped";
    case Entry::Left:
        return "left " + stateText(entry.transition.source);
    case Entry::Entered:
        return "entered " + stateText(entry.transition.source);
    case Entry::Guard:
        return "guard " + transitionText(entry) + (entry.isAccepted ? " accepted" : " refused") +
               argumentsText(entry);
    case Entry::Fired:
        return "fired " + transitionText(entry) + argumentsText(entry);
    }
    return {};
}

QByteArray MachineRecording::toText() const
{
    const QByteArray head = headText(*this);
    const QByteArray end = isStepUnfinished ? "unfinished\nend\n" : "end\n";
    const LastSteps steps = lastSteps(entries, maximumTextSize_B - head.size() - end.size());
    // The head tells then which states are active where the entries begin.
    return steps.first > 0 ? withoutOldest(*this, steps.first).toText() : head + steps.text + end;
}

} // namespace zeltools::declarativestatemachine
