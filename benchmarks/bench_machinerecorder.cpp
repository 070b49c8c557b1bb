// The benchmarks compare an entry of a recording with the clock that it reads and the memory that
// it writes, and a recorded transition with one that is not recorded.

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/machinerecorder_p.h"
#include "ratiotable.h"
#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/logging/log.h>
#include <zeltools/signalemitter.h>

#include <QCoreApplication>

#include <ctime>

using namespace zeltools::declarativestatemachine;

namespace
{

constexpr int ringSize = 1000;

StateMachineDescription twoStates(zeltools::SignalEmitter& emitter)
{
    const auto way = [&emitter](const char* target) {
        return std::vector{
            TransitionDescription::on(&emitter, SIGNAL(notify()), QLatin1String(target))};
    };
    return {{{QStringLiteral("A"), {}, way("B")},
             {QStringLiteral("B"), {}, way("A")},
             {QStringLiteral("Done")}}};
}

// The entries of a transition in turn, so that each of them is an average one.
void entries(benchmark::State& state)
{
    zeltools::SignalEmitter emitter;
    const StateMachineDescription description = twoStates(emitter);
    const DescriptionIndex index(description);
    MachineRecorder recorder(std::make_shared<RecordedNames>(index), ringSize);
    const QVariantList none;
    for (auto _ : state) {
        recorder.stepBegun();
        recorder.guardChecked(0, true, none);
        recorder.left(0);
        recorder.fired(0, none);
        recorder.entered(1);
    }
}

void entriesWithArguments(benchmark::State& state)
{
    zeltools::SignalEmitter emitter;
    const StateMachineDescription description = twoStates(emitter);
    const DescriptionIndex index(description);
    MachineRecorder recorder(std::make_shared<RecordedNames>(index), ringSize);
    const QVariantList arguments{7, QStringLiteral("litres")};
    for (auto _ : state) {
        recorder.stepBegun();
        recorder.guardChecked(0, true, arguments);
        recorder.left(0);
        recorder.fired(0, arguments);
        recorder.entered(1);
    }
}

void clockReads(benchmark::State& state)
{
    timespec now;
    for (auto _ : state) {
        for (int i = 0; i < 4; ++i)
            clock_gettime(CLOCK_MONOTONIC, &now);
        benchmark::DoNotOptimize(now);
    }
}

void ringWrites(benchmark::State& state)
{
    std::vector<MachineRecorder::Happened> ring(ringSize);
    size_t next = 0;
    for (auto _ : state) {
        for (int i = 0; i < 4; ++i) {
            MachineRecorder::Happened& place = ring[next];
            place.time_ns = 1;
            place.number = i;
            place.kind = MachineRecording::Entry::Left;
            place.isAccepted = place.beginsStep = false;
            next = next + 1 == ring.size() ? 0 : next + 1;
            benchmark::ClobberMemory();
        }
    }
}

void transitions(benchmark::State& state, int maximumEntries)
{
    zeltools::SignalEmitter emitter;
    DeclarativeStateMachine machine(Log::StateMachine);
    machine.setDescription(twoStates(emitter));
    machine.setRecording(maximumEntries);
    machine.start();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        Q_EMIT emitter.notify();
        QCoreApplication::processEvents();
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    add("MachineRecorder: four entries/ZelTools", entries);
    add("MachineRecorder: four entries/two of them with two arguments", entriesWithArguments);
    add("MachineRecorder: four entries/four times clock_gettime()", clockReads);
    add("MachineRecorder: four entries/four writes to a ring", ringWrites);
    add("DeclarativeStateMachine: a transition, recorded/ZelTools",
        [](benchmark::State& state) { transitions(state, ringSize); });
    add("DeclarativeStateMachine: a transition, recorded/not recorded",
        [](benchmark::State& state) { transitions(state, 0); });
    return RatioTable::run(argc, argv);
}
