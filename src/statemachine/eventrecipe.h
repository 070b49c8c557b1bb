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
/// and grinds at the same time for at most 25 s, then brews with three attempts of 1.5 s each, the
/// second after a pause of 100 ms and the third after 200 ms (a fourth would pause for 400 ms):
///
///     const EventRecipe coffee{"coffee",
///                              EventRecipe::Sequence,
///                              {{"open valve", {open, 1, 500ms}},
///                               {"prepare",
///                                EventRecipe::Parallel,
///                                {{"heat", {heat, 1, 20s}}, {"grind", {grind, 1, 10s}}},
///                                25s},
///                               {"brew", {brew, 3, 1500ms, {100ms, 2, 400ms}}}}};
///
/// `open`, `heat`, `grind` and `brew` are EventSteps.
class ZELTOOLS_EXPORT EventRecipe
{
    Q_GADGET

public:
    /// A step is an event of EventGroupHandler.
    using Event = EventGroupHandler::Event;

    /// Whether the children of a group run one after another or at the same time.
    enum Order { Sequence, Parallel };
    /// When a group ends before all of its children have ended. Children that still run are then
    /// cancelled, and the others do not start.
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
    /// How a step or a group has ended.
    enum class Result {
        Success,
        Failure,
        Canceled, ///< By cancel(), or by the end of a group.
        Skipped,  ///< By its setup.
    };
    Q_ENUM(Result)

    /// Constructs an empty group, which succeeds.
    EventRecipe() = default;
    /// Constructs a step. One with 0 attempts is repeated until the time limit of a group ends it,
    /// after pauses of at least 1 ms that do not shrink.
    EventRecipe(const QString& stepName, const Event& stepEvent);
    /// Constructs a group. With a time limit, a group that has not ended then fails with the reason
    /// Timeout.
    EventRecipe(const QString& groupName, Order order, const std::vector<EventRecipe>& members,
                std::chrono::milliseconds limit = std::chrono::milliseconds(0));

    /// The recipe with another policy; the default is StopOnError.
    EventRecipe withPolicy(Policy value) const;
    /// The recipe with a maximum of children that run at the same time.
    EventRecipe withMaximumRunning(int count) const;
    /// The recipe with a callable that is called when the group starts.
    EventRecipe withSetup(const std::function<Setup()>& callable) const;
    /// The recipe with a callable that is called once when the group has ended, also if it was
    /// cancelled, but only if its setup has returned Run. The children have ended before.
    EventRecipe withDone(const std::function<void(Result)>& callable) const;

    QString name;                      ///< Names the step or group in the journal and in failures.
    bool isStep = false;               ///< Whether this is a step, and not a group.
    Event event;                       ///< Belongs to a step; the fields below belong to a group.
    std::vector<EventRecipe> children; ///< The members of the group, in the order of their start.
    int maximumRunning = 0;            ///< With 0, all children run at the same time.
    Policy policy = Policy::StopOnError;    ///< When the group ends early.
    std::chrono::milliseconds timeLimit{0}; ///< With 0, there is none.
    std::function<Setup()> setup;           ///< Called when the group starts; may be empty.
    std::function<void(Result)> done;       ///< Called when the group has ended; may be empty.
};

} // namespace tools
