#include "declarativestatemachine/declarativestatemachine.h"
#include "declarativestatemachine/machineplayer.h"
#include "declarativestatemachine/machinerecording.h"
#include "logging/log.h"
#include "support.h"
#include "support/rows.h"
#include "system/fakeclock.h"

#include <QRect>
#include <QRegularExpression>
#include <QtTest>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using Transition = TransitionDescription;
using Entry = MachineRecording::Entry;

class Tank : public QObject
{
    Q_OBJECT

public:
    enum Size { Small, Large };
    Q_ENUM(Size)

Q_SIGNALS:
    void filled(int level, const QString& unit, double share, const QByteArray& raw, bool isFull,
                qint64 total, Tank::Size size, const QRect& area);
    void shaken();
    void drained();
};

namespace
{

/// All kinds of states and transitions, and names that a text has to escape.
struct Rinse
{
    StateMachineDescription description()
    {
        const auto call = [this](const QString& name) { return [=] { happened(name); }; };
        const auto guard = [=](const QString& name, bool accepts) {
            return [=] { return happened(name), accepts; };
        };
        const auto onShaken = [this](const QString& target) {
            return Transition::on(&tank, SIGNAL(shaken()), target);
        };
        const auto onDrained = Transition::on(&tank, SIGNAL(drained()), "Pause");
        Transition filled = Transition::on(&tank, // clang-format off
            SIGNAL(filled(int,QString,double,QByteArray,bool,qint64,Tank::Size,QRect)), // clang-format on
                                           "Working", guard("level", true));
        filled.argumentsGuard = [](const QVariantList& arguments) {
            return arguments[0].toInt() > 5 && arguments[6].value<Tank::Size>() == Tank::Large;
        };
        Transition skip = Transition::direct("Done");
        skip.guard = guard("skip", false);
        Transition knock = Transition::inside(&tank, SIGNAL(shaken()), {});
        knock.action = call("knock");
        const StateDescription regionA{
            "A", {}, {}, {}, {{"Twin", {}, {onShaken("Half")}}, {"Half"}}};
        const StateDescription regionB{"B", {}, {}, {}, {{"Twin", {}, {knock}}}};
        return {{{"Ready \"now\"\n", call("ready"), {filled}, call("out of ready")},
                 {"Working",
                  {},
                  {onDrained},
                  call("out of working"),
                  {{"Pump", {}, {onShaken("Heat")}},
                   {"Heat", call("heat"), {Transition::after(1h, "Pump")}},
                   {"Back", {}, {}, {}, {}, StateDescription::ShallowHistory}}},
                 {"Pause", {}, {skip, Transition::after(1min, ""), onShaken("Back")}},
                 {"",
                  {},
                  {Transition::after(1h, "Done")},
                  {},
                  {regionA, regionB},
                  StateDescription::Parallel},
                 {"Done"}},
                "Rinse"};
    }

    // Drives a machine through everything.
    void run(DeclarativeStateMachine& machine)
    {
        const auto turn = [] { QTest::qWait(0); };
        const auto fill = [this](int level) {
            Q_EMIT tank.filled(level, QString(257, 'l'), 0.1, "\xff", true, -1, Tank::Large, {});
            Q_EMIT tank.filled(level, "l\"", 1e99, "", false, 1, Tank::Large, {});
        };
        machine.start();
        turn();
        fill(5);
        fill(6);
        for (auto signal : {&Tank::shaken, &Tank::drained, &Tank::shaken}) {
            Q_EMIT(tank.*signal)();
            turn();
        }
        fakeclock::advance(3600s);
        Q_EMIT tank.drained();
        fakeclock::advance(60s);
        Q_EMIT tank.shaken();
        machine.restart();
        fakeclock::advance(1s);
        fill(6);
        Q_EMIT tank.drained();
        fakeclock::advance(60s);
        fakeclock::advance(3600s);
        turn();
    }

    Tank tank;
    std::function<void(const QString&)> happened = [](const QString&) {};
};

QByteArray withoutTimes(const MachineRecording& recording)
{
    return QString::fromUtf8(recording.toText())
        .replace(QRegularExpression("^(start|duration|[0-9.]+)(?= )( [-:.TZ0-9]*$)?",
                                    QRegularExpression::MultilineOption),
                 "T")
        .toUtf8();
}

} // namespace

class TestMachineRecording : public QObject
{
    Q_OBJECT

private:
    // Recordings of one run: of the whole run, and those that its actions and guards made in it.
    MachineRecording m_whole;
    std::vector<MachineRecording> m_parts;
    Rinse m_rinse;

private Q_SLOTS:
    void initTestCase()
    {
        qRegisterMetaType<Tank::Size>();
        DeclarativeStateMachine machine(Log::Cleaning);
        machine.setRecording(1000);
        machine.setDescription(m_rinse.description());
        m_rinse.happened = [&](const QString&) { m_parts.push_back(machine.recording()); };
        m_rinse.run(machine);
        m_whole = machine.recording();
        m_rinse.happened = [](const QString&) {};
    }

    void recordsARun()
    {
        QCOMPARE(withoutTimes(m_whole), support::readFile(QFINDTESTDATA("rinse.recording")));
        QVERIFY(m_whole.start.secsTo(QDateTime::currentDateTime()) < 60);
        const auto spent = m_whole.timesSpent();
        const auto isAbout = [&](const char* name, std::chrono::seconds time) {
            const auto more = spent[{name}] - time;
            return more >= 0s && more < 20s;
        };
        QVERIFY(isAbout("Heat", 3600s) && isAbout("Pause", 120s) && isAbout("B", 3601s));
        QCOMPARE((m_whole.timesFired()[{{"Pause"}, 2}]), 2);
        QVERIFY(m_whole.currentStates().isEmpty());
    }

    void playsBack()
    {
        QStringList log, calls;
        m_rinse.happened = [&](const QString& name) { calls.append(name); };
        const StateMachineDescription description = m_rinse.description();
        QCOMPARE(playBack(m_whole, description, {}, &log), "");
        QCOMPARE(log.size(), m_whole.entries.size());
        QCOMPARE(calls, QStringList());
        QCOMPARE(playBack(m_whole, description, {true, true}), "");
        m_rinse.happened = [](const QString&) {};
        QCOMPARE(calls.join(' '),
                 "ready level level level out of ready heat out of working skip heat out of "
                 "working skip knock ready level out of ready out of working skip");
    }

    // A recording that is made in an action or a guard ends inside a step.
    void playsBackPartsOfARun()
    {
        QVERIFY(m_parts.size() > 10);
        QString error;
        for (const MachineRecording& part : m_parts) {
            QCOMPARE(playBack(part, m_rinse.description()), "");
            const auto read = MachineRecording::fromText(part.toText(), error);
            QVERIFY2(read && read->isStepUnfinished, qPrintable(error));
        }
    }

    // Wherever the ring begins, the active states of its first entry are known.
    void playsBackTheEndOfARun()
    {
        for (int size = 1; size < m_whole.entries.size(); size += 3) {
            DeclarativeStateMachine machine(Log::Cleaning);
            machine.setDescription(m_rinse.description());
            machine.setRecording(size);
            MachineRecording parallel;
            m_rinse.happened = [&](const QString& name) {
                if (name == "knock")
                    parallel = machine.recording();
            };
            m_rinse.run(machine);
            const MachineRecording recording = machine.recording();
            QCOMPARE(recording.dropped + recording.entries.size(), m_whole.entries.size());
            // The last of its two hours begins before the oldest of eight entries.
            QVERIFY(size < 8 || recording.timesSpent()[{"B"}] >= 3600s);
            for (const MachineRecording& each : {recording, parallel}) {
                QString error;
                const auto read = MachineRecording::fromText(each.toText(), error);
                QVERIFY2(read && read->toText() == each.toText(), qPrintable(error));
                const QString problem = playBack(*read, m_rinse.description());
                if (!problem.endsWith("(what histories remembered before is lost)"))
                    QCOMPARE(problem, each.entries.isEmpty() ? "The recording has no entries" : "");
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestMachineRecording)
#include "tst_machinerecording.moc"
