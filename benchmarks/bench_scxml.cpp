// The benchmarks compare transitions and documents with the machine of Qt that runs such documents.

#include "ratiotable.h"
#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/declarativestatemachine/scxmlreader.h>
#include <zeltools/declarativestatemachine/scxmlwriter.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QScxmlStateMachine>
#include <QSignalTransition>
#include <QState>
#include <QStateMachine>
#include <QTemporaryDir>

#include <memory>

using namespace zeltools::declarativestatemachine;

namespace
{

/// Emits the signal that drives the machines, and counts their transitions.
class Pump : public QObject
{
    Q_OBJECT

public:
    qint64 transitions = 0;

Q_SIGNALS:
    void turned();
};

StateMachineDescription ring(Pump& pump, int size)
{
    StateMachineDescription description;
    for (int i = 0; i < size; ++i) {
        const QString next = QStringLiteral("S%1").arg((i + 1) % size);
        description.states.push_back({QStringLiteral("S%1").arg(i),
                                      [&pump] { ++pump.transitions; },
                                      {TransitionDescription::on(&pump, SIGNAL(turned()), next)}});
    }
    description.states.push_back({QStringLiteral("Done")});
    return description;
}

std::unique_ptr<QScxmlStateMachine> load(QByteArray document)
{
    QBuffer file(&document);
    file.open(QIODevice::ReadOnly);
    return std::unique_ptr<QScxmlStateMachine>(QScxmlStateMachine::fromData(&file));
}

struct DescribedMachine
{
    explicit DescribedMachine(Pump& pump)
        : machine(Log::StateMachine)
    {
        machine.setDescription(ring(pump, 2));
        machine.start();
    }
    DeclarativeStateMachine machine;
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

struct DocumentMachine
{
    explicit DocumentMachine(Pump& pump)
        : machine(load(toScxml(ring(pump, 2)).toUtf8()))
    {
        for (const char* state : {"S0", "S1"}) {
            machine->connectToState(QLatin1String(state), [&pump](bool isActive) {
                pump.transitions += isActive ? 1 : 0;
            });
        }
        QObject::connect(&pump, &Pump::turned, machine.get(),
                         [this] { machine->submitEvent(QStringLiteral("Pump.turned")); });
        machine->start();
    }
    std::unique_ptr<QScxmlStateMachine> machine;
};

template <typename Machine>
void transitions(benchmark::State& state)
{
    Pump pump;
    Machine machine(pump);
    QCoreApplication::processEvents();
    pump.transitions = 0;
    for (auto _ : state) {
        Q_EMIT pump.turned();
        QCoreApplication::processEvents();
    }
    if (pump.transitions != qint64(state.iterations()))
        state.SkipWithError("a transition is missing");
}

void reading(benchmark::State& state, int size, int count)
{
    Pump pump;
    const QByteArray document = toScxml(ring(pump, size)).toUtf8();
    const ScxmlBindings bindings{[&pump](const QString&) {
        return ExpectedSignal{&pump, SIGNAL(turned())};
    }};
    QString error;
    for (auto _ : state) {
        for (int i = 0; i < count; ++i) {
            if (!fromScxml(document, bindings, error))
                state.SkipWithError("the document is refused");
        }
    }
}

void loading(benchmark::State& state)
{
    Pump pump;
    const QByteArray document = toScxml(ring(pump, 1000)).toUtf8();
    for (auto _ : state) {
        if (!load(document)->parseErrors().isEmpty())
            state.SkipWithError("the document is refused");
    }
}

void writing(benchmark::State& state, int size, int count)
{
    Pump pump;
    const StateMachineDescription description = ring(pump, size);
    for (auto _ : state) {
        for (int i = 0; i < count; ++i)
            benchmark::DoNotOptimize(toScxml(description));
    }
}

template <typename Work>
void addSizes(const std::string& name, const Work& work)
{
    const auto rowOf = [&](const char* row, int size, int count) {
        add((name + row).c_str(), [=](benchmark::State& state) { work(state, size, count); });
    };
    rowOf("/10,000 states", 10000, 1);
    rowOf("/10 times 1,000 states", 1000, 10);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    Path::instance()->init(folder.path() + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize();
    add("Documents: a transition/DeclarativeStateMachine", transitions<DescribedMachine>);
    add("Documents: a transition/QStateMachine", transitions<BareMachine>);
    add("Documents: a transition/QScxmlStateMachine", transitions<DocumentMachine>);
    add("Documents: reading 1,000 states/fromScxml",
        [](benchmark::State& state) { reading(state, 1000, 1); });
    add("Documents: reading 1,000 states/QScxmlStateMachine", loading);
    addSizes("fromScxml", reading);
    addSizes("toScxml", writing);
    return RatioTable::run(argc, argv);
}

#include "bench_scxml.moc"
