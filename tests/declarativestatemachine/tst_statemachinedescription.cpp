#include "declarativestatemachine/descriptioncheck.h"
#include "declarativestatemachine/dotwriter.h"
#include "declarativestatemachine/scxmlwriter.h"

#include <QtTest>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using Way = TransitionDescription;

class TestStateMachineDescription : public QObject
{
    Q_OBJECT

private:
    // With all that a picture shows, and names that have to be escaped.
    StateMachineDescription machine()
    {
        Way labelled = Way::on(this, SIGNAL(moved(int)), "a_b", [] { return true; });
        labelled.description = "<near>";
        return {{{"1st \"a\\b\"", {}, {Way::direct("a b"), labelled}},
                 {"a b", {}, {Way::after(1500ms, "a_b"), Way::direct("Lost")}},
                 {"a_b", {}, {Way::direct("a b")}}},
                "Rinse & go"};
    }

Q_SIGNALS:
    void moved(int);

private Q_SLOTS:
    void pictures()
    {
        QCOMPARE(toDot(machine()).split('\n'),
                 QStringList({"digraph \"Rinse & go\" {", "    node [shape=box, style=rounded];",
                              "    s0 [label=\"1st \\\"a\\\\b\\\"\"];", "    s1 [label=\"a b\"];",
                              "    s2 [label=\"a_b\", peripheries=2];", "    start [shape=point];",
                              "    start -> s0;", "    s0 -> s1 [label=\"direct\"];",
                              "    s0 -> s2 [label=\"<near>\\nTestStateMachineDescription::"
                              "moved(int) [guard]\"];",
                              "    s1 -> s2 [label=\"after 1500 ms\"];",
                              "    s1 -> \"Lost?\" [style=dashed, label=\"direct\"];",
                              "    s2 -> s1 [label=\"direct\"];", "}", ""}));
        QCOMPARE(toScxml(machine()).replace('"', '\'').split('\n'),
                 QStringList(
                     {"<?xml version='1.0'?>",
                      "<scxml xmlns='http://www.w3.org/2005/07/scxml' version='1.0' "
                      "datamodel='ecmascript' name='Rinse___go' initial='_1st__a_b_'>",
                      "    <datamodel>",
                      "        <data id='guard1' expr='true'/>",
                      "    </datamodel>",
                      "    <state id='_1st__a_b_'>",
                      "        <transition target='a_b'/>",
                      "        <transition event='TestStateMachineDescription.moved' cond='guard1' "
                      "target='a_b_'>",
                      "            <log label='&lt;near&gt;'/>",
                      "        </transition>",
                      "    </state>",
                      "    <state id='a_b'>",
                      "        <onentry>",
                      "            <send event='timeout.a_b.1' id='timeout.a_b.1' delay='1500ms'/>",
                      "        </onentry>",
                      "        <onexit>",
                      "            <cancel sendid='timeout.a_b.1'/>",
                      "        </onexit>",
                      "        <transition event='timeout.a_b.1' target='a_b_'/>",
                      "    </state>",
                      "    <final id='a_b_'/>",
                      "</scxml>",
                      ""}));
    }

    void problems()
    {
        QCOMPARE(findProblems({}), QStringList("There are no states"));
        QCOMPARE(findProblems({{{"A", {}, {Way::after(1ms, "B")}}, {"B"}}}), QStringList());
        const StateMachineDescription faulty{
            {{"Twin", {}, {Way::direct("A"), Way::direct("Lost")}},
             {"A", {}, {Way::on(this, SIGNAL(gone()), "C"), Way::on(nullptr, SIGNAL(full()), "C")}},
             {"Twin", {}, {{Way::Type(3), "A"}, Way::after(1ms, "B"), Way::after(2ms, "C")}},
             {"B", {}, {Way::direct("B")}},
             {"C", {}, {Way::direct("A")}}}};
        QCOMPARE(findProblems(faulty),
                 QStringList({"State \"Twin\" has a name that a later state has too",
                              "State \"Twin\" leads to \"Lost\", which is no state",
                              "State \"A\" waits for TestStateMachineDescription::gone(), "
                              "which does not exist",
                              "State \"A\" waits for full(), which does not exist",
                              "State \"A\" has no way on",
                              "State \"Twin\" has a transition of unknown kind 3",
                              "State \"Twin\" has 2 timeouts, of which the first to end triggers "
                              "the first transition",
                              "State \"Twin\" cannot be reached", "State \"B\" has no way on",
                              "State \"B\" cannot be reached",
                              "State \"C\" is final, but has transitions",
                              "State \"C\" cannot be reached"}));
    }
};

QTEST_GUILESS_MAIN(TestStateMachineDescription)
#include "tst_statemachinedescription.moc"
