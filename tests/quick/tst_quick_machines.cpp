#include "declarativestatemachine/declarativestatemachine.h"
#include "logging/log.h"
#include "quick/diagrampicture_p.h"
#include "quick/library.h"
#include "quick/machinediagram.h"
#include "quick/machinesmodel.h"
#include "quick/machineview.h"
#include "quick/viewedmachines.h"
#include "statemachine/statemachine.h"

#include "support/descriptions.h"
#include "support/rows.h"

#include <QPainter>
#include <QRandomGenerator>
#include <QtTest>

using namespace std::chrono_literals;
using namespace zeltools::quick;
using zeltools::declarativestatemachine::DeclarativeStateMachine;
using Description = zeltools::declarativestatemachine::StateMachineDescription;
using support::State;
using support::Transition;

namespace
{

using LayoutRow = std::tuple<const char*, Description>;

State stateTo(const QString& name, const QStringList& targets)
{
    State state{name};
    for (const QString& target : targets)
        state.transitions.push_back(Transition::direct(target));
    return state;
}

// Any tree of up to 30 states, with transitions between any two of them or to none.
Description randomDescription(QRandomGenerator& random)
{
    const int count = random.bounded(1, 30);
    std::vector<int> parents;
    for (int i = 0; i < count; ++i)
        parents.push_back(random.bounded(-2, i)); // mostly deep
    const std::function<std::vector<State>(int)> childrenOf = [&](int parent) {
        std::vector<State> states;
        for (int i = 0; i < count; ++i) {
            if (std::max(parents[size_t(i)], -1) != parent)
                continue;
            State state{QString::number(i)};
            state.kind = State::Kind(random.bounded(0, 5));
            while (random.bounded(5) < 3)
                state.transitions.push_back(
                    Transition::direct(QString::number(random.bounded(count + 1))));
            state.states = childrenOf(i);
            states.push_back(state);
        }
        return states;
    };
    return {childrenOf(-1)};
}

bool isAtBorder(const QPointF& point, const QRectF& rect)
{
    constexpr double slack = 0.6;
    return rect.adjusted(-slack, -slack, slack, slack).contains(point) &&
           !rect.adjusted(slack, slack, -slack, -slack).contains(point);
}

bool areApart(const QRectF& first, const QRectF& second)
{
    constexpr double slack = 0.1;
    return !first.adjusted(slack, slack, -slack, -slack).intersects(second);
}

void require(QStringList& faults, bool holds, const char* what, int first, int second)
{
    if (!holds)
        faults.append(QStringLiteral("%1: %2, %3").arg(what).arg(first).arg(second));
}

void checkNodes(QStringList& faults, const Diagram& diagram, const DiagramLayout& layout)
{
    const std::vector<QRectF>& nodes = layout.nodes();
    for (int i = 0; i < int(nodes.size()); ++i) {
        const int parent = diagram.nodes[size_t(i)].parent;
        const QRectF around = parent < 0 ? QRectF(QPointF(), layout.size()) : nodes[size_t(parent)];
        require(faults, around.contains(nodes[size_t(i)]), "is outside of its frame", i, parent);
        for (int k = 0; k < i; ++k) {
            if (diagram.nodes[size_t(k)].parent == parent)
                require(faults, areApart(nodes[size_t(i)], nodes[size_t(k)]), "overlap", i, k);
        }
    }
}

// An edge that bends stays inside the rectangle of its points.
bool isApart(const DiagramLayout::Edge& edge, const QRectF& box)
{
    for (int i = 1; i < edge.points.size(); ++i) {
        const QRectF part = QRectF(edge.points[i - 1], edge.points[i]).normalized();
        if (!areApart(box, part.adjusted(0, 0, 0.01, 0.01)))
            return false;
    }
    return true;
}

/// What is wrong with a layout, by the promises of its header.
QStringList faultsOf(const Diagram& diagram, const DiagramLayout& layout)
{
    QStringList faults;
    checkNodes(faults, diagram, layout);
    const std::vector<QRectF>& nodes = layout.nodes();
    for (int i = 0; i < int(layout.edges().size()); ++i) {
        const auto& [source, target, size] = diagram.edges[size_t(i)];
        const DiagramLayout::Edge& edge = layout.edges()[size_t(i)];
        require(faults, isAtBorder(edge.points.first(), nodes[size_t(source)]), "begins", i, 0);
        require(faults, isAtBorder(edge.points.last(), nodes[size_t(target)]), "ends", i, 0);
        for (int box = 0; box < int(nodes.size()); ++box) {
            if (diagram.nodes[size_t(box)].isFrame)
                continue;
            require(faults, areApart(edge.label, nodes[size_t(box)]), "label on a box", i, box);
            require(faults, source == target || isApart(edge, nodes[size_t(box)]), "edge on a box",
                    i, box);
        }
        for (int k = 0; k < i; ++k)
            require(faults, areApart(edge.label, layout.edges()[size_t(k)].label), "labels", i, k);
    }
    return faults;
}

class Lamp : public StateMachine
{
    Q_OBJECT

public:
    enum State { Off, On };
    Q_ENUM(State)

    Lamp()
        : StateMachine(nullptr)
    {
        setStateNames(QMetaEnum::fromType<State>());
    }
};

/// A machine that can say whether anybody listens to it.
class Machine : public DeclarativeStateMachine
{
public:
    explicit Machine(const Description& description)
        : DeclarativeStateMachine(Log::StateMachine)
    {
        setDescription(description);
    }
    bool isWatched() const
    {
        return isSignalConnected(QMetaMethod::fromSignal(&Machine::transitionFired)) ||
               isSignalConnected(QMetaMethod::fromSignal(&Machine::stateChanged)) ||
               isSignalConnected(QMetaMethod::fromSignal(&Machine::runningChanged));
    }
};

/// Goes from one state to the next, or stays, when the object has another name.
Description ring(QObject& trigger)
{
    const auto on = [&trigger](const QString& target, const QString& name) {
        return support::guarded(
            Transition::on(&trigger, SIGNAL(objectNameChanged(QString)), target),
            [&trigger, name] { return trigger.objectName() == name; });
    };
    return {{{"A", {}, {on("B", "b"), on("A", "a")}},
             {"B", {}, {on("A", "a")}, {}, {{"B1", {}, {on("B2", "2")}}, {"B2"}}},
             {"End"}}};
}

QStringList pathOf(const MachineView& view)
{
    QStringList texts;
    for (const QVariant& step : view.path())
        texts.append(step.toMap().value(QStringLiteral("text")).toString());
    return texts;
}

QVariant cell(const MachinesModel& model, int row, int role)
{
    return model.data(model.index(row), role);
}

QImage imageOf(MachineDiagram& diagram)
{
    QImage image(int(diagram.width()), int(diagram.height()), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    diagram.paint(&painter);
    return image;
}

} // namespace

class TestQuickMachines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingInAPictureOverlaps_data();
    void nothingInAPictureOverlaps();
    void aThousandStatesAreLaidOut();
    void theListFollowsTheMachines();
    void aViewShowsWhatTheMachineDoes();
    void aRecordingTellsWhatWasBefore();
    void aPlainMachineShowsItsLastChanges();
    void aMachineThatNobodySeesIsNotFollowed();
    void manyStepsAreOneUpdate();
    void aMachineMayGoWhileItIsShown();
    void rubbishIsShownAndHarmless();
    void aPictureOfTooManyStatesIsRefused();
    void thePresentStateIsFilled();
};

void TestQuickMachines::nothingInAPictureOverlaps_data()
{
    Transition missing = Transition::direct("Nowhere");
    missing.description = "lost";
    const State region = support::around("R", {stateTo("R1", {"R2", "R1"}), stateTo("R2", {"R1"})});
    std::vector<LayoutRow> rows{
        {"nothing", {}},
        {"one state", {{stateTo("A", {})}}},
        {"a chain with a way back", {{stateTo("A", {"B"}), stateTo("B", {"C", "A"}), {"C"}}}},
        {"many transitions between two", {{stateTo("A", {"B", "B", "B", "B", "B"}), {"B"}}}},
        {"many loops", {{stateTo("A", {"A", "A", "A", "A"}), {"B", {}, {missing}}, {"C"}}}},
        {"states without transitions", {{{"A"}, {"B"}, {"C"}, {"D"}, {"E"}, {"F"}, {"G"}}}},
        {"same names", {{stateTo("A", {"A"}), stateTo("A", {"A"}), {"A"}}}},
        {"regions with a history",
         {{support::kindOf(State::Parallel, "P", {Transition::direct("End")},
                           {region, support::kindOf(State::DeepHistory, "H"),
                            support::around("S", {stateTo("S1", {"R2", "P", "S"}), {"S2"}})}),
           stateTo("Out", {"S2", "H", "P"}),
           {"End"}}}},
        {"into and out of itself",
         {{support::around("F", {stateTo("F1", {"F", "F2"}), stateTo("F2", {"F1"})},
                           {Transition::direct("F2"), Transition::direct("F")}),
           {"End"}}}},
    };
    QRandomGenerator random(1);
    static std::vector<QByteArray> names;
    names.resize(200);
    for (size_t i = 0; i < names.size(); ++i) {
        names[i] = "random " + QByteArray::number(int(i));
        rows.emplace_back(names[i].constData(), randomDescription(random));
    }
    support::addRows(rows);
}

void TestQuickMachines::nothingInAPictureOverlaps()
{
    const MachineGraph graph(std::get<1>(support::currentRow<LayoutRow>()));
    const DiagramPicture picture(graph, QFont());
    for (const auto direction : {Diagram::Downwards, Diagram::Rightwards}) {
        const auto layout = DiagramLayout::of(picture.diagram(), direction);
        QVERIFY(layout.has_value());
        QCOMPARE(faultsOf(picture.diagram(), *layout), QStringList());
        const auto again = DiagramLayout::of(picture.diagram(), direction);
        QVERIFY(again.has_value() && again->nodes() == layout->nodes());
    }
}

void TestQuickMachines::aThousandStatesAreLaidOut()
{
    QRandomGenerator random(2);
    Description description;
    for (int i = 0; i < 1000; ++i)
        description.states.push_back(stateTo(
            QString::number(i), {QString::number(i + 1), QString::number(random.bounded(1000))}));
    const MachineGraph graph(description);
    QVERIFY(!DiagramPicture(graph, QFont()).isTooLarge());
}

void TestQuickMachines::theListFollowsTheMachines()
{
    QObject trigger;
    const Description description = ring(trigger);
    auto machine = std::make_unique<Machine>(description);
    Lamp lamp;
    ViewedMachines::offer("Ring", machine.get(), description);
    const MachinesModel model;
    ViewedMachines::offer("Lamp", &lamp);
    QCOMPARE(model.count(), 2);
    QCOMPARE(cell(model, 0, MachinesModel::HasPictureRole).toBool(), true);
    QCOMPARE(cell(model, 1, MachinesModel::HasPictureRole).toBool(), false);
    QCOMPARE(cell(model, 1, MachinesModel::IsRunningRole).toBool(), false);

    machine->start();
    lamp.setInitialState(Lamp::On);
    QTRY_COMPARE(cell(model, 0, MachinesModel::StateRole).toString(), QString("A"));
    QTRY_COMPARE(cell(model, 1, MachinesModel::StateRole).toString(), QString("On"));
    ViewedMachines::offer("Ring\nagain", machine.get(), description);
    QCOMPARE(model.count(), 2);
    QCOMPARE(cell(model, 0, MachinesModel::NameRole).toString(), QString("Ring again"));

    machine.reset();
    QCOMPARE(model.count(), 1);
    ViewedMachines::withdraw(&lamp);
    ViewedMachines::withdraw(&lamp);
    QCOMPARE(model.count(), 0);
}

void TestQuickMachines::aViewShowsWhatTheMachineDoes()
{
    QObject trigger;
    const Description description = ring(trigger);
    Machine machine(description);
    ViewedMachines::offer("Ring", &machine, description);
    MachineView view;
    view.setMachine(&machine);
    QVERIFY(view.hasPicture() && view.problem().isEmpty() && !view.isRunning());
    machine.start();
    QTRY_COMPARE(view.state(), QString("A"));
    trigger.setObjectName("a"); // The state is entered again.
    trigger.setObjectName("b");
    trigger.setObjectName("2");
    QTRY_COMPARE(view.state(), QString("B2"));
    QCOMPARE(pathOf(view), QStringList({"B1 → B2 (objectNameChanged [guard])",
                                        "A → B (objectNameChanged [guard])",
                                        "A → A (objectNameChanged [guard])"}));
    QTRY_VERIFY(view.stateTime() >= 20);
    QVERIFY(view.isStateTimeKnown());
    machine.restart();
    QTRY_COMPARE(view.state(), QString());
    QCOMPARE(view.stateTime(), 0.0);
    QTRY_COMPARE(view.state(), QString("A"));
}

void TestQuickMachines::aRecordingTellsWhatWasBefore()
{
    QObject trigger;
    const Description description = ring(trigger);
    Machine recorded(description);
    Machine silent(description);
    recorded.setRecording(100);
    for (Machine* machine : {&recorded, &silent}) {
        ViewedMachines::offer("Ring", machine, description);
        machine->start();
        QTRY_COMPARE(machine->currentState(), QString("A"));
    }
    trigger.setObjectName("b");
    QTest::qWait(30);
    MachineView view;
    view.setMachine(&recorded);
    QCOMPARE(pathOf(view), QStringList("A → B (objectNameChanged [guard])"));
    Library().setLanguage("de");
    QCOMPARE(pathOf(view), QStringList("A → B (objectNameChanged [Bedingung])"));
    Library().setLanguage("en");
    QVERIFY(view.stateTime() >= 30 && view.isStateTimeKnown());
    view.setMachine(&silent);
    QCOMPARE(view.state(), QString("B1"));
    QCOMPARE(pathOf(view), QStringList());
    QVERIFY(!view.isStateTimeKnown());
}

void TestQuickMachines::aPlainMachineShowsItsLastChanges()
{
    Lamp lamp;
    ViewedMachines::offer("Lamp", &lamp);
    MachineView view;
    view.setMachine(&lamp);
    QVERIFY(!view.hasPicture() && !view.problem().isEmpty());
    lamp.setInitialState(Lamp::Off);
    QTRY_COMPARE(view.state(), QString("Off"));
    lamp.setState(Lamp::On);
    QTRY_COMPARE(view.state(), QString("On"));
    lamp.setStateAgain();
    QTRY_COMPARE(pathOf(view), QStringList({"On → On", "Off → On", "→ Off"}));
}

void TestQuickMachines::aMachineThatNobodySeesIsNotFollowed()
{
    QObject trigger;
    const Description description = ring(trigger);
    Machine machine(description);
    ViewedMachines::offer("Ring", &machine, description);
    QVERIFY(!machine.isWatched());
    {
        MachinesModel model;
        MachineDiagram diagram;
        diagram.setMachine(&machine);
        QVERIFY(machine.isWatched());
    }
    QVERIFY(!machine.isWatched());
}

void TestQuickMachines::manyStepsAreOneUpdate()
{
    QObject trigger;
    const Description description = ring(trigger);
    Machine machine(description);
    ViewedMachines::offer("Ring", &machine, description);
    machine.start();
    MachinesModel model;
    MachineView view;
    view.setMachine(&machine);
    QTRY_COMPARE(cell(model, 0, MachinesModel::StateRole).toString(), QString("A"));
    QTest::qWait(20);
    const QSignalSpy changes(&view, &MachineView::changed);
    const QSignalSpy rows(&model, &MachinesModel::dataChanged);
    for (int i = 0; i < 1000; ++i)
        trigger.setObjectName(i % 2 == 0 ? "b" : "a");
    QTRY_VERIFY(!changes.isEmpty() && !rows.isEmpty());
    QCOMPARE(changes.size() + rows.size(), 2);
    QCOMPARE(view.path().size(), int(MachineView::maximumPath));
}

void TestQuickMachines::aMachineMayGoWhileItIsShown()
{
    QObject trigger;
    const Description description = ring(trigger);
    auto machine = std::make_unique<Machine>(description);
    ViewedMachines::offer("Ring", machine.get(), description);
    MachineDiagram diagram;
    diagram.setSize({400, 300});
    diagram.setMachine(machine.get());
    QVERIFY(diagram.contentWidth() > 0);
    machine->start();
    QTRY_VERIFY(!diagram.currentRect().isEmpty());
    QSignalSpy gone(&diagram, &MachineDiagram::machineChanged);
    connect(machine.get(), &Machine::transitionFired, this, [&] { machine.reset(); });
    trigger.setObjectName("b");
    QTRY_COMPARE(gone.size(), 1);
    QCOMPARE(diagram.machine(), static_cast<QObject*>(nullptr));
    QCOMPARE(diagram.contentWidth(), 0.0);
    imageOf(diagram);
}

void TestQuickMachines::rubbishIsShownAndHarmless()
{
    const QString large(1 << 20, QLatin1Char('x'));
    const Description description{{stateTo("", {"", large}),
                                   stateTo("<b>a\nb\x01</b>", {large}),
                                   stateTo(large, {"", "gone\n"}),
                                   {""}}};
    Machine machine(description);
    ViewedMachines::offer(large, &machine, description);
    MachineDiagram diagram;
    diagram.setSize({800, 480});
    diagram.setMachine(&machine);
    QCOMPARE(diagram.problem(), QString());
    QVERIFY2(diagram.contentWidth() < 2000, qPrintable(QString::number(diagram.contentWidth())));
    imageOf(diagram);
    const MachinesModel model;
    QVERIFY(cell(model, 0, MachinesModel::NameRole).toString().size() <= 200);
}

void TestQuickMachines::aPictureOfTooManyStatesIsRefused()
{
    Description description;
    for (int i = 0; i < 10000; ++i)
        description.states.push_back({QStringLiteral("S%1").arg(i)});
    Machine machine(description);
    ViewedMachines::offer("Large", &machine, description);
    MachineView view;
    view.setMachine(&machine);
    machine.start();
    QTRY_COMPARE(view.state(), QString("S0"));
    QVERIFY(!view.hasPicture());
    QVERIFY2(view.problem().contains(QStringLiteral("10000")), qPrintable(view.problem()));
    QCOMPARE(pathOf(view), QStringList("→ S0"));
}

void TestQuickMachines::thePresentStateIsFilled()
{
    QObject trigger;
    const Description description = ring(trigger);
    Machine machine(description);
    ViewedMachines::offer("Ring", &machine, description);
    MachineDiagram diagram;
    diagram.setSize({800, 480});
    diagram.setMachine(&machine);
    machine.start();
    const QColor current = diagram.property("currentColor").value<QColor>();
    const auto isFilled = [&](const QRectF& rect) {
        const QPointF inside = rect.topLeft() + QPointF(rect.width() / 2, 6);
        return imageOf(diagram).pixelColor(inside.toPoint()) == current;
    };
    QTRY_VERIFY(!diagram.currentRect().isEmpty());
    const QRectF first = diagram.currentRect();
    QVERIFY(isFilled(first));
    trigger.setObjectName("b");
    QTRY_VERIFY(diagram.currentRect() != first);
    QVERIFY(isFilled(diagram.currentRect()));
    QVERIFY(!isFilled(first));
    diagram.setZoom(2);
    diagram.setContentX(diagram.currentRect().left() - 100);
    diagram.setContentY(diagram.currentRect().top() - 100);
    QVERIFY(isFilled(diagram.currentRect().translated(-diagram.contentX(), -diagram.contentY())));
}

QTEST_MAIN(TestQuickMachines)
#include "tst_quick_machines.moc"
