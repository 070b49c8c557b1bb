#pragma once

#include <zeltools/statemachine/eventgrouphandler.h>
#include <zeltools/statemachine/eventrecipe.h>
#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

namespace tools
{

class RecipeRun;

/// Runs a recipe. Each step has a handler of its own while it runs, with the connection scope
/// Handler: the connections of steps that run at the same time are independent, and each is cut
/// when its step ends. A late answer therefore does nothing. Every started run ends with exactly
/// one finished(); the recipe can then be run again, each time with fresh copies of its callables.
///
/// A runner belongs to one thread. All callables and receivers of its signals may cancel or destroy
/// it. A runner that is destroyed while it runs calls no callables. Answers that arrive while a
/// callable runs are checked immediately, but further steps start, and signals leave, after its
/// return, so that any number of such answers takes no more stack than one. (If the callable runs
/// an event loop, the recipe continues inside that event loop.)
///
/// A callable that throws fails its step or group with the reason Exception, without further
/// attempts. The exception is not passed on.
class ZELTOOLS_EXPORT EventRecipeRunner : public QObject
{
    Q_OBJECT

public:
    /// The result of the whole recipe.
    using Result = EventRecipe::Result;
    /// The reasons are those of EventGroupHandler.
    using FailureReason = EventGroupHandler::FailureReason;

    /// Why a step or group has failed.
    struct Failure
    {
        QString name;                               ///< The name of the failed step or group.
        FailureReason reason = FailureReason::None; ///< The first failure decides.
        QString exception; ///< The text of the exception, for the reason Exception.
    };

    /// A step that runs at this moment.
    struct RunningStep
    {
        QString name;             ///< The name in the recipe.
        unsigned int attempt = 0; ///< 1 for the first attempt.
    };

    /// How far the recipe has come.
    struct Progress
    {
        int endedSteps = 0;                    ///< Includes steps that cannot start anymore.
        int stepCount = 0;                     ///< The number of steps in the recipe.
        std::vector<RunningStep> runningSteps; ///< In the order of the recipe.
    };

    /// Takes a copy of the recipe, which does not start yet.
    explicit EventRecipeRunner(const EventRecipe& recipe, QObject* parent = nullptr);
    ~EventRecipeRunner() override;

    /// Starts the recipe; does nothing while it runs.
    void start();
    /// Whether the recipe has started and not ended.
    bool isRunning() const { return m_isRunning; }
    /// Cancels all steps and groups that run, a group after its children. Inside a callable,
    /// finished() follows after its return. Does nothing if the recipe does not run.
    void cancel();

    /// The progress of the run, also after its end. The time that this takes is proportional to the
    /// size of the recipe.
    Progress progress() const;
    /// The failures of the run in the order in which they happened, so that the first one is
    /// usually the cause. Failures that follow from the failure of a child are not included.
    std::vector<Failure> failures() const;
    /// The events of the run as texts, such as "heat: started", "brew: attempt 2" and "grind:
    /// failed (Timeout)". Only the last 10,000 are kept.
    QStringList journal() const;

Q_SIGNALS:
    /// Is emitted when steps have started, used another attempt or ended.
    void progressChanged();
    /// Emitted once when the recipe and all its callables have ended.
    void finished(tools::EventRecipe::Result result);

private:
    void proceed();
    void proceedUntilIdle();
    bool doNext();

    const EventRecipe m_recipe;
    std::unique_ptr<RecipeRun> m_run; // the last one, also after its end
    QTimer m_turn{this};              // continues inside the event loop of a callable
    bool m_isRunning = false;
    bool m_isProceeding = false;
};

} // namespace tools
