#include "declarativestatemachine/declarativestatemachine.h"
#include "declarativestatemachine/scxmlreader.h"
#include "declarativestatemachine/scxmlwriter.h"
#include "logging/log.h"
#include "support/descriptions.h"

#include <QScxmlStateMachine>
#include <QtTest>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using namespace support;

namespace
{

/// Emits what drives the machines, and answers their guards.
class Board : public QObject
{
    Q_OBJECT

public:
    bool isOpen = true;

Q_SIGNALS:
    void a();
    void b();
    void back();
};

Board board;

Transition onA(const QString& target)
{
    return Transition::on(&board, SIGNAL(a()), target);
}

Transition onB(const QString& target)
{
    return Transition::on(&board, SIGNAL(b()), target);
}

Transition whenOpen(const Transition& transition)
{
    return guarded(transition, [] { return board.isOpen; });
}

// Two parts with two states each, the first of which has a history.
StateDescription twoParts(StateDescription::Kind kind, StateDescription::Kind historyKind)
{
    const StateDescription inner = around("P2", {{"P21", {}, {onA("P22")}}, {"P22"}});
    return kindOf(
        kind, "P", {onB("Out")},
        {kindOf(historyKind, "H", {Transition::direct("P1")}), {"P1", {}, {onA("P2")}}, inner});
}

ExpectedSignal signalOf(const QString& event)
{
    const QHash<QString, const char*> signalsOf{
        {"Board.a", SIGNAL(a())}, {"Board.b", SIGNAL(b())}, {"Board.back", SIGNAL(back())}};
    return {&board, signalsOf.value(event)};
}

void follow(std::vector<StateDescription>& states, QStringList& active)
{
    for (StateDescription& state : states) {
        state.action = [&active, name = state.name] { active.append(name); };
        state.exitAction = [&active, name = state.name] { active.removeOne(name); };
        follow(state.states, active);
    }
}

} // namespace

Q_DECLARE_METATYPE(StateMachineDescription)

class TestQScxml : public QObject
{
    Q_OBJECT

private:
    static void row(const char* name, const StateMachineDescription& machine, const char* way)
    {
        QTest::newRow(name) << machine << QString(way);
    }
    static void addFlatMachines()
    {
        const StateDescription end{"End"};
        row("signals, of which the first transition wins",
            {{{"A.1", {}, {onA("B"), onA("End"), onB("A.1")}}, {"B", {}, {onB("End")}}, end}},
            "b: A.1, b a: B, a: B, b: End");
        row("timeouts end with their states",
            {{{"A", {}, {onA("B"), Transition::after(20ms, "End")}},
              {"B", {}, {onA("A"), Transition::after(20ms, "C")}},
              {"C"},
              end}},
            "a wait: C");
        row("guards of signals and timeouts",
            {{{"A", {}, {whenOpen(onA("B"))}},
              {"B", {}, {whenOpen(Transition::after(1ms, "C")), onB("A")}},
              {"C", {}, {onA("End")}},
              end}},
            "shut a: A, open a wait: C, a: End");
        row("a timeout that a guard refused is not tried again, and leaves a later one alone",
            {{{"A",
               {},
               {Transition::after(1h, "A"), whenOpen(Transition::after(1ms, "End")), onB("A")}},
              end}},
            "shut wait open wait: A, b wait: End");
        row("an entry that a guard refused is not tried again",
            {{{"A", {}, {onA("B")}},
              {"B", {}, {whenOpen(Transition::direct("End")), onB("B"), onA("B")}},
              end}},
            "shut a open: B, b: End");
        row("transitions without a target leave the timeout alone",
            {{{"A",
               {},
               {targetless(onA({})), targetless(Transition::direct({})),
                Transition::after(300ms, "End")}},
              end}},
            "a wait wait a wait wait a wait wait: End");
    }
    static void addNestedMachines()
    {
        const StateDescription end{"End"};
        const StateDescription out{"Out", {}, {Transition::on(&board, SIGNAL(back()), "H")}};
        row("a direct transition outside comes before one inside",
            {{around("P", {{"P1", {}, {Transition::direct("P2")}}, {"P2"}},
                     {whenOpen(Transition::direct("Out"))}),
              {"Out", {}, {onA("P")}},
              end}},
            ": Out, shut a: P P2");
        row("a state reacts while a child is active, and the child first",
            {{around("P", {{"P1", {}, {onA("P2")}}, {"P2"}}, {onA("End"), onB("P")}), end}},
            "a: P P2, b: P P1, a a: End");
        row("a shallow history",
            {{twoParts(StateDescription::Ordinary, StateDescription::ShallowHistory), out, end}},
            "a a: P P2 P22, b: Out, back: P P2 P21");
        row("a deep history",
            {{twoParts(StateDescription::Ordinary, StateDescription::DeepHistory), out, end}},
            "b back: P P1, a a: P P2 P22, b: Out, back: P P2 P22");
        row("parallel states, each with its own transitions",
            {{kindOf(State::Parallel, "P", {onB("End")},
                     {around("L", {{"L1", {}, {onA("L2")}}, kindOf(State::Final, "L2")}),
                      around("R", {{"R1", {}, {onA("R2"), Transition::after(20ms, "R3")}},
                                   {"R2", {}, {Transition::direct("R3")}},
                                   {"R3"}}),
                      kindOf(State::Final, "Q")}),
              end}},
            "wait: L L1 P Q R R3, a: L L2 P Q R R3, b: End");
    }

private Q_SLOTS:
    void goesTheSameWay_data()
    {
        QTest::addColumn<StateMachineDescription>("machine");
        QTest::addColumn<QString>("way"); // steps, and the active states behind each one
        addFlatMachines();
        addNestedMachines();
    }
    void goesTheSameWay()
    {
        QFETCH(StateMachineDescription, machine);
        QFETCH(QString, way);
        board.isOpen = true;
        QByteArray text = toScxml(machine).toUtf8();
        QString error;
        auto read = fromScxml(
            text, {signalOf, [](const QString&) { return [] { return board.isOpen; }; }}, error);
        QVERIFY2(read, qPrintable(error));
        QStringList active;
        follow(read->states, active);
        DeclarativeStateMachine ours(Log::Cleaning);
        ours.setDescription(*read);
        ours.start();
        QBuffer file(&text);
        file.open(QIODevice::ReadOnly);
        const std::unique_ptr<QScxmlStateMachine> peer(QScxmlStateMachine::fromData(&file));
        QVERIFY2(peer->parseErrors().isEmpty(), text);
        peer->start();
        QTRY_VERIFY(peer->isRunning() && ours.isRunning());
        for (const QString& step : way.split(", ")) {
            for (const QString& word : step.section(':', 0, 0).split(' '))
                take(word, *peer);
            const QStringList expected = step.section(": ", 1).split(' ');
            QTRY_COMPARE(sorted(peer->activeStateNames(false)), expected);
            QTRY_COMPARE(sorted(active), expected);
        }
    }

private:
    static void take(const QString& word, QScxmlStateMachine& peer)
    {
        if (word == "open" || word == "shut") {
            board.isOpen = word == "open";
            for (const char* guard : {"guard1", "guard2"}) {
                if (peer.dataModel()->hasScxmlProperty(guard))
                    peer.dataModel()->setScxmlProperty(guard, board.isOpen, {});
            }
        } else if (!word.isEmpty() && word != "wait") {
            QMetaObject::invokeMethod(&board, word.toLatin1());
            peer.submitEvent("Board." + word);
        }
        QTest::qWait(word == "wait" ? 100 : 5);
    }

    static QStringList sorted(QStringList names)
    {
        names.sort();
        return names;
    }
};

QTEST_GUILESS_MAIN(TestQScxml)
#include "tst_qscxml.moc"
