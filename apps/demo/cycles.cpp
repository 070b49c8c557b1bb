#include "cycles.h"

#include "board.h"
#include "drinkdescription.h"
#include "drinkrecording.h"
#include "rinsecycle.h"

#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/declarativestatemachine/descriptioncheck.h>
#include <zeltools/logging/log.h>
#include <zeltools/statemachine/eventgrouphandler.h>

#include <QEventLoop>
#include <QTimer>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;

namespace
{

// Returns after the signal or a timeout.
template <typename Sender, typename Signal>
void waitFor(const Sender& sender, Signal signal)
{
    QEventLoop loop;
    QObject::connect(&sender, signal, &loop, &QEventLoop::quit);
    QTimer::singleShot(20s, &loop, &QEventLoop::quit);
    loop.exec();
}

bool hasHappened(const char* title, const QStringList& journal, const QStringList& expected,
                 QTextStream& out)
{
    const QString comma = QStringLiteral(", ");
    out << title << ": " << journal.join(comma) << '\n';
    if (journal != expected)
        out << "  expected: " << expected.join(comma) << '\n';
    return journal == expected;
}

bool makeDrink(const QString& diagramFolder, QTextStream& out)
{
    Board board("wg-g"); // The first dose is too small, and the first brewing gets no answer.
    QStringList journal;
    const StateMachineDescription description = describeDrink(board, journal);
    journal += findProblems(description);
    DeclarativeStateMachine machine(Log::Beverage);
    machine.setDescription(description);
    constexpr int entries = 1000;
    machine.setRecording(entries);
    machine.start();
    waitFor(machine, &DeclarativeStateMachine::runningChanged);
    waitFor(machine, &DeclarativeStateMachine::runningChanged);
    const QStringList expected =
        QStringLiteral("Heating Grinding Grinding Brewing Venting Brewing Ready")
            .split(QLatin1Char(' '));
    const bool isMade = hasHappened("Drink", journal, expected, out);
    const MachineRecording recording = machine.recording();
    const bool isPlayed = playBackDrink(recording, out);
    const bool isDrawn =
        diagramFolder.isEmpty() || drawDrink(description, recording, diagramFolder, out);
    return isMade && isPlayed && isDrawn;
}

bool rinse(QTextStream& out)
{
    Board board("gg");
    RinseCycle cycle(board, 2);
    waitFor(cycle, &RinseCycle::finished);
    QStringList expected;
    for (int round = 0; round < 2; ++round) {
        expected << QStringLiteral("Filling") << QStringLiteral("tankFull")
                 << QStringLiteral("Draining") << QStringLiteral("tankEmpty (waited)");
    }
    return hasHappened("Rinse", cycle.journal(), expected << QStringLiteral("Done"), out);
}

tools::EventSteps commandSteps(const QString& command, Board& board, QStringList& journal)
{
    const auto connectAnswer = [&board](tools::EventGroupHandler* handler) {
        // The lambda of the connection keeps the pointer as long as the connection exists.
        auto connection = std::make_shared<QMetaObject::Connection>();
        *connection = QObject::connect(
            &board, &Board::answered, handler,
            [handler, connection](const QVariant& answer) { handler->checkResult(answer); });
        return connection;
    };
    const auto send = [&board, &journal, command] {
        journal.append(command);
        board.command();
    };
    const auto isAccepted = [&journal](const QVariant& answer) {
        journal.append(answer.toBool() ? QStringLiteral("ok") : QStringLiteral("refused"));
        return answer.toBool();
    };
    return {send, connectAnswer, isAccepted};
}

bool sendCommands(QTextStream& out)
{
    Board board("gwglg"); // One command is refused once, and one answer comes after the timeout.
    QStringList journal;
    tools::EventGroupHandler handler(2, 1s);
    QObject::connect(&handler, &tools::EventGroupHandler::success,
                     [&] { journal.append(QStringLiteral("success")); });
    QObject::connect(&handler, &tools::EventGroupHandler::failure,
                     [&] { journal.append(QStringLiteral("failure")); });
    for (const char* command : {"wake", "heat", "open"})
        handler.addEvent(commandSteps(QLatin1String(command), board, journal));
    handler.start();
    waitFor(handler, &tools::EventGroupHandler::success);
    waitFor(board, &Board::answered); // the late answer
    return hasHappened(
        "Commands", journal,
        QStringLiteral("wake ok heat refused heat ok open open ok success").split(QLatin1Char(' ')),
        out);
}

} // namespace

bool runCycles(const QString& diagramFolder, QTextStream& out)
{
    const bool isDrinkMade = makeDrink(diagramFolder, out);
    const bool isRinsed = rinse(out);
    const bool areCommandsSent = sendCommands(out);
    out.flush();
    return isDrinkMade && isRinsed && areCommandsSent;
}
