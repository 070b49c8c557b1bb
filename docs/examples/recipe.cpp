// The code of docs/state-machines.md: a recipe that several devices work on at once.

//! [recipe]
#include <zeltools/statemachine/eventreciperunner.h>

#include <QTimer>

using namespace std::chrono_literals;

/// Several devices of the machine, which answer their requests later.
class Board : public QObject
{
    Q_OBJECT

public:
    void send(const QString& request)
    {
        const bool isDone = request != QLatin1String("grind"); // The grinder is jammed.
        const auto time = request == QLatin1String("heat") ? 200ms : 20ms;
        QTimer::singleShot(time, this, [=] { Q_EMIT answered(request, isDone); });
    }

Q_SIGNALS:
    void answered(const QString& request, bool isDone);
};

tools::EventSteps request(Board& board, const QString& name)
{
    return {[&board, name] { board.send(name); },
            [&board, name](tools::EventGroupHandler* handler) {
                const auto check = [handler, name](const QString& answered, bool isDone) {
                    if (answered == name)
                        handler->checkResult(isDone);
                };
                return std::make_shared<QMetaObject::Connection>(
                    QObject::connect(&board, &Board::answered, handler, check));
            },
            [](const QVariant& isDone) { return isDone.toBool(); }};
}

tools::EventRecipe coffeeRecipe(Board& board)
{
    using tools::EventRecipe;
    const auto step = [&board](const char* name, unsigned attempts, auto timeout,
                               const tools::BackOff& pauses = {}) {
        const QString text = QLatin1String(name);
        return EventRecipe(text, {request(board, text), attempts, timeout, pauses});
    };
    const EventRecipe prepare(QStringLiteral("prepare"), EventRecipe::Parallel,
                              {step("heat", 1, 20s), step("grind", 1, 10s)}, 25s);
    return EventRecipe(
        QStringLiteral("coffee"), EventRecipe::Sequence,
        {step("open valve", 1, 500ms), prepare, step("brew", 3, 1500ms, {100ms, 2, 400ms})});
}
//! [recipe]

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Board board;
    tools::EventRecipeRunner runner(coffeeRecipe(board));
    QObject::connect(&runner, &tools::EventRecipeRunner::finished, &QCoreApplication::quit);
    runner.start();
    const int status = QCoreApplication::exec();
    QTextStream(stdout) << runner.journal().join(QLatin1Char('\n')) << Qt::endl;
    return status;
}

#include "recipe.moc"
