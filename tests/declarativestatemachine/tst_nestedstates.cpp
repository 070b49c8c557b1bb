#include "story.h"
#include "support/descriptions.h"
#include "system/fakeclock.h"

#include <QtTest>

using namespace std::chrono_literals;
using namespace support;
using States = std::vector<State>;

Q_DECLARE_METATYPE(std::function<States(Story&)>)

class TestNestedStates : public QObject
{
    Q_OBJECT

private:
    // A description, what happens to its machine ("notify", an hour or the emitter's new name), and
    // what the machine does.
    static void row(const char* name, const std::function<States(Story&)>& states,
                    const char* happenings, const QStringList& expected)
    {
        QTest::newRow(name) << states << QString(happenings).split(' ') << expected;
    }

    static Transition after(std::chrono::hours time, const char* target)
    {
        return Transition::after(time, target);
    }

    static void happen(Story& story, const QString& what)
    {
        story.add("> " + what);
        if (what == "notify")
            Q_EMIT story.emitter.notify();
        else if (what == "hour")
            fakeclock::advance(1h);
        else if (what == "stop")
            story.machine->stop();
        else
            story.emitter.setObjectName(what);
        QCoreApplication::processEvents();
    }

    static void addRowsOfPlaces()
    {
        row("a history leads to where its parent was left, or to its default",
            [](Story& story) {
                const State brewing =
                    around("Brewing", {{"Grind", {}, {story.onNotify("Pour")}}, {"Pour"}});
                return States{
                    {"Pause", {}, {story.onName("go", "Shallow"), story.onName("on", "Deep")}},
                    around(
                        "Work",
                        {kindOf(State::DeepHistory, "Deep"),
                         {"Heat"},
                         brewing,
                         kindOf(State::ShallowHistory, "Shallow", {Transition::direct("Brewing")})},
                        {story.onName("pause", "Pause")})};
            },
            "go notify pause on pause go",
            {"in Pause", "> go", "in Work, Brewing, Grind", "> notify", "in Work, Brewing, Pour",
             "> pause", "in Pause", "> on", "in Work, Brewing, Pour", "> pause", "in Pause", "> go",
             "in Work, Brewing, Grind"});
        row("parallel regions and the state around them time out on their own",
            [](Story&) {
                return States{kindOf(State::Parallel, "Both", {after(3h, "Done")},
                                     {around("Left", {{"L1", {}, {after(1h, "L2")}}, {"L2"}}),
                                      around("Right", {{"R1", {}, {after(2h, "R2")}}, {"R2"}})})};
            },
            "hour hour hour",
            {"in Both, Left, L1, Right, R1", "> hour", "in Both, Left, L2, Right, R1", "> hour",
             "in Both, Left, L2, Right, R2", "> hour", "in Done", "in ", "finished"});
        row("the first of two timeouts triggers the first transition, or its own if one has a "
            "guard",
            [](Story&) {
                const Transition refused = guarded(after(1h, "A"), [] { return false; });
                return States{{"A", {}, {after(2h, "B"), after(1h, "Done")}},
                              {"B", {}, {after(2h, "Done"), refused}}};
            },
            "hour hour hour",
            {"in A", "> hour", "in B", "> hour", "> hour", "in Done", "in ", "finished"});
        row("a transition without a target leaves no state and keeps its timeout",
            [](Story& story) {
                Transition begun = targetless(Transition::direct("?")),
                           half = targetless(after(1h, "?"));
                begun.action = [&story] { story.add("begun"); };
                half.action = [&story] { story.add("half"); };
                const auto note = Transition::inside(
                    &story.emitter, SIGNAL(objectNameChanged(QString)),
                    [&](const auto& all) { story.add("note " + all.value(0).toString()); });
                return States{around("Outer", {story.state("Inner", {half, note})},
                                     {begun, after(2h, "Done")})};
            },
            "hour x hour",
            {"Inner", "in Outer, Inner", " ^ Transition inside Outer triggered (direct)", "begun",
             "> hour", " ^ Transition inside Inner trigerred (timeout 3600000ms)", "half", "> x",
             (" ^ Transition inside Inner triggered, signal "
              "zeltools::SignalEmitter::objectNameChanged"),
             "note x", "> hour", "out of Inner", "in Done", "in ", "finished"});
    }
    static void addRowsOfActions()
    {
        row("actions are called between those of the states",
            [](Story& story) {
                Transition go = story.onName("x", "B"), again = story.onName("y", "B");
                go.action = again.action = [&story] { story.add("action"); };
                go.argumentsAction = [&story](const QVariantList& all) {
                    story.add("action " + all.value(0).toString());
                };
                return States{story.state("A", {go}), story.state("B", {again})};
            },
            "y x y",
            {"A", "in A", "> y", "> x", "out of A", "action", "action x", "B", "in B", "> y",
             "out of B", "action", "B"});
        row("a refused entry or timeout is not tried again before the next entry",
            [](Story& story) {
                const auto isSecond = [&story] {
                    return story.add("late?"), story.events.count("late?") > 1;
                };
                const auto never = [&story] { return story.add("entry?"), false; };
                return States{{"A",
                               {},
                               {guarded(Transition::direct("Done"), never),
                                guarded(after(1h, "Done"), isSecond), story.onNotify("A")}}};
            },
            "hour hour notify hour",
            {"in A", "entry?", "> hour", "late?", "> hour", "> notify", "entry?", "> hour", "late?",
             "in Done", "in ", "finished"});
        row("both guards must accept, and an inner state comes first",
            [](Story& story) {
                const auto shut = guarded(story.onName("x", "Wrong"), [] { return false; });
                return States{around("Outer",
                                     {{"Inner", {}, {shut, story.onName("y", "Wrong")}}, {"Wrong"}},
                                     {story.onName("x", "Done")})};
            },
            "x", {"in Outer, Inner", "> x", "in Done", "in ", "finished"});
        row("a final state inside another waits, and one at the top ends the machine",
            [](Story& story) {
                return States{
                    around("Work",
                           {{"Step", {}, {story.onNotify("End")}}, kindOf(State::Final, "End")},
                           {after(1h, "Stop")}),
                    kindOf(State::Final, "Stop")};
            },
            "notify hour",
            {"in Work, Step", "> notify", "in Work, End", "> hour", "in Stop", "in ", "finished"});
    }
    static void addRowsOfEnds()
    {
        row("a time limit ends with its state",
            [](Story& story) {
                State a{"A", {}, {story.onNotify("B")}}, b{"B"};
                a.timeLimit = 2h;
                b.timeLimit = 1h;
                State outer = around("Outer", {a, b});
                outer.timeLimit = 4h;
                return States{outer};
            },
            "hour notify hour hour hour hour stop",
            {"in Outer, A", "> hour", "> notify", "in Outer, B", "> hour",
             "State B has been active for longer than its limit of 3600000 ms", "limit of B",
             "> hour", "> hour",
             "State Outer has been active for longer than its limit of 14400000 ms",
             "limit of Outer", "> hour", "> stop", "in "});
        row("faults are left out",
            [](Story& story) {
                const auto direct = &Transition::direct;
                const State::Kind deep = State::DeepHistory;
                return States{{"A", {}, {direct("Alone"), direct("Child"), story.onNotify("Back")}},
                              around("P", {kindOf(deep, "Back", {direct("Back")}, {{"Child"}}),
                                           {"Q", {}, {story.onName("out", "Out")}},
                                           kindOf(deep, "Out", {direct("A")})}),
                              around("Lonely", {kindOf(deep, "Alone")}),
                              around("Done", {{"X"}})};
            },
            "notify out",
            {("RELEASE ASSERT failure: Attempting to add states to Back, which is final or a "
              "history ( stateDescription.states.size() == 0 )"),
             ("RELEASE ASSERT failure: Attempting to add states to Done, which is final or a "
              "history ( stateDescription.states.size() == 0 )"),
             ("RELEASE ASSERT failure: History Back must lead to a state beside it, not to Back ( "
              "historyDescription.parent.contains(targetState) )"),
             ("RELEASE ASSERT failure: History Out must lead to a state beside it, not to A ( "
              "historyDescription.parent.contains(targetState) )"),
             ("RELEASE ASSERT failure: Attempting to set a transition to undefined state Alone ( "
              "targetState != nullptr )"),
             ("RELEASE ASSERT failure: Attempting to set a transition to undefined state Child ( "
              "targetState != nullptr )"),
             "in A", "> notify", "in P, Q", "> out"});
    }

private Q_SLOTS:
    void events_data()
    {
        QTest::addColumn<std::function<States(Story&)>>("states");
        QTest::addColumn<QStringList>("happenings");
        QTest::addColumn<QStringList>("expected");
        addRowsOfPlaces();
        addRowsOfActions();
        addRowsOfEnds();
    }
    void events()
    {
        QFETCH(std::function<States(Story&)>, states);
        QFETCH(QStringList, happenings);
        Story story;
        connect(story.machine, &DeclarativeStateMachine::stateChanged, this,
                [&] { story.add("in " + story.machine->currentStates().join(", ")); });
        connect(story.machine, &DeclarativeStateMachine::finished, this,
                [&] { story.add("finished"); });
        connect(story.machine, &DeclarativeStateMachine::timeLimitExceeded, this,
                [&](const QString& state) { story.add("limit of " + state); });
        States all = states(story);
        if (all.back().name != "Done")
            all.push_back({"Done"});
        story.run(all);
        QCoreApplication::processEvents();
        for (const QString& happening : happenings)
            happen(story, happening);
        story.events =
            story.events.filter(QRegularExpression("^(?!State machine| \\^ Transition from)"));
        QFETCH(QStringList, expected);
        QCOMPARE(story.events.join("; "), expected.join("; "));
    }

    void thousandsOfStatesAndDeepOnes()
    {
        Story story;
        StateDescription deep{"Deepest", {}, {Transition::direct("0")}};
        for (int i = 0; i < 63; ++i)
            deep = around(QString("Depth %1").arg(i), {deep});
        States all{deep};
        for (int i = 0; i < 10000; ++i)
            all.push_back({QString::number(i), {}, {Transition::direct(QString::number(i + 1))}});
        all.push_back({"10000"});
        story.run(all);
        int depth = 0;
        connect(story.machine, &DeclarativeStateMachine::stateChanged, this,
                [&] { depth = std::max(depth, int(story.machine->currentStates().size())); });
        QTRY_COMPARE(story.events.size(), 10003);
        QCOMPARE(depth, 64);
    }
};

QTEST_GUILESS_MAIN(TestNestedStates)
#include "tst_nestedstates.moc"
