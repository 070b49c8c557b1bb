#include "declarativestatemachine/declarativestatemachine.h"
#include "declarativestatemachine/delayedtransition.h"
#include "logging/log.h"
#include "signalemitter.h"
#include "support.h"
#include "system/fakeclock.h"

#include <QSignalTransition>
#include <QStateMachine>
#include <QtTest>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using Transition = TransitionDescription;
using zeltools::SignalEmitter;

namespace
{

/// A machine with a list of its log lines and of the actions of its states.
class Story : public QObject
{
public:
    Story()
    {
        connect(LogNode::instance(), &LogNode::logged, this,
                [this](LogLevel::Level level, const LogModules& modules, const QString& line) {
                    const bool isRight = modules == Log::Cleaning || level == LogLevel::Error;
                    events.append(isRight ? line.section(", file", 0, 0) : "wrong module");
                });
    }
    ~Story() override { delete machine; }

    StateDescription state(const QString& name, const std::vector<Transition>& transitions = {})
    {
        return {name, [=] { add(name); }, transitions, [=] { add("out of " + name); }};
    }
    Transition onNotify(const QString& target, const std::function<bool()>& guard = {})
    {
        return Transition::on(&emitter, SIGNAL(notify()), target, guard);
    }
    void run(const std::vector<StateDescription>& states)
    {
        machine->setDescription({states});
        machine->start();
    }
    QString text() const { return events.join('\n') + '\n'; }
    void add(const QString& event)
    {
        events.append(event);
        if (event == when)
            then();
    }

    QPointer<DeclarativeStateMachine> machine{new DeclarativeStateMachine(Log::Cleaning)};
    SignalEmitter emitter;
    QStringList events;
    QString when; // The event after which then() is called.
    std::function<void()> then;
};

} // namespace

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

    void mayBeDestroyedAnywhere()
    {
        for (const char* when : {"A", "out of A", "guard", "B", "running"}) {
            Story story;
            story.when = when;
            story.then = [&] { // in an event loop of its own, as a dialogue has
                QEventLoop loop;
                QTimer::singleShot(0, &loop, [&] { delete story.machine; });
                QTimer::singleShot(1, &loop, &QEventLoop::quit);
                loop.exec();
            };
            connect(story.machine, &DeclarativeStateMachine::runningChanged, this,
                    [&] { story.add("running"); });
            const Transition shut = story.onNotify("A", [&] { return story.add("guard"), false; });
            story.run({story.state("A", {shut, shut, story.onNotify("B")}),
                       story.state("B", {Transition::direct("C")}), story.state("C")});
            for (int i = 0; i < 5; ++i) {
                QCoreApplication::processEvents();
                Q_EMIT story.emitter.notify();
            }
            QVERIFY2(story.machine.isNull(), when);
            QCOMPARE(story.events.last(), when);
        }
    }
};

QTEST_GUILESS_MAIN(TestDeclarativeStateMachine)
#include "tst_declarativestatemachine.moc"
