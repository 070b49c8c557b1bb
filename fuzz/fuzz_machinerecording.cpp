// Reads arbitrary bytes as a recording of a state machine, or as a part of one, which the last byte
// chooses. What is accepted must be the same after it was written and read again. It is played back
// and drawn, whatever machine it was made of.

#include "fuzz.h"
#include <zeltools/declarativestatemachine/dotwriter.h>
#include <zeltools/declarativestatemachine/machineplayer.h>
#include <zeltools/signalemitter.h>

#include <QCoreApplication>

using namespace zeltools::declarativestatemachine;

namespace
{

// A NaN differs from itself, so that values are compared by their text.
bool isSame(const MachineRecording::Entry& a, const MachineRecording::Entry& b)
{
    bool isSame = a.kind == b.kind && a.time == b.time && a.beginsStep == b.beginsStep &&
                  a.transition == b.transition && a.trigger == b.trigger &&
                  a.isAccepted == b.isAccepted && a.arguments.size() == b.arguments.size();
    for (int i = 0; isSame && i < a.arguments.size(); ++i) {
        const MachineRecording::Argument &left = a.arguments[i], &right = b.arguments[i];
        isSame = left.type == right.type && left.value.isValid() == right.value.isValid() &&
                 left.value.userType() == right.value.userType() &&
                 left.value.toByteArray() == right.value.toByteArray();
    }
    return isSame;
}

void checkSums(const MachineRecording& recording)
{
    std::chrono::microseconds spent{0};
    const auto times = recording.timesSpent();
    for (const auto time : times) {
        require(time.count() >= 0 && time <= recording.duration);
        spent += time;
    }
    for (const auto& state : recording.currentStates())
        require(times.contains(state));
    int fired = 0;
    for (const int count : recording.timesFired())
        fired += count;
    require(fired <= recording.entries.size());
}

// The names are short, so that the fuzzer finds them.
StateMachineDescription machine()
{
    static zeltools::SignalEmitter s_emitter;
    const auto on = [](const char* target) {
        return TransitionDescription::on(&s_emitter, SIGNAL(notify()), QLatin1String(target));
    };
    const auto later = TransitionDescription::after(std::chrono::hours(1), QStringLiteral("a"));
    const auto directly = TransitionDescription::direct(QStringLiteral("b"));
    const auto state = [](const char* name, const std::vector<TransitionDescription>& transitions,
                          const std::vector<StateDescription>& states = {},
                          StateDescription::Kind kind = StateDescription::Ordinary) {
        return StateDescription{QLatin1String(name), {}, transitions, {}, states, kind};
    };
    const StateDescription history = state("h", {}, {}, StateDescription::ShallowHistory);
    return {{state("", {on("h"), later}), state("a", {on("")}, {state("b", {on("c")}), history}),
             state("c", {later}, {state("d", {on("d")}), state("d", {directly})},
                   StateDescription::Parallel),
             state("e", {directly})}};
}

void play(const MachineRecording& recording, int choice)
{
    static char s_name[] = "fuzz";
    static char* s_arguments[] = {s_name, nullptr};
    static int s_count = 1;
    static QCoreApplication s_application(s_count, s_arguments);
    static const StateMachineDescription s_all = machine();
    // Only its final state has a transition.
    static const StateMachineDescription s_idle{{{QString()}, s_all.states.back()}};
    const StateMachineDescription& description = choice % 2 == 0 ? s_all : s_idle;
    Playback options;
    options.usesOwnGuards = options.callsActions = choice % 4 < 2;
    playBack(recording, description, options);
    require(toDot(description, recording).endsWith(QLatin1String("}\n")));
}

void parse(const QByteArray& text)
{
    QString error;
    const auto recording = MachineRecording::fromText(text, error);
    require(recording.has_value() == error.isEmpty());
    if (!recording)
        return;
    const auto again = MachineRecording::fromText(recording->toText(), error);
    require(again && again->toText() == recording->toText());
    require(again->machine == recording->machine && again->start == recording->start &&
            again->duration == recording->duration && again->dropped == recording->dropped &&
            again->wasRunning == recording->wasRunning &&
            again->isStepUnfinished == recording->isStepUnfinished &&
            again->activeBefore.size() == recording->activeBefore.size() &&
            again->entries.size() == recording->entries.size());
    for (int i = 0; i < again->entries.size(); ++i)
        require(isSame(again->entries[i], recording->entries[i]));
    checkSums(*recording);
    play(*recording, static_cast<int>(text.size()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceWarnings();
    const QByteArray bytes = toBytes(data, size);
    const QByteArray first = "zeltools machine recording 1\n";
    const QByteArray head = first + "machine \"\"\nduration 9000\ndropped 0\n";
    QString error;
    require(MachineRecording::fromText(head + "end\n", error).has_value());
    switch (size > 0 ? data[size - 1] % 5 : 0) {
    case 0:
        parse(bytes);
        break;
    case 1:
        parse(first + bytes + "\nend\n");
        break;
    case 2:
        parse(head + "running\n" + bytes + "\nend\n");
        break;
    case 3:
        parse(head + bytes + "\nend\n");
        break;
    default:
        parse(head + "0 fired \"\" transition 1 by \"\" with " + bytes + "\nend\n");
    }
    return 0;
}
