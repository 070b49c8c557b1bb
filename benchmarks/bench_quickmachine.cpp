// The cost of the live picture of a machine: of painting, of the layout, and in the machine itself.

#include "../apps/demo/board.h"
#include "../apps/demo/drinkdescription.h"
#include "ratiotable.h"
#include "runloopuntil.h"
#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>
#include <zeltools/quick/machinediagram.h>
#include <zeltools/quick/viewedmachines.h>

#include <QGuiApplication>
#include <QPainter>
#include <QTemporaryDir>

#include <memory>

using namespace zeltools::quick;
using zeltools::declarativestatemachine::DeclarativeStateMachine;
using zeltools::declarativestatemachine::StateMachineDescription;
using Transition = zeltools::declarativestatemachine::TransitionDescription;

namespace
{

constexpr QSize s_screen(1280, 800);

/// The drink machine of the demo after a drink in which the first dose was too small.
class Drink
{
public:
    Drink()
    {
        m_machine.setDescription(m_description);
        m_machine.setRecording(1000);
        ViewedMachines::offer(QStringLiteral("Drink"), &m_machine, m_description);
        bool isDone = false;
        QObject::connect(&m_machine, &DeclarativeStateMachine::finished, [&] { isDone = true; });
        m_machine.start();
        runLoopUntil([&] { return isDone; });
    }
    DeclarativeStateMachine* machine() { return &m_machine; }
    const StateMachineDescription& description() const { return m_description; }

private:
    Board m_board{"wg"};
    QStringList m_journal;
    const StateMachineDescription m_description = describeDrink(m_board, m_journal);
    DeclarativeStateMachine m_machine{Log::StateMachine};
};

void paintPicture(benchmark::State& state, Drink& drink)
{
    MachineDiagram diagram;
    diagram.setSize(s_screen);
    diagram.setMachine(drink.machine());
    diagram.setZoom(diagram.fitZoom());
    QImage image(s_screen, QImage::Format_RGB32);
    for (auto _ : state) {
        image.fill(Qt::black);
        QPainter painter(&image);
        diagram.paint(&painter);
    }
}

// As many shapes of the same sizes, without texts, marks and curves.
void paintShapes(benchmark::State& state, const Drink& drink)
{
    QImage image(s_screen, QImage::Format_RGB32);
    for (auto _ : state) {
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen({Qt::white, 2});
        painter.setBrush(Qt::darkCyan);
        int y = 0;
        for (const auto& each : drink.description().states) {
            painter.drawRect(QRectF(100, y, 170, 70));
            for (size_t i = 0; i < each.transitions.size(); ++i)
                painter.drawLine(QPointF(300 + 20.0 * double(i), y), QPointF(350, y + 100));
            y += 120;
        }
    }
}

StateMachineDescription chain(int count)
{
    StateMachineDescription description;
    for (int i = 0; i < count; ++i) {
        description.states.push_back({QString::number(i)});
        for (int target : {i + 1, i * 7919 % count}) {
            if (i + 1 < count && (target == i + 1 || i % 10 == 0))
                description.states.back().transitions.push_back(
                    Transition::direct(QString::number(target)));
        }
    }
    return description;
}

void layOut(benchmark::State& state, int count)
{
    const StateMachineDescription description = chain(count);
    DeclarativeStateMachine machine(Log::StateMachine);
    machine.setDescription(description);
    ViewedMachines::offer(QStringLiteral("Chain"), &machine, description);
    for (auto _ : state) {
        MachineDiagram diagram;
        diagram.setMachine(&machine);
        if (!diagram.problem().isEmpty())
            state.SkipWithError("there is no picture");
    }
}

enum Watch { NotOffered, Offered, Watched };

void step(benchmark::State& state, Watch watch)
{
    QObject trigger;
    const auto on = [&](const char* target) {
        return Transition::on(&trigger, SIGNAL(objectNameChanged(QString)),
                              QString::fromLatin1(target));
    };
    const StateMachineDescription description{{{QStringLiteral("A"), {}, {on("B")}},
                                               {QStringLiteral("B"), {}, {on("A")}},
                                               {QStringLiteral("End")}}};
    DeclarativeStateMachine machine(Log::StateMachine);
    machine.setDescription(description);
    if (watch != NotOffered)
        ViewedMachines::offer(QStringLiteral("Ring"), &machine, description);
    MachineDiagram diagram;
    if (watch == Watched)
        diagram.setMachine(&machine);
    machine.start();
    runLoopUntil([&] { return !machine.currentState().isEmpty(); });
    for (auto _ : state) {
        Q_EMIT trigger.objectNameChanged(QString(), {});
        QCoreApplication::processEvents();
    }
}

void addAll(Drink& drink)
{
    add("Painting the drink machine, 1280x800/ZelTools",
        [&](benchmark::State& state) { paintPicture(state, drink); });
    add("Painting the drink machine, 1280x800/as many rectangles and lines",
        [&](benchmark::State& state) { paintShapes(state, drink); });
    for (const auto& [name, count] : {std::pair("Texts and layout of a picture/1,000 states", 1000),
                                      std::pair("Texts and layout of a picture/100 states", 100)})
        add(name, [count = count](benchmark::State& state) { layOut(state, count); });
    for (const auto& [name, watch] :
         {std::pair("A step of a machine/offered", Offered),
          std::pair("A step of a machine/not offered", NotOffered),
          std::pair("A step of a machine/its picture is shown", Watched)})
        add(name, [watch = watch](benchmark::State& state) { step(state, watch); });
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    Path::instance()->init(folder.path() + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize(); // until then every Debug line is printed
    Drink drink;
    addAll(drink);
    return RatioTable::run(argc, argv);
}
