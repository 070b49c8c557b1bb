#include "declarativestatemachine/declarativestatemachine.h"
#include "declarativestatemachine/machineplayer.h"
#include "declarativestatemachine/machinerecording.h"
#include "logging/log.h"
#include "support.h"
#include "support/descriptions.h"
#include "support/rows.h"
#include "system/fakeclock.h"

#include <QRect>
#include <QRegularExpression>
#include <QtTest>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using namespace support;
using Entry = MachineRecording::Entry;
using Fault = std::tuple<const char*, QByteArray, QByteArray, QString>;
using Change = std::tuple<const char*, std::function<void(StateMachineDescription&)>, QString>;

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
        const auto skip = guarded(Transition::direct("Done"), guard("skip", false));
        const auto late = guarded(Transition::after(30min, "Done"), guard("skip", false));
        Transition knock = Transition::inside(&tank, SIGNAL(shaken()), {});
        knock.action = call("knock");
        const State regionA = around("A", {{"Twin", {}, {onShaken("Half")}}, {"Half"}});
        const State regionB = around("B", {{"Twin", {}, {knock}}});
        State working = around("Working",
                               {{"Pump", {}, {onShaken("Heat")}},
                                {"Heat", call("heat"), {Transition::after(1h, "Pump")}},
                                kindOf(State::ShallowHistory, "Back")},
                               {onDrained});
        working.exitAction = call("out of working");
        return {
            {{"Ready \"now\"\n", call("ready"), {filled}, call("out of ready")},
             working,
             {"Pause", {}, {skip, Transition::after(1min, ""), onShaken("Back")}},
             kindOf(State::Parallel, "", {Transition::after(1h, "Done"), late}, {regionA, regionB}),
             {"Done"}},
            "Rinse"};
    }

    // Drives a machine through everything.
    void run(DeclarativeStateMachine& machine)
    {
        const auto turn = [] { fakeclock::advance(0s); };
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
    QByteArray m_example; // that of the documents

private Q_SLOTS:
    void initTestCase()
    {
        const QByteArray page =
            support::readFile(QFINDTESTDATA("../../docs/format-machine-recording.md"));
        for (const QByteArray& line : page.split('\n')) {
            if (line.startsWith("    "))
                m_example += line.mid(4) + '\n';
        }
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
        Playback options;
        options.usesOwnGuards = options.callsActions = true;
        QCOMPARE(playBack(m_whole, description, options), "");
        m_rinse.happened = [](const QString&) {};
        QCOMPARE(calls.join(' '),
                 "ready level level level out of ready heat out of working skip heat out of "
                 "working skip knock ready level out of ready out of working skip skip skip");
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

    void aLargeTextLacksTheOldestSteps()
    {
        MachineRecording large = m_whole;
        large.entries[2].arguments[1] = {"QString", QString(290000, 'l')};
        large.entries.insert(2, 60, large.entries[2]);
        QString error;
        const auto read = MachineRecording::fromText(large.toText(), error);
        QVERIFY2(read && read->entries.size() > 120, qPrintable(error));
        QCOMPARE(read->dropped + read->entries.size(), large.entries.size());
        QVERIFY(read->timesSpent() == large.timesSpent());
        QCOMPARE(playBack(*read, m_rinse.description()), "");
    }

    void faultsOfAText_data()
    {
        support::addRows<Fault>({
            {"version", "recording 1", "recording 2", "line 1: column 28: expected \"1\""},
            {"machine", "\"Rinse\"", "Rinse", "line 2: column 9: expected a text in quotes"},
            {"escape", "Rinse", "Rin\\se", "line 2: column 13: unknown escape"},
            {"day", "11-22", "02-30",
             "line 3: column 7: expected a time of day such as 2024-03-01T08:30:00.000Z"},
            {"dropped", "dropped 40", "dropped -40",
             "line 5: column 9: expected a number from 0 to 9223372036854775807"},
            {"too late", "65302.5", "5001", "line 10: the time is after the end of the recording"},
            {"active too late", "17.3", "5000.195",
             "line 9: column 1: expected a time that is not before the one above"},
            {"half a step", "guard", "+ guard", "line 9: the first entry continues a step"},
            {"back", "5100.21 +", "5100.199 +",
             "line 11: column 1: expected a time that is not before the one above"},
            {"decimals", "5100.22", "5100.2200",
             "line 12: column 1: expected a time in milliseconds"},
            {"digits", "5100.22", "5100.", "line 12: column 1: expected a time in milliseconds"},
            {"what", "finished", "halted",
             "line 17: column 10: expected started, stopped, finished, guard, left, fired or "
             "entered"},
            {"answer", "refused", "denied", "line 9: column 77: expected \"refused\""},
            {"number", "int 5", "int 5.5",
             "line 9: column 94: expected a value of the type before it"},
            {"text", "\"l\"", "l", "line 9: column 104: expected a value of the type before it"},
            {"no value", " \"l\"", "", "line 9: column 96: expected a type and a value"},
            {"copy", "\"Twin\" copy 2 tr", "\"Twin\" copy 0 tr",
             "line 15: column 30: expected a number from 1 to 2147483647"},
            {"more words", "finished", "finished now",
             "line 17: column 19: expected the end of the line"},
            {"fewer words", "left \"Working\"", "left",
             "line 11: end of the line: expected a text in quotes"},
            {"more text", "end\n", "end\nend\n", "line 18: text behind the end"},
            {"long line", "Tank", QByteArray(300000, 'T'),
             "line 9: the line is longer than 300,000 bytes"},
            {"large", "end\n", "end\n" + QByteArray(16 << 20, '#'),
             "the recording is larger than 16 MiB"},
            {"many entries", "65100.34 finished\n", QByteArray("65101 stopped\n").repeated(100000),
             "line 100009: there are more than 100,000 entries"},
        });
    }
    void faultsOfAText()
    {
        const auto& [name, from, to, expected] = support::currentRow<Fault>();
        QByteArray text = m_example;
        QVERIFY(text.contains(from));
        QString error;
        QVERIFY(
            !MachineRecording::fromText(text.replace(text.indexOf(from), from.size(), to), error));
        QCOMPARE(error, expected);
    }

    void isCutAnywhere()
    {
        QString error;
        QVERIFY2(MachineRecording::fromText(m_example, error), qPrintable(error));
        for (int size = 0; size < m_example.size(); ++size)
            QVERIFY(!MachineRecording::fromText(m_example.left(size), error));
    }

    void differences_data()
    {
        using Description = StateMachineDescription;
        const auto pump = [](Description& machine) -> StateDescription& {
            return machine.states[1].states[0];
        };
        const auto heat = [](Description& machine) -> StateDescription& {
            return machine.states[1].states[1];
        };
        support::addRows<Change>({
            {"target", [=](auto& machine) { pump(machine).transitions[0].targetState = "Pump"; },
             "entry 12, entered \"Heat\": the machine does this: entered \"Pump\""},
            {"signal",
             [=](auto& machine) { pump(machine).transitions[0].signal = SIGNAL(drained()); },
             "entry 11, fired \"Pump\" transition 1 by \"signal Tank::shaken()\": the machine does "
             "this: fired \"Pump\" transition 1 by \"signal Tank::drained()\""},
            {"no transition", [=](auto& machine) { heat(machine).transitions.clear(); },
             "entry 22, left \"Heat\": the description has no such transition: fired \"Heat\" "
             "transition 1 by \"timeout 3600000ms\""},
            {"direct",
             [=](auto& machine) {
                 heat(machine).transitions.push_back(Transition::direct("Pump"));
             },
             "entry 22, left \"Heat\": before that, the machine tries the direct transitions of "
             "\"Heat\""},
            {"guard",
             [](auto& machine) { machine.states[2].transitions[0].guard = [] { return true; }; },
             "entry 17, guard \"Pause\" transition 1 by \"direct\" refused: the machine does this: "
             "guard \"Pause\" transition 1 by \"direct\" accepted"},
            {"more children", [=](auto& machine) { pump(machine).states.push_back({"Valve"}); },
             "entry 10, left \"Pump\": the machine does this: entered \"Valve\""},
            {"no region", [](auto& machine) { machine.states[3].states.pop_back(); },
             "entry 35, entered \"B\": the machine does nothing"},
            {"not final", [](auto& machine) { machine.states.push_back({"More"}); },
             "entry 70, finished: the machine does nothing"},
        });
    }
    void differences()
    {
        const auto& [name, change, expected] = support::currentRow<Change>();
        StateMachineDescription description = m_rinse.description();
        change(description);
        Playback withGuards;
        withGuards.usesOwnGuards = true;
        QCOMPARE(playBack(m_whole, description, withGuards), expected);
    }

    void beginsInStatesThatTheMachineHas()
    {
        MachineRecording recording = m_whole;
        recording.wasRunning = true;
        recording.entries.remove(0, 21);
        for (const char* other : {"Working", "Pause", "Lost", "Back"}) {
            recording.activeBefore = {{{"Heat"}, 0ms}, {{other}, 0ms}};
            const bool isRight = QByteArray(other) == "Working";
            QCOMPARE(playBack(recording, m_rinse.description()),
                     isRight ? ""
                             : "The machine cannot be in the states where the recording begins");
        }
        recording.activeBefore = {{{"Heat"}, 0ms}};
        QCOMPARE(playBack(recording, {{{"Heat", {}, {{Transition::Type(9), "Heat"}}}}}),
                 "entry 1, left \"Heat\": the machine does nothing");
    }
};

QTEST_GUILESS_MAIN(TestMachineRecording)
#include "tst_machinerecording.moc"
