#include "declarativestatemachine/declarativestatemachine.h"
#include "declarativestatemachine/delayedtransition.h"
#include "declarativestatemachine/signalutils.h"
#include "logging/log.h"
#include "logging/lognode.h"

#include <QFinalState>
#include <QSignalTransition>
#include <QState>
#include <QStateMachine>
#include <QtTest>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using Way = TransitionDescription;

namespace
{

class Tank : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void full();
    void moved(int level);
};

/// A machine, its lines in the log and what its states do, in one list.
class Story : public QObject
{
public:
    Story()
        : machine(new DeclarativeStateMachine(Log::Cleaning))
    {
        connect(LogNode::instance(), &LogNode::logged, this,
                [this](LogLevel::Level level, const LogModules& modules, const QString& line) {
                    if (level != LogLevel::Error && !(modules == Log::Cleaning))
                        events.append("wrong module");
                    events.append(line.section(", file", 0, 0));
                });
    }
    ~Story() override { delete machine; }

    std::function<void()> note(const QString& what)
    {
        return [=] {
            events.append(what);
            if (what == when)
                then();
        };
    }
    void run(const std::vector<StateDescription>& states)
    {
        machine->setDescription({states});
        machine->start();
    }

    QPointer<DeclarativeStateMachine> machine;
    Tank tank;
    QStringList events;
    QString when; // this happens,
    std::function<void()> then;
};

const QString s_started = "State machine Started";
const QString s_stopped = "State machine Stopped";

} // namespace

class TestDeclarativeStateMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesOfARun()
    {
        Story story;
        QSignalSpy running(story.machine, &DeclarativeStateMachine::runningChanged);
        bool isOpen = false;
        QElapsedTimer clock;
        story.run({{"Ready", story.note("in"), {Way::direct("Filling")}, story.note("out")},
                   {"Filling", [&] { clock.start(); }, {Way::after(30ms, "Full")}},
                   {"Full",
                    {},
                    {{Way::Type(3), "Ready"},
                     Way::on(&story.tank, SIGNAL(full()), "Done", [&] { return isOpen; }),
                     Way::on(&story.tank, SIGNAL(moved(int)), "Full")}},
                   {"Done", story.note("done")}});
        QTRY_COMPARE(story.events.size(), 5);
        QVERIFY(clock.elapsed() >= 30);
        Q_EMIT story.tank.full();
        Q_EMIT story.tank.moved(1);
        isOpen = true;
        Q_EMIT story.tank.full();
        QTRY_COMPARE(running.size(), 2);
        QCOMPARE(story.events,
                 QStringList({"in", s_started, "out",
                              " ^ Transition from Ready to Filling triggered (direct)",
                              " ^ Transition from Filling to Full trigerred (timeout 30ms)",
                              " ^ Transition from Full to Full triggered, signal Tank::moved",
                              " ^ Transition from Full to Done triggered, signal Tank::full",
                              "done", s_stopped}));
    }

    void faultsAreAssertionsAndTheRestIsBuilt()
    {
        Story story;
        story.run({{"A",
                    {},
                    {Way::direct("%1"), Way::on(nullptr, SIGNAL(full()), "B"),
                     Way::on(&story.tank, SIGNAL(empty()), "Nowhere"), Way::after(0ms, "B")}},
                   {"B", {}, {Way::direct("A"), Way::after(0ms, "C")}}});
        QTRY_VERIFY(story.events.contains(s_stopped));
        const QString fault = "RELEASE ASSERT failure: ";
        const QString target = " ( targetState != nullptr )";
        const QString final = fault + "Attempting to add transitions from final state B ( "
                                      "stateDescription.transitions.size() == 0 )";
        const QString unknown = fault + "Attempting to set a transition to undefined state ";
        const QString signal =
            " ( zeltools::signalutils::classContainsSignal(transitionDescription.obj, "
            "transitionDescription.signal) )";
        QCOMPARE(
            story.events,
            QStringList({unknown + "%1" + target, fault + "Signal 2full() does not exist" + signal,
                         unknown + "Nowhere" + target,
                         fault + "Signal 2empty() does not exist" + signal, final, final,
                         unknown + "C" + target, s_started,
                         " ^ Transition from A to B trigerred (timeout 0ms)", s_stopped}));
    }

    void noTimeoutComesLate()
    {
        Story story;
        story.run({{"A", {}, {Way::after(20ms, "Late"), Way::on(&story.tank, SIGNAL(full()), "B")}},
                   {"B", {}, {Way::after(1h, "Late"), Way::on(&story.tank, SIGNAL(full()), "A")}},
                   {"Late", story.note("late")}});
        while (story.events.isEmpty()) // for less than the timeout
            QCoreApplication::processEvents();
        for (int i = 0; i < 2001; ++i)
            Q_EMIT story.tank.full();
        QTest::qWait(40);
        QCOMPARE(story.events.size(), 2002);
        QVERIFY(story.events.last().contains("from A to B"));
    }

    // The machine has the timeout in its queue already when a signal takes it on: neither the state
    // that is left nor the one that is entered has timed out.
    void aTimeoutInTheQueueEndsWithItsState()
    {
        QStateMachine machine;
        QState first(&machine);
        QState second(&machine);
        QFinalState late(&machine);
        Tank tank;
        auto* timeout = new DelayedTransition(&first, 0ms);
        timeout->setTargetState(&late);
        (new DelayedTransition(&second, 1h))->setTargetState(&late);
        (new QSignalTransition(&tank, SIGNAL(full()), &first))->setTargetState(&second);
        auto* timer = timeout->findChild<QTimer*>();
        connect(timer, &QTimer::timeout, &tank, &Tank::full);
        machine.setInitialState(&first);
        machine.start();
        QTRY_VERIFY(machine.configuration().contains(&second));
        QCoreApplication::processEvents();
        QVERIFY(machine.configuration().contains(&second));
    }

    void restartsInQuickSuccessionGiveOneStart()
    {
        Story story;
        story.run({{"A",
                    story.note("A"),
                    {Way::on(&story.tank, SIGNAL(full()), "B"), Way::after(1h, "Late")}},
                   {"B", story.note("B"), {Way::after(150ms, "Late")}},
                   {"Late", story.note("late")}});
        QTRY_COMPARE(story.events.size(), 2);
        Q_EMIT story.tank.full();
        for (int i = 0; i < 5; ++i)
            story.machine->restart();
        QTRY_COMPARE(story.events.size(), 7);
        QTest::qWait(100);
        QCOMPARE(
            story.events,
            QStringList({"A", s_started, " ^ Transition from A to B triggered, signal Tank::full",
                         "B", s_stopped, "A", s_started}));
    }

    void mayBeDestroyedAnywhere_data()
    {
        QTest::addColumn<QString>("when");
        for (const char* when : {"A", "out of A", "guard", "B", "Started", "Stopped"})
            QTest::newRow(when) << when;
    }
    void mayBeDestroyedAnywhere()
    {
        Story story;
        QFETCH(QString, when);
        story.when = when;
        story.then = [&] { // in an event loop of its own, as a dialogue has
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&] { delete story.machine; });
            QTimer::singleShot(1, &loop, &QEventLoop::quit);
            loop.exec();
        };
        connect(story.machine, &DeclarativeStateMachine::runningChanged, this,
                [&] { story.note(story.machine->isRunning() ? "Started" : "Stopped")(); });
        const auto guard = [&] {
            story.note("guard")();
            return false;
        };
        story.run({{"A",
                    story.note("A"),
                    {Way::on(&story.tank, SIGNAL(full()), "A", guard),
                     Way::on(&story.tank, SIGNAL(full()), "B", guard),
                     Way::on(&story.tank, SIGNAL(full()), "B")},
                    story.note("out of A")},
                   {"B", story.note("B"), {Way::direct("C")}},
                   {"C", story.note("C")}});
        const int most = 20;
        for (int i = 0; i < most && story.machine; ++i) {
            QCoreApplication::processEvents();
            Q_EMIT story.tank.full();
        }
        QVERIFY(story.machine.isNull());
        QCOMPARE(story.events.last(), when);
        QCoreApplication::processEvents();
        Q_EMIT story.tank.full();
        QCOMPARE(story.events.last(), when);
    }

    void anEmitterMayBeDestroyed()
    {
        Story story;
        auto first = std::make_unique<Tank>();
        auto second = std::make_unique<Tank>();
        story.run({{"A",
                    {},
                    {Way::on(first.get(), SIGNAL(full()), "B"),
                     Way::on(second.get(), SIGNAL(full()), "B"),
                     Way::on(&story.tank, SIGNAL(full()), "B")}},
                   {"B",
                    {},
                    {Way::on(first.get(), SIGNAL(full()), "A"),
                     Way::on(&story.tank, SIGNAL(full()), "A")}},
                   {"C"}});
        QTRY_COMPARE(story.events.size(), 1);
        first.reset();
        second.reset();
        Q_EMIT story.tank.full();
        Q_EMIT story.tank.full();
        Q_EMIT story.tank.full();
        QCOMPARE(story.events.size(), 4);
    }
};

QTEST_GUILESS_MAIN(TestDeclarativeStateMachine)
#include "tst_declarativestatemachine.moc"
