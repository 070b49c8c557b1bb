#pragma once

#include <zeltools/statemachine/eventgrouphandler.h>
#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <vector>

namespace tools
{

/// A recipe for EventRecipeRunner as data: a tree of steps, which are requests with answers, and of
/// groups, whose children run one after another or at the same time. A recipe runs nothing itself;
/// it is a value that can be copied, changed and run many times. This one opens a valve, then heats
/// and grinds at the same time, then brews with three attempts of 1.5 s each, the second after a
/// pause of 100 ms and the third after 200 ms:
///
///     const EventRecipe coffee = EventRecipe::sequence("coffee", {
///         EventRecipe::step("open valve", {open, 1, 500ms}),
///         EventRecipe::parallel("prepare", {
///             EventRecipe::step("heat", {heat, 1, 20s}),
///             EventRecipe::step("grind", {grind, 1, 10s}),
///         }).withTimeLimit(25s),
///         EventRecipe::step("brew", {brew, 3, 1500ms, {100ms, 2, 400ms}}),
///     });
///
/// `open`, `heat`, `grind` and `brew` are EventSteps.
class ZELTOOLS_EXPORT EventRecipe
{
    Q_GADGET

public:
    using Event = EventGroupHandler::Event;

    /// When a group ends before all of its children have ended. Children that still run are then
    /// canceled, and the others do not start.
    enum class Policy {
        StopOnError,     ///< After the first failure. The group succeeds if no child has failed.
        ContinueOnError, ///< Never. The group succeeds if no child has failed.
        StopOnSuccess,   ///< After the first success. The group succeeds if a child has succeeded.
    };
    /// Whether a group runs.
    enum class Setup {
        Run,
        Skip, ///< The children do not run, and the parent ignores the group.
        Fail, ///< The children do not run, and the group fails.
    };
    enum class Result { Success, Failure, Canceled, Skipped };
    Q_ENUM(Result)

    /// A single request. An event with 0 attempts is repeated until the time limit of a group ends
    /// it.
    static EventRecipe step(const QString& name, const Event& event);
    /// A group whose children run one after another.
    static EventRecipe sequence(const QString& name, const std::vector<EventRecipe>& children);
    /// A group whose children start in their order and run at the same time, but never more of them
    /// than `maximumRunning` unless it is 0.
    static EventRecipe parallel(const QString& name, const std::vector<EventRecipe>& children,
                                int maximumRunning = 0);

    /// The recipe with another policy; the default is StopOnError.
    EventRecipe withPolicy(Policy value) const;
    /// The recipe with a time limit for the whole group, which then fails with the reason Timeout.
    /// With 0, the default, there is none.
    EventRecipe withTimeLimit(std::chrono::milliseconds time) const;
    /// The recipe with a callable that is called when the group starts.
    EventRecipe withSetup(const std::function<Setup()>& callable) const;
    /// The recipe with a callable that is called when the group has ended, also if it was canceled.
    /// It is called once for each time that the group has started; a group starts if its setup
    /// returns Run.
    EventRecipe withDone(const std::function<void(Result)>& callable) const;

    QString name; ///< Names the step or group in the journal and in failures.
    bool isStep = false;
    Event event; ///< Belongs to a step; the fields below belong to a group.
    std::vector<EventRecipe> children;
    int maximumRunning = 0;
    Policy policy = Policy::StopOnError;
    std::chrono::milliseconds timeLimit{0};
    std::function<Setup()> setup;
    std::function<void(Result)> done;
};

} // namespace tools
