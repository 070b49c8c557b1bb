#include "declarativestatemachine/scxmlreader.h"
#include "declarativestatemachine/scxmlwriter.h"
#include "signalemitter.h"
#include "support/descriptionlines.h"
#include "support/descriptions.h"

#include <QtTest>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using namespace support;
using zeltools::SignalEmitter;

namespace
{

/// Binds the events of two objects, and every condition but "no".
class Host
{
public:
    SignalEmitter first, second;
    QStringList conditions;
    QString error;

    std::optional<StateMachineDescription> read(const QByteArray& document)
    {
        const QHash<QString, ExpectedSignal> signalsOf{
            {"zeltools.SignalEmitter.notify", {&first, SIGNAL(notify())}},
            {"zeltools.SignalEmitter.notify_", {&second, SIGNAL(notify())}},
            {"zeltools.SignalEmitter.objectNameChanged",
             {&first, SIGNAL(objectNameChanged(QString))}},
            {"a", {&first, SIGNAL(notify())}},
            {"a.b", {&first, SIGNAL(notify())}},
            {"lost", {&first, SIGNAL(lost())}}};
        conditions.clear();
        return fromScxml(document,
                         {[&](const QString& event) { return signalsOf.value(event); },
                          [&](const QString& condition) {
                              conditions.append(condition);
                              return condition == "no" ? std::function<bool()>()
                                                       : [] { return true; };
                          }},
                         error);
    }
};

QByteArray documentOf(const QByteArray& content, const QByteArray& attributes = "version='1.0'")
{
    return "<scxml xmlns='http://www.w3.org/2005/07/scxml' xmlns:zel='urn:zeltools:statemachine' " +
           attributes + ">\n" + content + "\n</scxml>\n";
}

} // namespace

class TestScxml : public QObject
{
    Q_OBJECT

private:
    static void refuse(const QByteArray& document, const char* error)
    {
        QTest::newRow(error) << document << QString(error);
    }
    static void refuseDocuments()
    {
        const auto row = [](const QByteArray& content, const char* error) {
            refuse(documentOf(content), error);
        };
        refuse({}, "line 1: Premature end of document.");
        refuse("\xff", "line 1: the document is not UTF-8 without a byte order mark");
        refuse(QByteArray(17 << 20, ' '), "line 1: the document is larger than 16 MiB");
        refuse("<!DOCTYPE scxml [<!ENTITY a 'b'>]>" + documentOf("<state id='&a;'/>"),
               "line 1: document types and entities are not supported");
        refuse(documentOf("<state id='A'/>").chopped(5), "line 3: Premature end of document.");
        refuse(documentOf("", "a" + QByteArray("='").repeated(101)),
               "line 1: an element has more than 100 attributes");
        refuse(documentOf(QByteArray("<a xmlns=''/>").repeated(99)),
               "line 1: there are more than 100 declarations of namespaces");
        refuse(documentOf("<state id='A'/>", "version='1.0' initial='B'"),
               "line 1: the initial state \"B\" is not a child");
        row("", "line 1: there is no state that can be entered");
        row("<script/>", "line 2: <script> is not supported here");
        row("<final id='A'/><state id='B'><state id='C'/></state>\n<history id='H'/>",
            "line 3: <history> is not supported here");
        row("<state id='A'/><state id='B'/>", "line 1: the machine has no <final> to end with");
        row("<state id='A'/>\n<final id='A'/>", "line 3: two states have the id \"A\"");
    }
    static void refuseStates()
    {
        const auto inA = [](const QByteArray& content, const char* error) {
            refuse(documentOf("<state id='A'>\n" + content + "</state>"), error);
        };
        const QByteArray takes = "<transition event='t' target='A'/>";
        const QByteArray sends = "<onentry><send event='t' id='t' delay='1ms'/></onentry>";
        inA("<invoke/>", "line 3: <invoke> is not supported here");
        inA("<q:x xmlns:q='q'/>", "line 3: <q:x> is not supported here");
        inA("go", "line 3: text is not supported");
        inA("<state/>", "line 3: the attribute id is missing");
        inA("<state id='B' src=''/>", "line 3: the attribute src is not supported here");
        inA("<history id='B'/>", "line 2: there is no state that can be entered");
        inA("<state id='B'/><history id='H'><transition event='a' target='B'/></history>",
            "line 3: a history has one transition, with only a target");
        inA("<state id='B'/><history id='H'/><transition event='a' target='H'/>",
            "line 3: the transition leaves the parent of the history \"H\" itself");
        inA("<transition event='a' target='A B'/>", "line 3: \"A B\" is not the id of one state");
        inA("<transition event='a.*'/>", "line 3: \"a.*\" is not the name of one event");
        inA("<transition event='a b'/>", "line 3: \"a b\" is not the name of one event");
        inA("<transition event='a' type='internal'/>",
            "line 3: type=\"internal\" is not supported");
        inA("<transition event='lost'/>", "line 3: no signal is bound to the event \"lost\"");
        inA("<transition event='a' cond='no'/>",
            "line 3: no guard is bound to the condition \"no\"");
        inA("<transition event='a'/>\n<transition event='a.b'/>",
            "line 4: transitions on a part of \"a.b\" take it, too");
        inA("<transition/>", "line 3: a transition without an event would be tried more than once; "
                             "<raise> one in <onentry>");
        inA("<state id='B' zel:name='A'/><transition event='a' target='A'/>",
            "line 3: \"A\" is also the name of a later state");
        inA("<onentry><send event='t' id='t' delay='1m'/></onentry>",
            "line 3: \"1m\" is not a time such as 1500ms or 1.5s");
        inA(sends + takes, "line 3: <onexit> does not cancel \"t\" alone");
        const QByteArray waits = sends + "<onexit><cancel sendid='t'/></onexit>\n";
        inA(waits, "line 3: no transition of the state takes \"t\"");
        inA(waits + takes + takes, "line 4: another state or transition has the event \"t\"");
        inA(waits + "<state id='B'>" + takes + "</state>" + takes,
            "line 4: another state or transition has the event \"t\"");
        inA(waits + sends + takes, "line 4: the event \"t\" is sent twice");
        inA(waits + takes + QByteArray(waits + takes).replace("'t'", "'u'"),
            "line 2: the state has several <send>, but none of their transitions has a condition");
        inA("<onexit><cancel sendid='x'/></onexit>", "line 2: the state does not send \"x\"");
    }

private Q_SLOTS:
    void everythingComesBack()
    {
        Host host;
        const auto yes = [] { return true; };
        Transition beep = targetless(guarded(Transition::after(0ms, {}), yes));
        beep.description = "<beep>\n\t&";
        Transition check = Transition::inside(&host.first, SIGNAL(objectNameChanged(QString)), {});
        check.argumentsGuard = [](const QVariantList&) { return true; };
        State grind{"Grind \"fine\"", {}, {Transition::after(2ms, "Pump\n2")}};
        grind.timeLimit = 5s;
        const State left = around(
            "Left",
            {{"1.a", {}, {Transition::direct("1_a")}}, {"1_a"}, kindOf(State::ShallowHistory, "")});
        const State right = around("Right", {{"R"}, kindOf(State::Final, "End")});
        const StateMachineDescription machine{
            {{"Idle",
              {},
              {Transition::on(&host.first, SIGNAL(notify()), "Brew", yes),
               Transition::on(&host.second, SIGNAL(notify()), "Back"), check}},
             around("Brew",
                    {kindOf(State::DeepHistory, "Back", {Transition::direct("Pump\n2")}), grind,
                     kindOf(State::Parallel, "Pump\n2", {}, {left, right})},
                    {guarded(Transition::direct("Grind \"fine\""), yes), beep,
                     Transition::direct("Idle"), Transition::after(1500ms, "Idle")}),
             {"Twin", {}, {Transition::direct("Twin")}},
             kindOf(State::Final, "Twin"),
             {"Done"}},
            "Rinse & go"};
        const QString text = toScxml(machine, ScxmlExtensions::Written);
        const auto read = host.read(text.toUtf8());
        QVERIFY2(read, qPrintable(host.error + text));
        QCOMPARE(support::linesOf(*read).join('\n'), support::linesOf(machine).join('\n'));
        QCOMPARE(host.conditions, QStringList({"guard1", "guard2", "guard3", "guard4"}));
    }

    void thousandsOfStates()
    {
        Host host;
        StateMachineDescription machine;
        for (int i = 0; i < 10000; ++i)
            machine.states.push_back({"A", {}, {Transition::direct("A")}});
        auto read = host.read(toScxml(machine).toUtf8());
        QVERIFY2(read, qPrintable(host.error));
        QCOMPARE(read->states.back().name, QString("A_9999"));
        State nested{"A"};
        for (int i = 1; i < 64; ++i)
            nested = around("A", {nested});
        QVERIFY(host.read(toScxml({{nested}}).toUtf8()));
        read = host.read(toScxml({{around("A", {nested})}}).toUtf8());
        QVERIFY(!read);
        QCOMPARE(host.error, QString("line 67: there are more than 64 levels of states"));
    }

    void documentsOfOthers_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("lines");
        QTest::newRow("the initial and the final state are elsewhere")
            << documentOf("<final id='F'/><state id='A'><initial><transition target='C'/></initial>"
                          "<history id='H'/><state id='B'/><state id='C'/></state><state id='S'/>",
                          "version='1.0' initial='S'")
            << "\nS in -1, kind 0, limit 0\nA in -1, kind 0, limit 0\nC in 1, kind 0, limit 0\n"
               "H in 1, kind 2, limit 0\nB in 1, kind 0, limit 0\nF in -1, kind 4, limit 0";
        QTest::newRow("an editor's marks, and seconds")
            << documentOf("<?go on?><!-- = '' --><state id='A' qt:x='' xmlns:qt='"
                          "http://www.qt.io/2015/02/scxml-ext'><qt:editorinfo a='1'><b/>"
                          "</qt:editorinfo><onentry><send event='t' id='i' delay='.25s'/></onentry>"
                          "<onexit><cancel sendid='i'/></onexit><transition type='external' "
                          "event='t' target='A'/></state>")
            << "\nA in -1, kind 0, limit 0\n"
               "  A to 0 (0), type 1 , 250 ms, label , guard 0";
    }
    void documentsOfOthers()
    {
        QFETCH(QByteArray, document);
        QFETCH(QString, lines);
        Host host;
        const auto read = host.read(document);
        QVERIFY2(read, qPrintable(host.error));
        QCOMPARE(support::linesOf(*read).join('\n'), lines);
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("error");
        refuseDocuments();
        refuseStates();
    }
    void refusals()
    {
        QFETCH(QByteArray, document);
        QFETCH(QString, error);
        Host host;
        QVERIFY(!host.read(document));
        QCOMPARE(host.error, error);
    }
};

QTEST_GUILESS_MAIN(TestScxml)
#include "tst_scxml.moc"
