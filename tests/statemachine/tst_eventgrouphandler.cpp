#include "statemachine/eventgrouphandler.h"

#include <QtTest>

using tools::EventGroupHandler;

namespace
{

/// A handler and its device, which answers each request as told: (g)ood or (b)ad, in capitals
/// before the request has returned, "-" not at all: then time passes. What happens is noted.
class Group : public QObject
{
    Q_OBJECT

public:
    explicit Group(const QString& answers, unsigned int attempts = 2)
        : handler(new EventGroupHandler(attempts, std::chrono::seconds(60)))
        , timer(handler->findChild<QTimer*>())
        , m_answers(answers)
    {
        connect(handler, &EventGroupHandler::success, this, [this] { happens("success"); });
        connect(handler, &EventGroupHandler::failure, this, [this] { happens("failure"); });
    }
    ~Group() override { delete handler; }

    tools::EventSteps steps(const QString& name)
    {
        return {[=] {
                    happens(name);
                    answer();
                },
                [=](EventGroupHandler* receiver) {
                    m_listener = std::make_shared<QMetaObject::Connection>(
                        connect(this, &Group::answered, receiver, &EventGroupHandler::checkResult));
                    happens("listen " + name);
                    return m_listener;
                },
                [=](const QVariant& result) {
                    happens(result.toBool() ? "good" : "bad");
                    return result.toBool() && handler;
                }};
    }
    void happens(const QString& event)
    {
        if (!event.startsWith("listen"))
            events.append(event);
        if (event == when && then)
            std::exchange(then, nullptr)();
    }
    bool isAtWork() const
    {
        const EventGroupHandler* const alive = handler;
        return alive != nullptr && (alive->isRunning() || timer->isActive());
    }
    QString story() const { return events.join(' '); }

    QPointer<EventGroupHandler> handler;
    QTimer* timer;
    QStringList events;
    QString when; // this happens the first time,
    std::function<void()> then;

Q_SIGNALS:
    void answered(const QVariant& result);

private:
    void answer()
    {
        const QChar how = m_answers.isEmpty() ? QChar('-') : m_answers[0];
        m_answers.remove(0, 1);
        const auto reply = [=] {
            if (how != '-')
                Q_EMIT answered(how.toLower() == 'g');
            else if (handler && timer->isActive())
                timer->start(0);
        };
        const auto type = how.isUpper() ? Qt::DirectConnection : Qt::QueuedConnection;
        QMetaObject::invokeMethod(this, reply, type);
    }

    QString m_answers;
    std::shared_ptr<QMetaObject::Connection> m_listener;
};

} // namespace

class TestEventGroupHandler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void groups_data()
    {
        QTest::addColumn<QString>("answers, action, when, story");
        for (const char* row : {"gg|none||a good b good success",
                                "bbg|none||a bad a bad failure",
                                "bgbg|none||a bad a good b bad b good success",
                                "-gb-|none||a a good b bad b failure",
                                "GBG|none||a good b bad b good success",
                                "BB|none||a bad a bad failure",
                                "gg|destroy|listen a|",
                                "gg|destroy|a|a",
                                "Gg|destroy|good|a good",
                                "gG|destroy|success|a good b good success",
                                "b-|destroy|failure|a bad a failure",
                                "g|fail|listen a|failure",
                                "g|fail|a|a failure",
                                "g|fail|good|a good failure",
                                "gg|clear|listen a|a success",
                                "-g|clear|a|a success",
                                "gg|clear|good|a good success",
                                "bg|replace|bad|a bad c good success",
                                "ggg|refill|a|a good b good c good success",
                                "ggg|refill|success|a good b good success c good success",
                                "GBBg|refill|failure|a good b bad b bad failure c good success"})
            QTest::newRow(row) << row;
    }
    void groups()
    {
        const QStringList row = QString(QTest::currentDataTag()).split('|');
        const QString& action = row[1];
        Group group(row[0]);
        group.when = row[2];
        group.then = [&] {
            if (action == "destroy")
                return delete group.handler;
            if (action == "fail")
                return group.handler->failEvents();
            if (action != "refill")
                group.handler->clear();
            if (action != "clear")
                group.handler->addEvent(group.steps("c"));
            group.handler->start(); // does nothing while the group runs
        };
        group.handler->addEvent(group.steps("a"));
        group.handler->addEvent(group.steps("b"));
        group.handler->start();
        QTRY_VERIFY(!group.isAtWork());
        QCoreApplication::processEvents(); // the answers that nobody waits for
        QCOMPARE(group.story(), row[3]);
    }

    void anAnswerAfterTheEndIsForNobody()
    {
        Group group("Bg", 1);
        group.handler->addEvent(group.steps("a"));
        group.handler->start();
        Q_EMIT group.answered(true); // the failure has left the connection
        group.handler->addEvent(group.steps("b"));
        Q_EMIT group.answered(true);
        QCOMPARE(group.story(), "a bad failure");
        group.handler->start();
        QTRY_COMPARE(group.story(), "a bad failure b good success");
    }

    // Each that fires cuts the other's connection, which gets no answer then.
    void twoHandlersShareTheConnectionSlot()
    {
        Group first("G-g");
        Group second("g");
        first.handler->addEvent(first.steps("a"));
        first.handler->addEvent({{first.steps("b")}, 2, std::chrono::seconds::max()});
        first.handler->start();
        QCOMPARE(first.timer->interval(), 2147483000); // that of b
        const tools::EventSteps steps = second.steps("a");
        second.handler->addEvent({steps.trigger, steps.connect, steps.check});
        second.handler->start();
        Q_EMIT first.answered(true);
        QCOMPARE(first.story(), "a good b");
        QTRY_COMPARE(first.story(), "a good b b good success");
    }

    void aMissingCallableThrows()
    {
        Group group("G");
        const auto [trigger, listen, check] = group.steps("a");
        for (const tools::EventSteps& steps : std::vector<tools::EventSteps>{
                 {{}, listen, check}, {trigger, {}, check}, {trigger, listen, {}}}) {
            group.handler->addEvent(steps);
            QVERIFY_EXCEPTION_THROWN(group.handler->start(), std::bad_function_call);
            group.handler->failEvents();
        }
        QCOMPARE(group.story(), "failure failure a failure");
    }
};

QTEST_GUILESS_MAIN(TestEventGroupHandler)
#include "tst_eventgrouphandler.moc"
