#include "declarativestatemachine/delayedtransition.h"
#include "story.h"
#include "support.h"
#include "system/fakeclock.h"

#include <QSignalTransition>
#include <QStateMachine>
#include <QtTest>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using Transition = TransitionDescription;
using zeltools::SignalEmitter;

class TestDeclarativeStateMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesOfARun()
    {
        Story story;
        auto other = std::make_unique<SignalEmitter>();
        const Transition onOther = Transition::on(other.get(), SIGNAL(notify()), "Late");
        bool isOpen = false;
        story.run({story.state("Ready", {Transition::direct("Filling")}),
                   {"Filling", {}, {{Transition::Type(3), "Ready"}, Transition::after(1h, "Full")}},
                   {"Full",
                    {},
                    {onOther, Transition::after(1h, "Late"),
                     Transition::on(&story.emitter, SIGNAL(objectNameChanged(QString)), "Full"),
                     story.onNotify("Done", [&] { return isOpen; })}},
                   {"Late"},
                   story.state("Done")});
        fakeclock::advance(3599s);
        story.add("one second before the timeout");
        fakeclock::advance(1s);
        Q_EMIT story.emitter.notify();
        fakeclock::advance(3599s);
        other.reset();
        story.emitter.setObjectName("emitter"); // the state is entered again, and so is its timeout
        fakeclock::advance(1s);
        isOpen = true;
        Q_EMIT story.emitter.notify();
        QTRY_COMPARE(story.text(), support::readFile(QFINDTESTDATA("run.log")));
    }

    void faultsAreAssertionsAndBuildingContinues()
    {
        Story story;
        auto* const other = new SignalEmitter;
        story.run({{"A",
                    [=] { other->deleteLater(); },
                    {Transition::direct("%1"), Transition::on(nullptr, SIGNAL(notify()), "B"),
                     Transition::on(&story.emitter, SIGNAL(empty()), "C"),
                     Transition::on(other, "2destroyed( QObject * )", "B")}},
                   {"B", {}, {Transition::direct("A")}}});
        QTRY_COMPARE(story.text(), support::readFile(QFINDTESTDATA("faults.log")));
    }

    // The machine has the timeout in its queue when a signal comes first: neither the state that is
    // left nor the one that is entered has timed out.
    void aTimeoutInTheQueueEndsWithItsState()
    {
        QStateMachine machine;
        QState first(&machine), second(&machine), late(&machine);
        SignalEmitter emitter;
        auto* timeout = new DelayedTransition(&first, 0ms);
        timeout->setTargetState(&late);
        (new DelayedTransition(&second, 1h))->setTargetState(&late);
        (new QSignalTransition(&emitter, SIGNAL(notify()), &first))->setTargetState(&second);
        connect(timeout->findChild<QTimer*>(), &QTimer::timeout, &emitter, &SignalEmitter::notify);
        machine.setInitialState(&first);
        machine.start();
        QTRY_VERIFY(machine.configuration().contains(&second));
        QCoreApplication::processEvents();
        QVERIFY(machine.configuration().contains(&second));
    }

    void startsOnceAfterRestarts()
    {
        Story story;
        auto* const pause = story.machine->findChild<QTimer*>();
        story.run({story.state("A", {story.onNotify("B"), Transition::after(1h, "Late")}),
                   story.state("B", {Transition::after(1min, "Late")}), story.state("Late")});
        story.machine->restart(); // before it has started
        story.machine->start();   // replaces the restart
        QVERIFY(!pause->isActive());
        QTRY_COMPARE(story.events.size(), 5);
        Q_EMIT story.emitter.notify();
        for (int i = 0; i < 5; ++i)
            story.machine->restart();
        QCOMPARE(pause->interval(), 100);
        fakeclock::advance(1s);
        fakeclock::advance(1min); // the timeout of the first run
        const QStringList restart{"State machine Stopped", "A", "State machine Started"};
        QCOMPARE(story.events.mid(2),
                 restart + story.events.mid(5, 2) + QStringList("B") + restart);
        story.machine->restart();
        QTRY_VERIFY(!story.machine->isRunning());
        story.machine->start();
        QVERIFY(!pause->isActive());
        QTRY_VERIFY(story.machine->isRunning());
    }

    void stopsForGood()
    {
        Story story;
        StateDescription first = story.state("A", {Transition::after(1h, "Late")});
        first.timeLimit = 1h;
        story.run({first, story.state("Late")});
        story.machine->stop(); // before it has started
        fakeclock::advance(1h);
        const QStringList run{"A", "State machine Started", "State machine Stopped"};
        QCOMPARE(story.events, run);
        story.machine->start();
        QTRY_COMPARE(story.machine->currentState(), QString("A"));
        story.machine->restart();
        story.machine->stop();
        QCOMPARE(story.machine->currentState(), QString("A"));
        fakeclock::advance(1h);
        QCOMPARE(story.events, run + run);
        QCOMPARE(story.machine->currentState(), QString());
        story.machine->restart();
        story.machine->cancelRestart();
        fakeclock::advance(1h);
        QCOMPARE(story.events, run + run);
        story.machine->setDescription({});
        QVERIFY(story.events.last().contains("already has a description"));
    }

    void mayBeDestroyedAnywhere()
    {
        for (const char* when : {"A", "out of A", "guard", "B", "running", "changed", "finished",
                                 "limit", "entry guard", "timeout guard", "arguments guard",
                                 "fired", "action", "arguments action"}) {
            Story story;
            story.when = when;
            story.then = [&] { // in an event loop of its own, as a dialogue has
                QEventLoop loop;
                QTimer::singleShot(0, &loop, [&] { delete story.machine; });
                QTimer::singleShot(1, &loop, &QEventLoop::quit);
                loop.exec();
            };
            const auto tell = [&](const char* event) { return [&, event] { story.add(event); }; };
            connect(story.machine, &DeclarativeStateMachine::runningChanged, this, tell("running"));
            connect(story.machine, &DeclarativeStateMachine::stateChanged, this, tell("changed"));
            connect(story.machine, &DeclarativeStateMachine::finished, this, tell("finished"));
            connect(story.machine, &DeclarativeStateMachine::transitionFired, this, tell("fired"));
            connect(story.machine, &DeclarativeStateMachine::timeLimitExceeded, this,
                    tell("limit"));
            const Transition shut = story.onNotify("A", [&] { return story.add("guard"), false; });
            Transition open = story.onNotify("B"), late = Transition::after(0ms, "C"),
                       direct = Transition::direct("C");
            open.argumentsGuard = [&](auto&) { return story.add("arguments guard"), true; };
            open.action = tell("action");
            open.argumentsAction = [&](auto&) { story.add("arguments action"); };
            late.guard = [&] { return story.add("timeout guard"), false; };
            direct.guard = [&] { return story.add("entry guard"), true; };
            StateDescription first = story.state("A", {shut, shut, late, open});
            first.timeLimit = 1ms;
            story.run({first, story.state("B", {direct}), story.state("C")});
            QTRY_VERIFY(story.machine.isNull() || story.events.contains("limit"));
            for (int i = 0; i < 5; ++i) {
                Q_EMIT story.emitter.notify();
                QCoreApplication::processEvents();
            }
            QVERIFY2(story.machine.isNull(), when);
            QCOMPARE(story.events.last(), when);
        }
    }
};

QTEST_GUILESS_MAIN(TestDeclarativeStateMachine)
#include "tst_declarativestatemachine.moc"
