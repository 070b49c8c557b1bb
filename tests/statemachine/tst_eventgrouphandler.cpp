#include "statemachine/eventgrouphandler.h"
#include "support.h"

#include <QtTest>

using tools::EventGroupHandler;
using namespace std::chrono_literals;

namespace
{

/// A handler, a simulated device and a record of both. Each letter is the answer to one request:
/// (g)ood or (b)ad, in capitals before the trigger has returned, "+" good inside `connect`, and "-"
/// none, so that the timeout follows.
class Group : public QObject
{
    Q_OBJECT

public:
    explicit Group(const QString& answers)
        : handler(new EventGroupHandler(2, std::chrono::seconds(60)))
        , timer(handler->findChild<QTimer*>())
        , m_answers(answers)
    {
        connect(handler, &EventGroupHandler::runningChanged, this, [this, group = handler.data()] {
            if (group->isRunning())
                add("listen");
        });
        connect(handler, &EventGroupHandler::success, this, [this] { add("success"); });
        connect(handler, &EventGroupHandler::failure, this, [this] { add("failure"); });
        connect(handler, &EventGroupHandler::canceled, this, [this] { add("canceled"); });
    }
    ~Group() override { delete handler; }

    tools::EventSteps steps(const QString& name)
    {
        return {[=] {
                    add(name);
                    answer();
                },
                [=](EventGroupHandler* receiver) {
                    listener = std::make_shared<QMetaObject::Connection>(
                        connect(this, &Group::answered, receiver, &EventGroupHandler::checkResult));
                    add("listen " + name);
                    if (m_answers.startsWith('+'))
                        answer();
                    return listener;
                },
                [=](const QVariant& result) {
                    add(result.toBool() ? "good" : "bad");
                    return result.toBool() && handler;
                }};
    }
    void add(const QString& event)
    {
        if (!event.startsWith("listen"))
            story += (story.isEmpty() ? "" : " ") + event;
        if (event == when && then)
            std::exchange(then, nullptr)();
    }
    bool isAtWork() const
    {
        const EventGroupHandler* const group = handler;
        return group != nullptr && (group->isRunning() || timer->isActive());
    }

    QPointer<EventGroupHandler> handler;
    QTimer* timer;
    QString story;
    QString when; // The event after which then() is called once.
    std::function<void()> then;
    std::shared_ptr<QMetaObject::Connection> listener;

Q_SIGNALS:
    void answered(const QVariant& result);

private:
    void answer()
    {
        const QString how = m_answers.left(1);
        m_answers.remove(0, 1);
        const auto reply = [=] {
            if (how != "-" && !how.isEmpty())
                Q_EMIT answered(how.toLower() != "b");
            else if (handler && timer->isActive())
                timer->start(0);
        };
        const bool isDirect = how == "G" || how == "B" || how == "+";
        QMetaObject::invokeMethod(this, reply,
                                  isDirect ? Qt::DirectConnection : Qt::QueuedConnection);
    }

    QString m_answers;
};

} // namespace

class TestEventGroupHandler : public QObject
{
    Q_OBJECT

private:
    static void act(Group& group, const QString& action)
    {
        if (action == "destroy")
            return delete group.handler;
        if (action == "throw")
            throw std::runtime_error("no device");
        if (action == "fail")
            return group.handler->failEvents();
        if (action == "cancel, destroy") {
            group.when = "canceled";
            group.then = [&] { delete group.handler; };
        }
        if (action.startsWith("cancel") || action == "restart")
            group.handler->cancel();
        if (action.startsWith("cancel"))
            return;
        if (action == "clear" || action == "replace")
            group.handler->clear();
        if (action != "clear")
            group.handler->addEvent(group.steps("c"));
        if (action == "answer") // to nobody
            return Q_EMIT group.answered(true);
        group.handler->start(); // does nothing while the group runs
        tools::EventGroupHandler& handler = *group.handler;
        if (action == "await")
            QTRY_VERIFY(!handler.isRunning());
    }

private Q_SLOTS:
    void groups_data()
    {
        QTest::addColumn<QString>("answers, action, when, story");
        for (const char* row : {"bgbg|none||a bad a good b bad b good success",
                                "-gb-|none||a a good b bad b failure|Timeout@2",
                                "GBG|none||a good b bad b good success",
                                "B+g|none||a bad good b good success",
                                "gg|throw|listen a|good b good success",
                                "g|throw|a|a good b good success",
                                "Gg|throw|good|a good good b good success",
                                "BB|answer|failure|a bad a bad failure|WrongAnswer@1",
                                "gg|destroy|listen a|",
                                "gg|destroy|a|a",
                                "Gg|destroy|good|a good",
                                "gG|destroy|success|a good b good success",
                                "b-|destroy|failure|a bad a failure",
                                "g|fail|listen a|failure|FailedByCaller@1",
                                "g|fail|a|a failure|FailedByCaller@1",
                                "g|fail|good|a good failure|FailedByCaller@1",
                                "gg|clear|listen a|a success",
                                "-g|clear|a|a success",
                                "gg|clear|good|a good success",
                                "bg|replace|bad|a bad c good success",
                                "ggg|refill|a|a good b good c good success",
                                "ggg|await|success|a good b good success c good success",
                                "GBBg|refill|failure|a good b bad b bad failure c good success",
                                "gg|cancel|listen|canceled|Canceled@0",
                                "gg|fail|listen|failure|FailedByCaller@0",
                                "g|restart|listen|canceled c good success",
                                "gg|cancel|listen a|canceled|Canceled@1",
                                "Gg|cancel|a|a canceled|Canceled@1",
                                "bg|cancel|bad|a bad canceled|Canceled@1",
                                "b-|cancel|failure|a bad a failure|Timeout@1",
                                "gg|restart|listen a|canceled c good success",
                                "gbg|restart|good|a good canceled c bad c good success",
                                "gg|cancel, destroy|a|a canceled"})
            QTest::newRow(row) << row;
    }
    void groups()
    {
        const QStringList row = QString(QTest::currentDataTag()).split('|');
        const QString& action = row[1];
        Group group(row[0]);
        group.when = row[2];
        group.then = [&] { act(group, action); };
        group.handler->addEvent(group.steps("a"));
        group.handler->addEvent(group.steps("b"));
        try {
            group.handler->start();
        } catch (const std::runtime_error&) {
            Q_EMIT group.answered(true);
        }
        QTRY_VERIFY(!group.isAtWork());
        QCoreApplication::processEvents(); // the answers that nobody waits for
        QCOMPARE(group.story, row[3]);
        if (!group.handler)
            return;
        const EventGroupHandler::Failure failure = group.handler->lastFailure();
        const QString reason = QVariant::fromValue(failure.reason).toString();
        QCOMPARE(QString("%1@%2").arg(reason).arg(failure.step), row.value(4, "None@0"));
    }

    void aHandlerCutsTheConnectionOfAnother()
    {
        Group first("G-g");
        Group second("g");
        first.handler->addEvent(first.steps("a"));
        first.handler->addEvent({first.steps("b"), 2, std::chrono::seconds::max()});
        first.handler->start();
        QCOMPARE(first.timer->interval(), 2147483000);
        second.handler->addEvent(second.steps("a"));
        second.handler->start();
        Q_EMIT first.answered(true); // nobody listens
        QTRY_COMPARE(first.story, "a good b b good success");
    }

    void handlersKeepConnectionsOfTheirOwn()
    {
        Group first("G-");
        Group second("gg");
        for (Group* const group : {&first, &second}) {
            EventGroupHandler* const handler = group->handler;
            QVERIFY(handler != nullptr);
            handler->setConnectionScope(EventGroupHandler::ConnectionScope::Handler);
            handler->addEvent(group->steps("a"));
            handler->addEvent(group->steps("b"));
            handler->start();
        }
        QVERIFY(*first.listener && *second.listener);
        first.handler->cancel();
        QVERIFY(!*first.listener);
        QTRY_COMPARE(second.story, "a good b good success");
    }

    void pausesGrow()
    {
        EventGroupHandler handler(1, 2500ms);
        auto* const timer = handler.findChild<QTimer*>();
        QString story;
        connect(&handler, &EventGroupHandler::progressChanged, this, [&] {
            const EventGroupHandler::Progress now = handler.progress();
            story += QString("%1/%2#%3 ").arg(now.step).arg(now.stepCount).arg(now.attempt);
        });
        const tools::EventSteps steps{[] {}, [](auto*) { return nullptr; },
                                      [](const QVariant& answer) { return answer.toBool(); }};
        handler.addEvent(steps);
        handler.addEvent({steps, 4, 1500ms, {100ms, 2, 250ms}});
        handler.start();
        for (const bool answer : {true, false, false, false}) {
            story += QString("%1 ").arg(timer->interval());
            handler.checkResult(answer);
            if (answer)
                continue;
            story += QString("pause %1 ").arg(timer->interval());
            const QString paused = story;
            handler.checkResult(true); // too late
            timer->start(0);
            QTRY_VERIFY(story != paused);
        }
        handler.checkResult(false);
        QCOMPARE(story, "1/2#1 2500 2/2#1 1500 pause 100 2/2#2 1500 pause 200 2/2#3 1500 pause 250 "
                        "2/2#4 ");
        QVERIFY(!handler.isRunning());
        const auto longest = std::chrono::milliseconds::max();
        QCOMPARE((tools::BackOff{1ms, 2, longest}.pauseAfter(~0U)), longest);
    }

    void answersInsideTheTriggerTakeNoStack()
    {
        constexpr int count = 50000;
        EventGroupHandler handler(1, std::chrono::seconds(60));
        const QSignalSpy ends(&handler, &EventGroupHandler::success);
        const auto listen = [](auto*) { return std::make_shared<QMetaObject::Connection>(); };
        for (int i = 1; i < count; ++i)
            handler.addEvent({[&] { handler.checkResult(0); }, listen, [](auto) { return true; }});
        handler.addEvent({[&, i = 0]() mutable { handler.checkResult(++i); }, listen,
                          [](const QVariant& answer) { return answer == count; }, count,
                          std::chrono::seconds(60)});
        handler.start();
        QCOMPARE(ends.count(), 1);
    }
};

QTEST_GUILESS_MAIN(TestEventGroupHandler)
#include "tst_eventgrouphandler.moc"
