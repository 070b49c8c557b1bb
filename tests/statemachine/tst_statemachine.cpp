#include "logging/log.h"
#include "statemachine/statemachine.h"
#include "support.h"

#include <QtTest>

#include <thread>

namespace
{

class Pump : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void stopped();
    void moved(int steps);
};

/// Names two states, notes what happens to it, and does in it what a test wants.
class Machine : public StateMachine
{
    Q_OBJECT

public:
    enum State { Idle, Busy };

    explicit Machine(Pump* pump = nullptr)
    {
        const auto note = [this](const QString& what) {
            return [this, what] { happens(what + stateToString(currentState())); };
        };
        connect(this, &StateMachine::stateExit, this, note("exit, "));
        connect(this, &StateMachine::stateEnter, this, note("enter "));
        if (pump == nullptr)
            return;
        connect(pump, &Pump::stopped, this, qOverload<>(&StateMachine::handleSignal));
        connect(pump, SIGNAL(moved(int)), SLOT(handleSignal()));
    }
    QString stateToString(int state) const override
    {
        return state == Busy ? QString("Busy") : StateMachine::stateToString(state);
    }

    QStringList events;
    QString when; // this happens,
    std::function<void()> then;
    using StateMachine::m_lastSignal;
    using StateMachine::m_receptions;

protected:
    void onSignal(const QObject* sender, const QMetaMethod& signal, bool queued) override
    {
        happens(QString("%1%2%3").arg(sender ? "" : "late ", QString(signal.methodSignature()),
                                      queued ? " queued" : ""));
    }

private:
    void happens(const QString& event)
    {
        events.append(event);
        if (event == when)
            then();
    }
};

} // namespace

class TestStateMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesOfItsLife()
    {
        support::LineRecorder recorder;
        Pump pump;
        Machine machine(&pump);
        QVERIFY(machine.setInitialState(7));
        QVERIFY(!machine.setInitialState(7));
        QCOMPARE(machine.currentState(), int(StateMachine::Transition));
        Q_EMIT pump.stopped();
        QTRY_COMPARE(machine.currentState(), 7);
        QVERIFY(!machine.setState(7, false));
        QVERIFY(machine.setState(Machine::Busy));
        QVERIFY(!machine.setState(8));
        QVERIFY(!machine.setState(StateMachine::Transition));
        machine.handleSignal();
        QTRY_COMPARE(machine.currentState(), int(Machine::Busy));
        QVERIFY(machine.setStateAgain());
        QTRY_COMPARE(machine.currentState(), int(Machine::Busy));
        QStringList lines;
        for (const auto& line : recorder.take()) {
            QVERIFY(line.modules == Log::StateMachine);
            lines.append(QString::number(line.level) + ' ' + line.message);
        }
        const QString handle = "void StateMachine::handleSignal() : ";
        const QString set = "bool StateMachine::setState(int, bool) state not set to ";
        const QString go = "0 void StateMachine::goToNextState() : State changed from  ";
        QCOMPARE(
            lines,
            QStringList(
                {"4 bool StateMachine::setInitialState(int) : State machine already in use",
                 "0 " + handle + "Received signal \"stopped\"",
                 "0 " + handle +
                     "signal \"stopped\" received during transition. Reception will occur at "
                     "beginning of next state",
                 go + "\"InvalidState\"  to  \"Undefined (7)\"",
                 "0 void StateMachine::handleSignal(const StateMachine::SignalReception&) : "
                 "Processing signal \"stopped\"",
                 "3 " + set + " \"Undefined (7)\" , because State is already =  \"Undefined (7)\"",
                 "4 " + set +
                     "\"Undefined (8)\" , because State is already changing from  "
                     "\"Undefined (7)\"  to  \"Busy\"",
                 "3 " + set + " \"Transition\" , because State is already =  \"Transition\"",
                 "4 " + handle + "Method called with no sender",
                 go + "\"Undefined (7)\"  to  \"Busy\"", go + "\"Busy\"  to  \"Busy\""}));
    }

    void signalsDuringATransitionWaitForTheNextState()
    {
        Pump other;
        auto pump = std::make_unique<Pump>();
        Machine machine(pump.get());
        connect(&other, SIGNAL(moved(int)), &machine, SLOT(handleSignal()));
        machine.when = "late moved(int) queued";
        machine.then = [&] {
            QCOMPARE(machine.m_receptions.size(), 2);
            QVERIFY(machine.m_receptions.firstKey() == QMetaMethod::fromSignal(&Pump::moved));
            QVERIFY(machine.m_lastSignal == machine.m_receptions.firstKey());
            machine.setState(Machine::Busy); // and the third signal does not cross it
            Q_EMIT other.moved(2);
            QVERIFY(machine.m_receptions.isEmpty() && !machine.m_lastSignal.isValid());
        };
        machine.setInitialState(Machine::Idle);
        Q_EMIT pump->stopped();
        Q_EMIT pump->moved(1);
        Q_EMIT pump->stopped();
        pump.reset();
        QTRY_COMPARE(machine.currentState(), int(Machine::Busy));
        QCOMPARE(machine.events,
                 QStringList({"exit, Transition", "enter Undefined (0)", "late stopped() queued",
                              "late moved(int) queued", "exit, Transition", "enter Busy",
                              "moved(int) queued"}));
    }

    void aSignalOfAnotherThread()
    {
        Pump pump;
        Machine machine(&pump);
        machine.setInitialState(Machine::Busy);
        QTRY_COMPARE(machine.events.size(), 2);
        std::thread([&pump] { Q_EMIT pump.moved(1); }).join();
        QTRY_COMPARE(machine.events.value(2), "moved(int)");
    }

    void mayBeDestroyedAnywhere_data()
    {
        QTest::addColumn<QString>("when");
        for (const char* when : {"exit, Transition", "enter Busy", "stopped() queued", "stopped()"})
            QTest::newRow(when) << when;
    }
    void mayBeDestroyedAnywhere()
    {
        Pump pump;
        QPointer<Machine> machine(new Machine(&pump));
        QFETCH(QString, when);
        machine->when = when;
        machine->then = [&] { delete machine; };
        machine->setInitialState(Machine::Busy);
        Q_EMIT pump.stopped();
        Q_EMIT pump.stopped();
        QCoreApplication::processEvents();
        Q_EMIT pump.stopped();
        QVERIFY(machine.isNull());
    }
};

QTEST_GUILESS_MAIN(TestStateMachine)
#include "tst_statemachine.moc"
