#include "story.h"
#include "system/fakeclock.h"

#include <QtTest>

using namespace std::chrono_literals;
using Transition = TransitionDescription;
using States = std::vector<StateDescription>;

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

private Q_SLOTS:
    void events_data()
    {
        QTest::addColumn<std::function<States(Story&)>>("states");
        QTest::addColumn<QStringList>("happenings");
        QTest::addColumn<QStringList>("expected");
        row("a history leads to where its parent was left, or to its default",
            [](Story& story) {
                const StateDescription brewing{
                    "Brewing", {}, {}, {}, {{"Grind", {}, {story.onNotify("Pour")}}, {"Pour"}}};
                return States{
                    {"Pause", {}, {story.onName("go", "Shallow"), story.onName("on", "Deep")}},
                    {"Work",
                     {},
                     {story.onName("pause", "Pause")},
                     {},
                     {{"Deep", {}, {}, {}, {}, StateDescription::DeepHistory},
                      {"Heat"},
                      brewing,
                      {"Shallow",
                       {},
                       {Transition::direct("Brewing")},
                       {},
                       {},
                       StateDescription::ShallowHistory}}},
                    {"Done"}};
            },
            "go notify pause on pause go",
            {"in Pause", "> go", "in Work, Brewing, Grind", "> notify", "in Work, Brewing, Pour",
             "> pause", "in Pause", "> on", "in Work, Brewing, Pour", "> pause", "in Pause", "> go",
             "in Work, Brewing, Grind"});
        row("parallel regions and the state around them time out on their own",
            [](Story&) {
                return States{
                    {"Both",
                     {},
                     {Transition::after(3h, "Done")},
                     {},
                     {{"Left", {}, {}, {}, {{"L1", {}, {Transition::after(1h, "L2")}}, {"L2"}}},
                      {"Right", {}, {}, {}, {{"R1", {}, {Transition::after(2h, "R2")}}, {"R2"}}}},
                     StateDescription::Parallel},
                    {"Done"}};
            },
            "hour hour hour",
            {"in Both, Left, L1, Right, R1", "> hour", "in Both, Left, L2, Right, R1", "> hour",
             "in Both, Left, L2, Right, R2", "> hour", "in Done", "in ", "finished"});
        row("the first of two timeouts triggers the first transition, or its own if one has a "
            "guard",
            [](Story&) {
                const Transition done = Transition::after(2h, "Done");
                Transition refused = Transition::after(1h, "A");
                refused.guard = [] { return false; };
                return States{
                    {"A", {}, {Transition::after(2h, "B"), Transition::after(1h, "Done")}},
                    {"B", {}, {done, refused}},
                    {"Done"}};
            },
            "hour hour hour",
            {"in A", "> hour", "in B", "> hour", "> hour", "in Done", "in ", "finished"});
        row("a transition without a target leaves no state and keeps its timeout",
            [](Story& story) {
                Transition begun = Transition::direct("?"), half = Transition::after(1h, "?");
                begun.isTargetless = half.isTargetless = true;
                begun.action = [&story] { story.add("begun"); };
                half.action = [&story] { story.add("half"); };
                const auto note = [&story](const QVariantList& all) {
                    story.add("note " + all.value(0).toString());
                };
                const auto named = SIGNAL(objectNameChanged(QString));
                return States{{"Outer",
                               {},
                               {begun, Transition::after(2h, "Done")},
                               {},
                               {story.state("Inner", {half, Transition::inside(&story.emitter,
                                                                               named, note)})}},
                              {"Done"}};
            },
            "hour x hour",
            {"Inner", "in Outer, Inner", " ^ Transition inside Outer triggered (direct)", "begun",
             "> hour", " ^ Transition inside Inner trigerred (timeout 3600000ms)", "half", "> x",
             " ^ Transition inside Inner triggered, signal "
             "zeltools::SignalEmitter::objectNameChanged",
             "note x", "> hour", "out of Inner", "in Done", "in ", "finished"});
        row("actions are called between those of the states",
            [](Story& story) {
                Transition go = story.onName("x", "B"), again = story.onName("y", "B");
                go.action = [&story] { story.add("action"); };
                go.argumentsAction = [&story](const QVariantList& all) {
                    story.add("action " + all.value(0).toString());
                };
                again.action = go.action;
                return States{story.state("A", {go}), story.state("B", {again}), {"Done"}};
            },
            "y x y",
            {"A", "in A", "> y", "> x", "out of A", "action", "action x", "B", "in B", "> y",
             "out of B", "action", "B"});
        row("a refused entry or timeout is not tried again before the next entry",
            [](Story& story) {
                Transition direct = Transition::direct("Done"),
                           late = Transition::after(1h, "Done");
                direct.guard = [&story] { return story.add("entry?"), false; };
                late.guard = [&story] {
                    return story.add("late?"), story.events.count("late?") > 1;
                };
                return States{{"A", {}, {direct, late, story.onNotify("A")}}, {"Done"}};
            },
            "hour hour notify hour",
            {"in A", "entry?", "> hour", "late?", "> hour", "> notify", "entry?", "> hour", "late?",
             "in Done", "in ", "finished"});
        row("both guards must accept, and an inner state comes first",
            [](Story& story) {
                Transition shut = story.onName("x", "Wrong"), outer = story.onName("x", "Done");
                shut.guard = [] { return false; };
                return States{{"Outer",
                               {},
                               {outer},
                               {},
                               {{"Inner", {}, {shut, story.onName("y", "Wrong")}}, {"Wrong"}}},
                              {"Done"}};
            },
            "x", {"in Outer, Inner", "> x", "in Done", "in ", "finished"});
        row("a final state inside another waits, and one at the top ends the machine",
            [](Story& story) {
                const StateDescription end{"End", {}, {}, {}, {}, StateDescription::Final};
                return States{{"Work",
                               {},
                               {Transition::after(1h, "Stop")},
                               {},
                               {{"Step", {}, {story.onNotify("End")}}, end}},
                              {"Stop", {}, {}, {}, {}, StateDescription::Final},
                              {"Done"}};
            },
            "notify hour",
            {"in Work, Step", "> notify", "in Work, End", "> hour", "in Stop", "in ", "finished"});
        row("a time limit ends with its state",
            [](Story& story) {
                return States{{"Outer",
                               {},
                               {},
                               {},
                               {{"A", {}, {story.onNotify("B")}, {}, {}, {}, 2h},
                                {"B", {}, {}, {}, {}, {}, 1h}},
                               {},
                               4h},
                              {"Done"}};
            },
            "hour notify hour hour hour hour stop",
            {"in Outer, A", "> hour", "> notify", "in Outer, B", "> hour",
             "State B has been active for longer than its limit of 3600000 ms", "limit of B",
             "> hour", "> hour",
             "State Outer has been active for longer than its limit of 14400000 ms",
             "limit of Outer", "> hour", "> stop", "in "});
        row("faults are left out",
            [](Story& story) {
                const StateDescription::Kind deep = StateDescription::DeepHistory;
                return States{{"A",
                               {},
                               {Transition::direct("Alone"), Transition::direct("Child"),
                                story.onNotify("Back")}},
                              {"P",
                               {},
                               {},
                               {},
                               {{"Back", {}, {Transition::direct("Back")}, {}, {{"Child"}}, deep},
                                {"Q", {}, {story.onName("out", "Out")}},
                                {"Out", {}, {Transition::direct("A")}, {}, {}, deep}}},
                              {"Lonely", {}, {}, {}, {{"Alone", {}, {}, {}, {}, deep}}},
                              {"Done", {}, {}, {}, {{"X"}}}};
            },
            "notify out",
            {"RELEASE ASSERT failure: Attempting to add states to Back, which is final or a "
             "history ( stateDescription.states.size() == 0 )",
             "RELEASE ASSERT failure: Attempting to add states to Done, which is final or a "
             "history ( stateDescription.states.size() == 0 )",
             "RELEASE ASSERT failure: History Back must lead to a state beside it, not to Back ( "
             "historyDescription.parent.contains(targetState) )",
             "RELEASE ASSERT failure: History Out must lead to a state beside it, not to A ( "
             "historyDescription.parent.contains(targetState) )",
             "RELEASE ASSERT failure: Attempting to set a transition to undefined state Alone ( "
             "targetState != nullptr )",
             "RELEASE ASSERT failure: Attempting to set a transition to undefined state Child ( "
             "targetState != nullptr )",
             "in A", "> notify", "in P, Q", "> out"});
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
        story.run(states(story));
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
            deep = {QString("Depth %1").arg(i), {}, {}, {}, {deep}};
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
