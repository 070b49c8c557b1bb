#include "declarativestatemachine/machinerecording.h"
#include "declarativestatemachine/recordedargument_p.h"
#include "declarativestatemachine/recordingtext_p.h"
#include "quotedwords.h"

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
    QByteArray text = headText(*this);
    for (const Entry& entry : entries) {
        text += timeText(entry.time) + (entry.beginsStep ? " " : " + ") + happenedText(entry);
        text += '\n';
    }
    if (isStepUnfinished)
        text += "unfinished\n";
    return text + "end\n";
}

} // namespace zeltools::declarativestatemachine
