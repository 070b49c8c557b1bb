#include "statemachine/eventgrouphandler.h"

#include <QtTest>

using tools::EventGroupHandler;

namespace
{

/// Answers each request as its script says: (g)ood or (b)ad, in capitals before the request has
/// returned, "-" not at all: then time passes.
class Device : public QObject
{
    Q_OBJECT

public:
    explicit Device(const QString& answers = {})
        : m_answers(answers)
    {
    }

    void request()
    {
        const QChar answer = m_answers.isEmpty() ? QChar('-') : m_answers[0];
        m_answers.remove(0, 1);
        if (answer.isUpper())
            Q_EMIT answered(answer == 'G');
        else if (answer == '-')
            QMetaObject::invokeMethod(
                timer, [this] { passTime(); }, Qt::QueuedConnection);
        else
            QMetaObject::invokeMethod(
                this, [this, answer] { Q_EMIT answered(answer == 'g'); }, Qt::QueuedConnection);
    }

    QTimer* timer = nullptr; // of the handler

Q_SIGNALS:
    void answered(const QVariant& result);

private:
    void passTime()
    {
        if (timer->isActive())
            timer->start(0);
    }

    QString m_answers;
};

/// A handler with its device, that notes what happens and then does what a test wants.
struct Group
{
    explicit Group(const QString& answers, unsigned int attempts = 2)
        : device(answers)
        , handler(new EventGroupHandler(attempts, std::chrono::seconds(60)))
    {
        device.timer = handler->findChild<QTimer*>();
        QObject::connect(handler, &EventGroupHandler::success, [this] { happens("success"); });
        QObject::connect(handler, &EventGroupHandler::failure, [this] { happens("failure"); });
    }
    ~Group() { delete handler; }
    Q_DISABLE_COPY(Group)

    tools::EventSteps steps(const QString& name)
    {
        tools::EventSteps steps;
        steps.trigger = [=] {
            happens(name);
            device.request();
        };
        steps.connect = [=](EventGroupHandler* receiver) {
            auto connection = std::make_shared<QMetaObject::Connection>();
            *connection = QObject::connect(
                &device, &Device::answered, receiver,
                [receiver, connection](const QVariant& result) { receiver->checkResult(result); });
            happens("connect " + name);
            return connection;
        };
        steps.check = [=](const QVariant& result) {
            happens(result.toBool() ? "good" : "bad");
            return result.toBool() && handler;
        };
        return steps;
    }
    void happens(const QString& event)
    {
        if (!event.startsWith("connect"))
            events.append(event);
        if (event == when) {
            when.clear();
            then();
        }
    }
    void add(const QString& names)
    {
        for (const QString& name : names.split(' ', Qt::SkipEmptyParts))
            handler->addEvent(steps(name));
    }
    QString story() const { return events.join(' '); }

    Device device;
    QPointer<EventGroupHandler> handler;
    QStringList events;
    QString when; // this happens for the first time,
    std::function<void()> then;
};

using Interference = std::function<void(Group&)>;

} // namespace

Q_DECLARE_METATYPE(Interference)

class TestEventGroupHandler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void groups_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<QString>("answers");
        QTest::addColumn<QString>("story");
        const auto row = [](const char* name, const char* names, const char* answers,
                            const char* story) {
            QTest::newRow(name) << names << answers << story;
        };
        row("an empty group succeeds", "", "", "success");
        row("one after another", "a b", "gg", "a good b good success");
        row("wrong answers spend the attempts", "a b", "bbg", "a bad a bad failure");
        row("each event has its own attempts", "a b", "bgbg", "a bad a good b bad b good success");
        row("no answer counts as a wrong one", "a b", "-gb-", "a a good b bad b failure");
        row("answers inside the request", "a b c", "GBGG", "a good b bad b good c good success");
        row("none of them left waiting", "a", "BB", "a bad a bad failure");
    }
    void groups()
    {
        QFETCH(QString, names);
        QFETCH(QString, answers);
        Group group(answers);
        group.add(names);
        group.handler->start();
        if (group.handler->isRunning())
            group.handler->start();
        QTRY_VERIFY(!group.handler->isRunning());
        QTEST(group.story(), "story");
        QVERIFY(!group.device.timer->isActive());
    }

    void callablesThatInterfere_data()
    {
        QTest::addColumn<QString>("answers");
        QTest::addColumn<QString>("when");
        QTest::addColumn<Interference>("interference");
        QTest::addColumn<QString>("story");
        const auto row = [](const char* what, const char* answers, const char* when,
                            Interference interference, const char* story) {
            QTest::addRow("%s at %s", what, when) << answers << when << interference << story;
        };
        const Interference destroy = [](Group& group) { delete group.handler; };
        row("destroyed", "gg", "connect a", destroy, "");
        row("destroyed", "gg", "a", destroy, "a");
        row("destroyed", "Gg", "good", destroy, "a good");
        row("destroyed", "bg", "bad", destroy, "a bad");
        row("destroyed", "gG", "success", destroy, "a good b good success");
        row("destroyed", "b-", "failure", destroy, "a bad a failure");
        const Interference fail = [](Group& group) { group.handler->failEvents(); };
        row("failed", "g", "connect a", fail, "failure");
        row("failed", "g", "a", fail, "a failure");
        row("failed", "g", "good", fail, "a good failure");
        const Interference clear = [](Group& group) { group.handler->clear(); };
        row("cleared", "gg", "connect a", clear, "a success");
        row("cleared", "-g", "a", clear, "a success");
        row("cleared", "gg", "good", clear, "a good success");
        const Interference replace = [](Group& group) {
            group.handler->clear();
            group.add("c");
        };
        row("replaced", "bg", "bad", replace, "a bad c good success");
        const Interference refill = [](Group& group) {
            group.add("c");
            group.handler->start();
        };
        row("refilled", "ggg", "a", refill, "a good b good c good success");
        row("refilled", "ggg", "success", refill, "a good b good success c good success");
        row("refilled", "GBBg", "failure", refill, "a good b bad b bad failure c good success");
    }
    void callablesThatInterfere()
    {
        QFETCH(QString, answers);
        QFETCH(QString, when);
        QFETCH(Interference, interference);
        Group group(answers);
        group.add("a b");
        group.when = when;
        group.then = [&] { interference(group); };
        group.handler->start();
        QTRY_VERIFY(!group.handler || !group.handler->isRunning());
        QCoreApplication::processEvents(); // the answers that nobody waits for
        QTEST(group.story(), "story");
    }

    void anAnswerAfterTheEndIsForNobody()
    {
        Group group("Bg", 1);
        group.add("a");
        group.handler->start();
        Q_EMIT group.device.answered(true);
        group.add("b");
        Q_EMIT group.device.answered(true); // the failure has left the connection
        QCOMPARE(group.story(), "a bad failure");
        group.handler->start();
        QTRY_COMPARE(group.story(), "a bad failure b good success");
    }

    void theTimerRunsForTheEventThatWaits()
    {
        Group group("G");
        group.add("a");
        group.handler->addEvent({{group.steps("b")}, 1, std::chrono::seconds::max()});
        group.handler->start();
        QCOMPARE(group.story(), "a good b");
        QCOMPARE(group.device.timer->interval(), 2147483000);
    }

    void twoHandlersShareTheConnectionSlot()
    {
        Group first("-g");
        Group second("g");
        first.add("a");
        second.add("a");
        first.handler->start();
        second.handler->start(); // cuts the first one's connection, which gets no answer then
        Q_EMIT first.device.answered(true);
        QCOMPARE(first.story(), "a");
        QTRY_COMPARE(first.story(), "a a good success");
    }

    void aMissingCallableThrows()
    {
        const auto throws = [](const std::function<void(EventGroupHandler::Event&)>& strip) {
            Group group("G");
            EventGroupHandler::Event event{group.steps("a"), 1, std::chrono::seconds::max()};
            strip(event);
            group.handler->addEvent(event);
            QVERIFY_EXCEPTION_THROWN(group.handler->start(), std::bad_function_call);
            group.handler->failEvents();
            QVERIFY(group.story().endsWith("failure"));
        };
        throws([](EventGroupHandler::Event& event) { event.connect = nullptr; });
        throws([](EventGroupHandler::Event& event) { event.trigger = nullptr; });
        throws([](EventGroupHandler::Event& event) { event.check = nullptr; });
    }
};

QTEST_GUILESS_MAIN(TestEventGroupHandler)
#include "tst_eventgrouphandler.moc"
