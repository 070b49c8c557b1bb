#include "logging/log.h"
#include "logging/logrenderer.h"
#include "signalemitter.h"
#include "statemachine/statemachine.h"
#include "support.h"
#include "system/fakeclock.h"

#include <QtTest>

#include <thread>

namespace
{

using namespace std::chrono_literals;
using zeltools::SignalEmitter;

/// A machine whose state 1 has a name, and 2 that of its enumerator. It records its signals, and
/// the handler does what a test wants.
class Machine : public StateMachine
{
    Q_OBJECT

public:
    enum State { Hidden = 1, Hot = 2, Lost = Transition };
    Q_ENUM(State)

    explicit Machine(SignalEmitter* emitter)
    {
        setStateNames(QMetaEnum::fromType<State>());
        connect(this, &StateMachine::stateExit, this, [this] { add("exit"); });
        connect(this, &StateMachine::stateEnter, this, [this] { add("enter"); });
        connect(this, &StateMachine::stateChanged, this,
                [this] { add("now " + property("state").toString() + " in"); });
        connect(this, &StateMachine::timeLimitExceeded, this, [this] { add("limit"); });
        listenTo(emitter);
    }
    void listenTo(SignalEmitter* emitter)
    {
        connect(emitter, SIGNAL(notify()), SLOT(handleSignal()));
        connect(emitter, SIGNAL(destroyed()), SLOT(handleSignal()));
    }
    QString stateToString(int state) const override
    {
        return state == 1 ? QString("Busy") : StateMachine::stateToString(state);
    }
    void onSignal(const QObject* sender, const QMetaMethod& signal, bool queued) override
    {
        add((sender ? "" : "late ") + signal.name() + (queued ? " queued in" : " in"));
    }
    void add(const QString& event)
    {
        events.append(event + ' ' + stateToString(currentState()));
        if (event == when)
            then();
    }

    QStringList events;
    QString when; // The event after which then() is called.
    std::function<void()> then;
    using StateMachine::m_lastSignal;
    using StateMachine::m_receptions;
};

} // namespace

class TestStateMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesOfItsLife()
    {
        support::LineRecorder recorder;
        SignalEmitter emitter;
        Machine machine(&emitter);
        QVERIFY(machine.setInitialState(7) && !machine.setInitialState(7));
        Q_EMIT emitter.notify();
        QTRY_COMPARE(machine.currentState(), 7);
        QVERIFY(!machine.setState(7, false) && machine.setState(1));
        QVERIFY(!machine.setState(8) && !machine.setState(StateMachine::Transition));
        machine.handleSignal();
        QTRY_COMPARE(machine.currentState(), 1);
        QVERIFY(machine.setStateAgain());
        QTRY_COMPARE(machine.currentState(), 1);
        QString lines;
        for (const auto& line : recorder.take()) {
            QVERIFY(line.modules == Log::StateMachine);
            lines += LogRenderer::levelToString(line.level) + " | " + line.message + '\n';
        }
        QCOMPARE(lines, support::readFile(QFINDTESTDATA("life.log")));
    }

    void signalsDuringATransitionWaitForTheNextState()
    {
        auto first = std::make_unique<SignalEmitter>();
        auto second = std::make_unique<SignalEmitter>();
        Machine machine(first.get());
        machine.listenTo(second.get());
        machine.when = "late destroyed queued in";
        machine.then = [&] {
            QCOMPARE(machine.m_receptions.firstKey().name(), "destroyed");
            QCOMPARE(machine.m_receptions.lastKey().name(), "notify");
            QCOMPARE(machine.m_lastSignal.name(), "destroyed");
            machine.setState(1); // The third signal is dropped.
            Q_EMIT second->notify();
            QVERIFY(machine.m_receptions.isEmpty() && !machine.m_lastSignal.isValid());
        };
        machine.setInitialState(7);
        Q_EMIT first->notify();
        first.reset();
        Q_EMIT second->notify();
        QTRY_COMPARE(machine.currentState(), 1);
        std::thread([&second] { Q_EMIT second->notify(); }).join();
        QCoreApplication::processEvents();
        second.reset();
        QVERIFY(machine.m_receptions.first().sender.isNull());
        const QStringList expected{"exit Transition",
                                   "now Transition in Transition",
                                   "enter Undefined (7)",
                                   "now Undefined (7) in Undefined (7)",
                                   "late notify queued in Undefined (7)",
                                   "late destroyed queued in Undefined (7)",
                                   "exit Transition",
                                   "now Transition in Transition",
                                   "enter Busy",
                                   "now Busy in Busy",
                                   "notify queued in Busy",
                                   "notify in Busy",
                                   "late destroyed in Busy"};
        QCOMPARE(machine.events, expected);
    }

    void aTimeLimitEndsWithItsState()
    {
        support::LineRecorder recorder;
        SignalEmitter emitter;
        Machine machine(&emitter);
        QSignalSpy exceeded(&machine, &StateMachine::timeLimitExceeded);
        machine.setTimeLimit(Machine::Hot, 2h);
        machine.setInitialState(Machine::Hot);
        const auto pass = [&](std::chrono::seconds time, int warnings) {
            QCoreApplication::processEvents();
            fakeclock::advance(time);
            return exceeded.size() == warnings;
        };
        QVERIFY(pass(1h, 0) && machine.setStateAgain());
        QVERIFY(pass(1h, 0) && machine.setState(7));
        QVERIFY(pass(2h, 0) && machine.setState(Machine::Hot));
        QVERIFY(pass(2h, 1) && pass(2h, 1));
        QCOMPARE(recorder.take().last().message,
                 "State \"Hot\" has been active for longer than its limit of 7200000 ms");
        machine.setTimeLimit(Machine::Hot, 0h);
        QVERIFY(machine.setStateAgain() && pass(2h, 1));
    }

    void mayBeDestroyedAnywhere()
    {
        for (const char* when : {"exit", "enter", "notify queued in", "notify in",
                                 "now Transition in", "now Busy in", "limit"}) {
            SignalEmitter emitter;
            auto* machine = new Machine(&emitter);
            const QPointer<Machine> alive(machine);
            machine->when = when;
            machine->then = [machine] { delete machine; };
            machine->setTimeLimit(1, 1ms);
            machine->setInitialState(1);
            Q_EMIT emitter.notify();
            Q_EMIT emitter.notify();
            QCoreApplication::processEvents();
            Q_EMIT emitter.notify();
            fakeclock::advance(1s);
            QVERIFY2(alive.isNull(), when);
        }
    }
};

QTEST_GUILESS_MAIN(TestStateMachine)
#include "tst_statemachine.moc"
