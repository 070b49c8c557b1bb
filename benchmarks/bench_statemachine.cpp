// The cost of a transition, beside the framework below and the bare turn of the event loop.

#include "ratiotable.h"
#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>
#include <zeltools/statemachine/eventgrouphandler.h>
#include <zeltools/statemachine/statemachine.h>

#include <QCoreApplication>
#include <QFile>
#include <QSignalTransition>
#include <QState>
#include <QStateMachine>
#include <QTemporaryDir>
#include <QTimer>

#include <unistd.h>

using namespace zeltools::declarativestatemachine;

namespace
{

/// Emits the signal that drives the machines, and counts for them.
class Pump : public QObject
{
    Q_OBJECT

public:
    qint64 transitions = 0;

Q_SIGNALS:
    void turned();
};

class TwoStates : public StateMachine
{
    Q_OBJECT

public:
    explicit TwoStates(Pump& pump)
        : m_pump(pump)
    {
        connect(&pump, &Pump::turned, this, qOverload<>(&StateMachine::handleSignal));
        connect(this, &StateMachine::stateEnter, this, [this] { ++m_pump.transitions; });
        setInitialState(0);
    }

protected:
    void onSignal(const QObject*, const QMetaMethod&, bool) override
    {
        setState(1 - currentState());
    }

private:
    Pump& m_pump;
};

struct BareMachine
{
    explicit BareMachine(Pump& pump)
    {
        for (QState* state : {&states[0], &states[1]}) {
            auto* transition = new QSignalTransition(&pump, SIGNAL(turned()), state);
            transition->setTargetState(state == &states[0] ? &states[1] : &states[0]);
            QObject::connect(state, &QState::entered, [&pump] { ++pump.transitions; });
        }
        machine.setInitialState(&states[0]);
        machine.start();
    }
    QStateMachine machine;
    QState states[2]{QState(&machine), QState(&machine)};
};

struct DescribedMachine
{
    explicit DescribedMachine(Pump& pump)
        : machine(Log::StateMachine)
    {
        const auto count = [&pump] { ++pump.transitions; };
        const auto way = [&pump](const char* target) {
            return std::vector{
                TransitionDescription::on(&pump, SIGNAL(turned()), QLatin1String(target))};
        };
        machine.setDescription({{{QStringLiteral("A"), count, way("B")},
                                 {QStringLiteral("B"), count, way("A")},
                                 {QStringLiteral("Done")}}});
        machine.start();
    }
    DeclarativeStateMachine machine;
};

// A signal, and a turn of the event loop, which handles everything that waits for it.
void turn(Pump& pump)
{
    Q_EMIT pump.turned();
    QCoreApplication::processEvents();
}

template <typename Machine>
void transitions(benchmark::State& state)
{
    Pump pump;
    Machine machine(pump);
    QCoreApplication::processEvents();
    pump.transitions = 0;
    for (auto _ : state)
        turn(pump);
    if (pump.transitions != qint64(state.iterations()))
        state.SkipWithError("a transition is missing");
}

qint64 resident_KiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    return file.readAll().split(' ').value(1).toLongLong() * (sysconf(_SC_PAGESIZE) / 1024);
}

// After the first ten thousand transitions a million more must not take memory.
template <typename Machine>
bool keepsItsSize(const char* name)
{
    Pump pump;
    Machine machine(pump);
    const auto run = [&pump](int count) {
        for (int i = 0; i < count; ++i)
            turn(pump);
    };
    run(10000);
    const qint64 before = resident_KiB();
    run(1000000);
    const qint64 growth = resident_KiB() - before;
    constexpr qint64 noise_KiB = 64;
    std::printf("1,000,000 transitions of %s: resident memory grew by %lld KiB\n", name, growth);
    return growth <= noise_KiB && pump.transitions >= 1000000;
}

void singleShots(benchmark::State& state)
{
    QObject context;
    qint64 shots = 0;
    for (auto _ : state) {
        QTimer::singleShot(0, &context, [&shots] { ++shots; });
        QCoreApplication::processEvents();
    }
    if (shots != qint64(state.iterations()))
        state.SkipWithError("a shot is missing");
}

// The device answers inside each trigger.
void millionEvents(benchmark::State& state)
{
    for (auto _ : state) {
        tools::EventGroupHandler handler(1, std::chrono::seconds(1));
        const tools::EventSteps steps{
            [&handler] { handler.checkResult(true); },
            [](auto*) { return std::make_shared<QMetaObject::Connection>(); },
            [](const QVariant& answer) { return answer.toBool(); }};
        for (int i = 0; i < 1000000; ++i)
            handler.addEvent(steps);
        bool isDone = false;
        QObject::connect(&handler, &tools::EventGroupHandler::success, [&] { isDone = true; });
        handler.start();
        if (!isDone)
            state.SkipWithError("an event is missing");
    }
}

void millionConnections(benchmark::State& state)
{
    for (auto _ : state) {
        for (int i = 0; i < 1000000; ++i)
            benchmark::DoNotOptimize(std::make_shared<QMetaObject::Connection>());
    }
}

void addAll()
{
    add("StateMachine: a transition/ZelTools", transitions<TwoStates>);
    add("StateMachine: a transition/QStateMachine", transitions<BareMachine>);
    add("StateMachine: a transition/a zero-delay single shot", singleShots);
    add("DeclarativeStateMachine: a transition/ZelTools", transitions<DescribedMachine>);
    add("DeclarativeStateMachine: a transition/QStateMachine", transitions<BareMachine>);
    add("EventGroupHandler: 1,000,000 events/ZelTools", millionEvents);
    add("EventGroupHandler: 1,000,000 events/as many connection objects", millionConnections);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    Path::instance()->init(folder.path() + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize();
    addAll();
    const int result = RatioTable::run(argc, argv);
    std::printf("\n");
    const bool areSteady = keepsItsSize<TwoStates>("StateMachine") &&
                           keepsItsSize<DescribedMachine>("DeclarativeStateMachine");
    return areSteady ? result : 1;
}

#include "bench_statemachine.moc"
