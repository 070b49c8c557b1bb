#include "statemachine/eventreciperunner.h"

#include <QtTest>

#include <set>

using tools::EventGroupHandler;
using tools::EventRecipe;
using tools::EventRecipeRunner;
using tools::EventSteps;
using namespace std::chrono_literals;

Q_DECLARE_METATYPE(EventRecipe)

namespace
{

/// A simulated device. Each letter is its answer to one request of a step: (g)ood or (b)ad, in
/// capitals before the trigger has returned, "+" good inside `connect`, and none otherwise. The
/// trigger of the step "late" answers for the step "silent".
class Device : public QObject
{
    Q_OBJECT

public:
    EventSteps steps(const QString& name, QString answers)
    {
        return {[=]() mutable {
                    add(name);
                    answer(name, answers.mid(0, 1));
                    answers.remove(0, 1);
                },
                [=](EventGroupHandler* handler) {
                    add("connect " + name);
                    auto connection = std::make_shared<QMetaObject::Connection>(connect(
                        this, &Device::answered, handler, [=](const QString& step, bool isGood) {
                            if (step == name)
                                handler->checkResult(isGood);
                        }));
                    if (answers == "+")
                        answer(name, "G");
                    return connection;
                },
                [=](const QVariant& isGood) {
                    add(name + '?');
                    return isGood.toBool();
                }};
    }
    EventRecipe step(const QString& name, const QString& answers = "g")
    {
        // A step without an answer waits for a millisecond with "-".
        const auto timeout = answers.endsWith('-') ? 1ms : 1h;
        return EventRecipe(name, {steps(name, answers), unsigned(answers.size()), timeout});
    }
    EventRecipe logged(const EventRecipe& group)
    {
        const auto setUp = [=] {
            add("setup " + group.name);
            return EventRecipe::Setup::Run;
        };
        return group.withSetup(setUp).withDone(
            [=](EventRecipe::Result result) { add(group.name + '=' + letter(result)); });
    }
    static QString letter(EventRecipe::Result result)
    {
        return QVariant::fromValue(result).toString().mid(0, 1);
    }
    void add(const QString& event)
    {
        const QString first = event.section(' ', 0, 0);
        if (first != "connect" && first != "setup" && first != "progress")
            story << event;
        if (event == when && then)
            std::exchange(then, nullptr)();
    }

    QStringList story;
    QString when; // The event after which then() is called once.
    std::function<void()> then;

Q_SIGNALS:
    void answered(const QString& step, bool isGood);

private:
    void answer(const QString& name, const QString& how)
    {
        if (name == "late")
            Q_EMIT answered("silent", true);
        if (how.isEmpty() || how == "-" || how == ".")
            return;
        const bool isDirect = how == "G" || how == "B";
        QMetaObject::invokeMethod(
            this, [=] { Q_EMIT answered(name, how.toLower() == "g"); },
            isDirect ? Qt::DirectConnection : Qt::QueuedConnection);
    }
};

} // namespace

class TestEventRecipe : public QObject
{
    Q_OBJECT

    // Runs a recipe and returns its journal, with "a" for the start of a, "a+" for its success,
    // "a-" for its failure, "a x" for its cancellation and "a #2" for its second attempt.
    static QString run(EventRecipeRunner& runner)
    {
        const QSignalSpy ends(&runner, &EventRecipeRunner::finished);
        runner.start();
        if (!QTest::qWaitFor([&] { return !runner.isRunning(); }))
            runner.cancel();
        QCoreApplication::processEvents(); // the answers that nobody waits for
        QString journal = runner.journal().join(", ");
        journal.remove(": started").replace(": succeeded", "+").replace(": failed", "-");
        journal.replace(": canceled", " x").replace(": attempt ", " #").replace(": skipped", " /");
        journal.remove(QRegularExpression("(, again #\\d+)+"));
        return journal + (ends.count() == 1 ? "" : ", not finished once");
    }

    void addRowsOfFailures()
    {
        QTest::newRow("empty groups")
            << EventRecipe("all", Sequence,
                           {{"a", Sequence, {}},
                            {"b", Parallel, {}},
                            EventRecipe("c", Parallel, {}).withPolicy(Policy::StopOnSuccess)})
            << "all, a, a+, b, b+, c, c-, all-";
        QTest::newRow("a failure in a branch")
            << EventRecipe(
                   "all", Parallel,
                   {{"a", Sequence, {m_heat, step("next", ".")}}, m_silent, m_grind, m_open})
                   .withMaximumRunning(3)
            << "all, a, heat, silent, grind, heat+, next, grind- (WrongAnswer), silent x, "
               "next x, a x, all-";
        QTest::newRow("a failure before the next branch begins")
            << EventRecipe("all", Parallel,
                           {m_heat, {"a", Sequence, {step("b", "BB"), m_open}}, m_open})
            << "all, heat, a, b, b #2, b- (WrongAnswer), a-, heat x, all-";
        QTest::newRow("failures that do not stop")
            << EventRecipe("all", Sequence, {step("none", "--"), m_heat, m_grind})
                   .withPolicy(Policy::ContinueOnError)
            << "all, none, none #2, none- (Timeout), heat, heat+, grind, grind- (WrongAnswer), "
               "all-";
        QTest::newRow("the first that succeeds")
            << EventRecipe("all", Parallel, {m_grind, m_heat, m_silent, m_open})
                   .withMaximumRunning(2)
                   .withPolicy(Policy::StopOnSuccess)
            << "all, grind, heat, grind- (WrongAnswer), silent, heat+, silent x, all+";
    }
    void addRowsOfLimits()
    {
        const auto answering = [](Setup answer) { return [=] { return answer; }; };
        QTest::newRow("time limits and a late answer")
            << EventRecipe("all", Sequence,
                           {{"a", Parallel, {m_silent}, 1ms},
                            {"b", Sequence, {step("late", "G"), m_heat}},
                            m_silent},
                           50ms)
                   .withPolicy(Policy::ContinueOnError)
            << "all, a, silent, silent x, a- (Timeout), b, late, late+, heat, heat+, b+, silent, "
               "silent x, all- (Timeout)";
        QTest::newRow("a step without end and an answer inside it")
            << EventRecipe("all", Sequence,
                           {{"again", {m_device.steps("again", QString(20000, 'B')), 0, 1h}}}, 9ms)
            << "all, again, again x, all- (Timeout)";
        QTest::newRow("groups that do not run")
            << EventRecipe("all", Sequence,
                           {EventRecipe("a", Sequence, {m_heat}).withSetup(answering(Setup::Skip)),
                            EventRecipe("b", Sequence, {m_heat}).withSetup(answering(Setup::Fail)),
                            m_open})
                   .withPolicy(Policy::ContinueOnError)
            << "all, a, a /, b, b- (FailedByCaller), open, open+, all-";
    }

    EventRecipe step(const QString& name, const QString& answers)
    {
        return m_device.step(name, answers);
    }

    using Policy = EventRecipe::Policy;
    using Setup = EventRecipe::Setup;
    static constexpr auto Sequence = EventRecipe::Sequence;
    static constexpr auto Parallel = EventRecipe::Parallel;

    Device m_device;
    EventRecipe m_open = step("open", "G");
    EventRecipe m_heat = step("heat", "g");
    EventRecipe m_grind = step("grind", "b");
    EventRecipe m_silent = step("silent", ".");

private Q_SLOTS:
    void coffee()
    {
        const EventSteps open = m_device.steps("open", "g");
        const EventSteps heat = m_device.steps("heat", "g");
        const EventSteps grind = m_device.steps("grind", "+");
        const EventSteps brew = m_device.steps("brew", "bBg");
        const EventRecipe coffee{"coffee",
                                 EventRecipe::Sequence,
                                 {{"open valve", {open, 1, 500ms}},
                                  {"prepare",
                                   EventRecipe::Parallel,
                                   {{"heat", {heat, 1, 20s}}, {"grind", {grind, 1, 10s}}},
                                   25s},
                                  {"brew", {brew, 3, 1500ms, {100ms, 2, 400ms}}}}};
        EventRecipeRunner runner(coffee);
        QStringList story;
        connect(&runner, &EventRecipeRunner::progressChanged, this, [&] {
            const EventRecipeRunner::Progress now = runner.progress();
            story << QString("%1/%2").arg(now.endedSteps).arg(now.stepCount);
            for (const EventRecipeRunner::RunningStep& step : now.runningSteps)
                story.last() += QString(" %1#%2").arg(step.name).arg(step.attempt);
        });
        QCOMPARE(run(runner),
                 "coffee, open valve, open valve+, prepare, heat, grind, grind+, heat+, "
                 "prepare+, brew, brew #2, brew #3, brew+, coffee+");
        QCOMPARE(story.join(", "), "0/4 open valve#1, 2/4 heat#1, 3/4 brew#1, "
                                   "3/4 brew#2, 3/4 brew#3, 4/4");
    }

    void recipes_data()
    {
        QTest::addColumn<EventRecipe>("recipe");
        QTest::addColumn<QString>("journal");
        addRowsOfFailures();
        addRowsOfLimits();
    }
    void recipes()
    {
        QFETCH(EventRecipe, recipe);
        QFETCH(QString, journal);
        EventRecipeRunner runner(recipe);
        QCOMPARE(run(runner), journal);
        QCOMPARE(run(runner), journal); // with callables that have not counted yet
    }

    void callables_data()
    {
        QTest::addColumn<QString>("when, action, story");
        const char* const rows[] = {
            "|none|open open? heat grind heat? grind? both=S all=S S",
            "setup all|cancel|C",
            "connect open|cancel|all=C C",
            "open|cancel|open all=C C",
            "setup both|cancel|open open? all=C C",
            "progress|cancel|open open? heat grind both=C all=C C",
            "heat?|cancel|open open? heat grind heat? both=C all=C C",
            "both=S|cancel|open open? heat grind heat? grind? both=S all=C C",
            "all=S|cancel|open open? heat grind heat? grind? both=S all=S S",
            "heat|cancel, await|open open? heat both=C all=C C",
            "setup all|destroy|",
            "connect open|destroy|",
            "open|destroy|open",
            "progress|destroy|open open? heat grind",
            "heat?|destroy|open open? heat grind heat?",
            "both=S|destroy|open open? heat grind heat? grind? both=S",
            "S|destroy|open open? heat grind heat? grind? both=S all=S S",
            "setup all|throw|F",
            "connect open|throw|all=F F",
            "open|throw|open all=F F",
            "heat?|throw|open open? heat grind heat? both=F all=F F",
            "both=S|throw|open open? heat grind heat? grind? both=S all=F F",
            "heat|await|open open? heat grind grind? heat? both=S all=S S",
            "S|start, cancel|open open? heat grind heat? grind? both=S all=S S C"};
        for (const char* const row : rows)
            QTest::newRow(row) << row;
    }
    void callables()
    {
        const QStringList row = QString(QTest::currentDataTag()).split('|');
        Device device;
        const EventRecipe both("both", EventRecipe::Parallel,
                               {device.step("heat", "g"), device.step("grind", "g")});
        auto* const runner = new EventRecipeRunner(device.logged(EventRecipe(
            "all", EventRecipe::Sequence, {device.step("open", "G"), device.logged(both)})));
        const QPointer<EventRecipeRunner> alive(runner);
        connect(runner, &EventRecipeRunner::finished, this,
                [&](EventRecipe::Result result) { device.add(Device::letter(result)); });
        connect(runner, &EventRecipeRunner::progressChanged, this, [&] { device.add("progress"); });
        device.when = row[0];
        device.then = [&] {
            if (row[1] == "destroy")
                return delete runner;
            if (row[1] == "throw")
                throw std::runtime_error("no device");
            if (row[1].startsWith("start"))
                runner->start();
            if (row[1].contains("cancel"))
                runner->cancel();
            if (row[1].endsWith("await"))
                QTRY_VERIFY(!runner->isRunning() || device.story.last() == "grind?");
        };
        runner->start();
        QTRY_VERIFY(!alive || !runner->isRunning());
        QCoreApplication::processEvents(); // the answers that nobody waits for
        QCOMPARE(device.story.join(' '), row[2]);
        if (row[1] == "throw")
            QCOMPARE(runner->failures().at(0).exception, "no device");
        delete alive;
    }

    void answersInsideTheTriggerTakeNoStack()
    {
        std::set<quintptr> depths;
        const EventSteps steps{[] {},
                               [&](EventGroupHandler* handler) {
                                   depths.insert(quintptr(&handler));
                                   handler->checkResult(true);
                                   return nullptr;
                               },
                               [](const QVariant&) { return true; }};
        const std::vector<EventRecipe> leaves(10000, {"leaf", {steps, 1, 1s}});
        const EventRecipe half("half", EventRecipe::Parallel, leaves);
        EventRecipeRunner runner(
            {"all", EventRecipe::Sequence, {{"half", EventRecipe::Sequence, leaves}, half}});
        int runs = 0;
        connect(&runner, &EventRecipeRunner::finished, this, [&] {
            if (++runs < 2)
                runner.start();
        });
        runner.start();
        QCOMPARE(runs, 2);
        QVERIFY(*depths.rbegin() - *depths.begin() < 10000);
        QCOMPARE(runner.journal().size(), 10000);
    }
};

QTEST_GUILESS_MAIN(TestEventRecipe)
#include "tst_eventrecipe.moc"
