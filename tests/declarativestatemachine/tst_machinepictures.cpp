#include "declarativestatemachine/descriptioncheck.h"
#include "declarativestatemachine/dotwriter.h"
#include "declarativestatemachine/machinerecording.h"
#include "declarativestatemachine/overlappingguards.h"
#include "declarativestatemachine/scxmlwriter.h"
#include "declarativestatemachine/svgwriter.h"
#include "signalemitter.h"
#include "support.h"
#include "support/descriptions.h"
#include "support/rows.h"

#include <QStandardPaths>
#include <QXmlStreamReader>
#include <QtTest>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using namespace support;
using zeltools::SignalEmitter;

namespace
{

Transition accepting(const Transition& transition, bool accepts = true)
{
    return guarded(transition, [accepts] { return accepts; });
}

StateMachineDescription drink(SignalEmitter& board)
{
    const auto on = [&board](const char* target) {
        return Transition::on(&board, SIGNAL(notify()), target);
    };
    const Transition inside =
        Transition::inside(&board, SIGNAL(notify()), [](const QVariantList&) {});
    State heating{"Heating", {}, {Transition::after(20ms, "Grinding")}};
    heating.timeLimit = 5s;
    const State preparing = around("Preparing",
                                   {kindOf(State::ShallowHistory, "Back"),
                                    heating,
                                    {"Grinding", {}, {accepting(on("Grinding")), on("Serving")}}},
                                   {Transition::on(&board, SIGNAL(destroyed()), "Paused"), inside});
    const State serving =
        kindOf(State::Parallel, "Serving", {Transition::direct("Nowhere")},
               {around("Pump", {{"Idle"}, {"Pumping", {}, {on("Serving")}}}), {"Light"}});
    return {{preparing, serving, {"Paused", {}, {on("Back")}}, {"Done"}}, "Drink"};
}

// Half a second in Heating, a second dose, and entries that belong to another description.
MachineRecording recordingOfADrink()
{
    QString error;
    return *MachineRecording::fromText(support::readFile(QFINDTESTDATA("drink.recording")), error);
}

} // namespace

class TestMachinePictures : public QObject
{
    Q_OBJECT

private:
    using Row = std::tuple<const char*, StateMachineDescription, QStringList>;

    static SignalEmitter* emitter()
    {
        static SignalEmitter s_emitter;
        return &s_emitter;
    }
    static Transition on(const char* target)
    {
        return Transition::on(emitter(), SIGNAL(notify()), target);
    }
    static Transition inside() { return Transition::inside(emitter(), SIGNAL(notify()), {}); }
    static std::vector<Row> problemsOfStates()
    {
        State busyHistory =
            kindOf(State::DeepHistory, "H", {on("A"), Transition::direct("Z")}, {{"X"}});
        busyHistory.timeLimit = 1s;
        return {
            {"the transitions around a state lead out of it, and those in it",
             {{around("P", {{"A"}, around("Q", {{"B", {}, {on("Z")}}, {"C", {}, {on("B")}}})},
                      {on("C")}),
               kindOf(State::Parallel, "R", {}, {around("S", {{"D"}}), {"E", {}, {on("P")}}}),
               {"Z"}}},
             {"State \"R\" cannot be reached", "State \"S\" cannot be reached",
              "State \"D\" cannot be reached", "State \"E\" cannot be reached"}},
            {"a history leads to where its parent was",
             {{{"A", {}, {on("H")}},
               around("P",
                      {kindOf(State::ShallowHistory, "H", {Transition::direct("C")}),
                       {"B", {}, {inside()}},
                       {"C", {}, {on("H")}},
                       kindOf(State::ShallowHistory, "Unused")},
                      {on("A"), Transition::after(1s, "H")}),
               {"Z"}}},
             {"State \"P\" has a transition to the history \"H\" that leaves the parent of this "
              "history itself",
              "State \"B\" cannot be reached", "State \"Unused\" cannot be reached",
              "State \"Z\" cannot be reached"}},
            {"kinds that cannot have what they have",
             {{around("P",
                      {busyHistory, {"A", {}, {on("H")}}, kindOf(State::Final, "F", {on("A")})},
                      {on("Z")}),
               around("Q", {kindOf(State::DeepHistory, "G")}),
               kindOf(State::Kind(9), "K", {on("Q")}), around("Z", {{"Y"}})}},
             {"State \"H\" is a history, but has child states",
              "State \"H\" is a history, but has an action or a time limit",
              "State \"H\" leads to \"Z\", which is not in the same state",
              "State \"H\" is a history, for which only the first direct transition counts",
              "State \"X\" cannot be reached", "State \"F\" is final, but has transitions",
              "State \"F\" cannot be reached", "State \"Q\" has no child state that can be entered",
              "State \"Q\" cannot be left", "State \"Q\" cannot be reached",
              "State \"G\" cannot be reached", "State \"K\" is of unknown kind 9",
              "State \"K\" cannot be reached", "State \"Z\" is final, but has child states",
              "State \"Y\" cannot be reached"}},
            {"a region that another one leaves with itself",
             {{kindOf(State::Parallel, "P", {},
                      {around("Q", {{"A", {}, {on("B")}}, {"B"}}),
                       around("R", {{"C", {}, {on("D")}}, {"D", {}, {on("Z")}}})}),
               {"Z"}}},
             {}},
        };
    }
    static std::vector<Row> problemsOfTransitions()
    {
        State hurried{"A", {}, {Transition::after(1s, "B")}};
        hurried.timeLimit = 2s;
        State patient = hurried;
        patient.name = "B";
        patient.transitions = {accepting(Transition::after(1s, "Z")), Transition::after(3s, "A")};
        return {
            {"a transition behind an unguarded one",
             {{{"A",
                {},
                {accepting(on("A")), on("B"), on("A"), inside(), Transition::direct("B"),
                 accepting(Transition::direct("A"))}},
               {"B"}}},
             {"State \"A\" has a transition to \"A\" that is never taken, because one before it "
              "has the same trigger and no guard",
              "State \"A\" has a transition without a target that is never taken, because one "
              "before it has the same trigger and no guard",
              "State \"A\" has a transition to \"A\" that is never taken, because one before it "
              "has the same trigger and no guard"}},
            {"a timeout before the time limit",
             {{hurried, patient, {"Z"}}},
             {"State \"A\" has a time limit of 2000 ms, but its timeout ends after 1000 ms"}},
            {"expected signals",
             {{{"A", {}, {on("B")}}, {"B"}},
              {},
              {{emitter(), SIGNAL(notify())},
               {emitter(), SIGNAL(destroyed())},
               {nullptr, SIGNAL(gone())}}},
             {"No state takes zeltools::SignalEmitter::destroyed()",
              "The expected signal gone() does not exist"}},
        };
    }
    static std::vector<Row> circles()
    {
        return {
            {"circles",
             {{{"A", {}, {accepting(Transition::direct("Z")), Transition::direct("P"), on("C")}},
               around("P", {{"B", {}, {Transition::direct("A")}}}),
               {"C", {}, {accepting(Transition::direct("A")), Transition::direct("D")}},
               {"D", {}, {Transition::direct("C")}},
               {"Unreached", {}, {Transition::direct("Unreached")}},
               {"Z"}}},
             {"State \"A\" is in a circle of direct transitions that may never end: \"A\", \"B\"",
              "State \"C\" is in a circle of direct transitions that may never end: \"C\", \"D\"",
              "State \"Unreached\" cannot be left", "State \"Unreached\" cannot be reached"}},
            {"a circle through a state that is left to enter its child",
             {{around("P", {{"A"}, {"B", {}, {on("Z")}}}, {Transition::direct("B")}), {"Z"}}},
             {"State \"P\" is in a circle of direct transitions that never ends: \"P\""}},
            {"a circle through another child of a parallel state",
             {{{"A", {}, {Transition::direct("B")}},
               kindOf(State::Parallel, "P", {on("Z")},
                      {around("Q", {{"B"}}), around("R", {{"C", {}, {Transition::direct("A")}}})}),
               {"Z"}}},
             {"State \"A\" is in a circle of direct transitions that never ends: \"A\", \"C\""}},
            {"no circle inside of one child of a parallel state",
             {{kindOf(State::Parallel, "P", {on("Z")},
                      {around("Q", {{"B", {}, {Transition::direct("C")}}, {"C"}}), {"R"}}),
               {"Z"}}},
             {}},
        };
    }

private Q_SLOTS:
    void pictures()
    {
        const QString first = "1 \"a\\b\"", last = "1_\"a\\b\"";
        SignalEmitter emitter; // all that a picture shows, and names that have to be escaped
        Transition near =
            Transition::on(&emitter, SIGNAL(objectNameChanged(QString)), last, [] { return true; });
        near.description = "<near>";
        const StateMachineDescription machine{
            {{first,
              {},
              {near, Transition::direct(last), Transition::after(1500ms, last),
               Transition::direct("Lost")}},
             {last, {}, {Transition::direct(first)}}},
            "Rinse & go"};
        QCOMPARE(toDot(machine), support::readFile(QFINDTESTDATA("rinse.dot")));
        QCOMPARE(toScxml(machine), support::readFile(QFINDTESTDATA("rinse.scxml")));
    }

    void pictureOfARecording()
    {
        SignalEmitter board;
        const StateMachineDescription machine = drink(board);
        QCOMPARE(toDot(machine) + toDot(machine, recordingOfADrink()),
                 support::readFile(QFINDTESTDATA("drink.dot")));
    }

    // The SVG document has the names as its texts, whatever characters they consist of.
    void drawing()
    {
        const QString name = QString("\"a\\N\"|<b> &lt; 茶") + QChar(1) + QChar(0) + QChar(0xffff);
        const QString shown =
            QString("\"a\\N\"|<b> &lt; 茶") + QChar(0x2401) + QChar(0x2400) + QChar(0xfffd);
        StateMachineDescription machine{
            {around("", {kindOf(State::DeepHistory, name, {Transition::direct("lost\\")}),
                         kindOf(State::Parallel, "two\nlines", {}, {{name}, {name}})}),
             {name, {}, {{Transition::Type(9), name}, Transition::on(nullptr, nullptr, "")}},
             kindOf(State::Kind(9), name)},
            name};
        MachineRecording recording = recordingOfADrink();
        recording.machine = name;
        QString error;
        const auto svg = toSvg(toDot(machine, recording), error);
        if (QStandardPaths::findExecutable("dot").isEmpty()) {
            QCOMPARE(error, QString("The program \"dot\" is missing; it is part of Graphviz"));
            return;
        }
        QVERIFY2(svg, qPrintable(error));
        QStringList texts;
        QXmlStreamReader xml(*svg);
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement &&
                xml.name() == QLatin1String("text"))
                texts << xml.readElementText().replace(QChar::Nbsp, ' ');
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QCOMPARE(texts.count(shown), 6); // also the caption
        QVERIFY(texts.contains("two") && texts.contains("lines") && texts.contains("lost\\?"));

        QVERIFY(!toSvg("digraph {", error));
        QVERIFY2(error.startsWith("\"dot\" cannot draw the machine: Error: "), qPrintable(error));
        const support::EnvironmentGuard path("PATH", "/");
        QVERIFY(!toSvg(toDot(machine), error));
        QCOMPARE(error, QString("The program \"dot\" is missing; it is part of Graphviz"));
    }

    void problemsOfADescription()
    {
        SignalEmitter emitter;
        QCOMPARE(findProblems({}), QStringList("There are no states"));
        QCOMPARE(findProblems({{{"A", {}, {Transition::after(1ms, "B")}}, {"B"}}}), QStringList());
        const QStringList problems = findProblems(
            {{{"Twin", {}, {Transition::direct("A"), Transition::direct("Lost")}},
              {"A", {}, {Transition::on(&emitter, SIGNAL(gone()), "B")}},
              {"Twin", {}, {{Transition::Type(3), "A"}, Transition::after(1ms, "A")}},
              {"B",
               {},
               {Transition::direct("B"), Transition::after(1s, "B"), Transition::after(1s, "B")}},
              {"C", {}, {Transition::direct("A")}}}});
        QCOMPARE(problems.join('\n') + '\n', support::readFile(QFINDTESTDATA("problems.txt")));
    }

    void problemsOfNestedStates_data()
    {
        std::vector<Row> rows = problemsOfStates();
        for (const std::vector<Row>& more : {problemsOfTransitions(), circles()})
            rows.insert(rows.end(), more.begin(), more.end());
        support::addRows(rows);
    }
    void problemsOfNestedStates()
    {
        const auto& [name, machine, problems] = support::currentRow<Row>();
        QCOMPARE(findProblems(machine).join("; "), problems.join("; "));
    }

    void guardsThatOverlap()
    {
        SignalEmitter emitter;
        const auto on = [&](const char* target, bool accepts) {
            return accepting(Transition::on(&emitter, SIGNAL(notify()), target), accepts);
        };
        Transition withArguments = on("C", true);
        withArguments.argumentsGuard = [](const QVariantList& list) { return list.at(0).toBool(); };
        QCOMPARE(findOverlappingGuards(
                     {{around("P", {{"A",
                                     {},
                                     {on("B", false), on("C", true), withArguments,
                                      Transition::on(&emitter, SIGNAL(notify()), "D"),
                                      on("B", true), accepting(Transition::direct("B"))}}}),
                       {"D", {}, {on("A", true), on("A", true)}}}}),
                 QStringList("State \"A\" has transitions to \"C\" and to \"B\" whose guards both "
                             "accept zeltools::SignalEmitter::notify()"));
    }

    void tenThousandStates()
    {
        StateMachineDescription flat;
        State nest{"innermost"};
        for (int i = 0; i < 10000; ++i) {
            const QString name = QString::number(i);
            flat.states.push_back(
                {name, {}, {Transition::direct(QString::number((i + 1) % 9999))}});
            State outer{name};
            outer.states.push_back(std::move(nest));
            nest = std::move(outer);
        }
        flat.states.back().transitions.clear();
        StateMachineDescription deep;
        deep.states.push_back(std::move(nest));
        deep.states.push_back({"end"});
        QCOMPARE(findProblems(flat),
                 QStringList(
                     {"State \"0\" is in a circle of direct transitions that never ends: "
                      "\"0\", \"1\", \"2\", \"3\", \"4\", \"5\", \"6\", \"7\", \"8\", \"9\", ...",
                      "State \"9999\" cannot be reached"}));
        QCOMPARE(findProblems(deep),
                 QStringList({"State \"9999\" cannot be left", "State \"end\" cannot be reached"}));
        QCOMPARE(toDot(deep, {}).count("subgraph"), 10000);
        State& outermost =
            deep.states.front(); // The description itself is destroyed by deep calls.
        while (!outermost.states.empty())
            outermost = State(std::move(outermost.states.front()));
    }
};

QTEST_GUILESS_MAIN(TestMachinePictures)
#include "tst_machinepictures.moc"
