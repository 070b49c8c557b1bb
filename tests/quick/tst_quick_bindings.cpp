#include "quick/library.h"
#include "simulationinterface/tcpserversimulationinterface.h"
#include "statemachine/eventgrouphandler.h"
#include "system/datetimemanager.h"

#include "support.h"
#include "support/rows.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QTcpSocket>
#include <QtTest>

#include <memory>

using zeltools::quick::Library;

using DurationRow = std::tuple<const char*, double, const char*, const char*>;

class TestBindings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void objectsOfTheApplicationAreBindable()
    {
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(
            "import QtQml 2.15\nimport ZelTools 1.0\n"
            "QtObject {\n"
            "    property EventGroupHandler group\n"
            "    property SimulationInterface link\n"
            "    property DateTimeManager time\n"
            "    property string all: [group.running, group.step, group.stepCount,\n"
            "        group.failureReason === EventGroupHandler.Canceled,\n"
            "        link.connected, time.currentDateTime.getFullYear(),\n"
            "        time.timeZoneHelper.timeZone, time.timeZoneHelper.offsetMinutes].join()\n"
            "}\n",
            {});
        zeltools::system::DateTimeManager time;
        tools::EventGroupHandler group(1, std::chrono::seconds(5));
        zeltools::simulationinterface::TcpServerSimulationInterface link(
            zeltools::simulationinterface::SimulationInterfaceAddress("tcpserver/127.0.0.1/0"),
            nullptr);
        const std::unique_ptr<QObject> screen(component.createWithInitialProperties(
            {{"group", QVariant::fromValue(&group)},
             {"link", QVariant::fromValue<QObject*>(&link)},
             {"time", QVariant::fromValue<QObject*>(&time)}}));
        QVERIFY2(screen, qPrintable(component.errorString()));
        const QString now = QString(",%1,%2,%3")
                                .arg(QDate::currentDate().year())
                                .arg(time.timeZoneHelper()->currentTimeZone())
                                .arg(QDateTime::currentDateTime().offsetFromUtc() / 60);
        const auto all = [&] { return screen->property("all").toString(); };
        QCOMPARE(all(), "false,0,0,false,false" + now);
        const auto waits = [](tools::EventGroupHandler*) {
            return std::make_shared<QMetaObject::Connection>();
        };
        group.addEvent({[] {}, waits, [](const QVariant&) { return true; }});
        group.start();
        QTcpSocket simulator;
        const QStringList address = link.localAddress().split('/');
        simulator.connectToHost(address[1], address[2].toUShort());
        QTRY_COMPARE(all(), "true,1,1,false,true" + now);
        group.cancel();
        QCOMPARE(all(), "false,1,1,true,true" + now);
    }

    void durations_data()
    {
        support::addRows<DurationRow>({{"nothing", 999, "en", "0 s"},
                                       {"seconds", 59999, "en", "59 s"},
                                       {"a whole minute", 60000, "en", "1 min"},
                                       {"minutes", 200000, "en", "3 min 20 s"},
                                       {"hours", 125 * 60000, "en", "2 h 5 min"},
                                       {"days", 80 * 3600000, "en", "3 d 8 h"},
                                       {"other digits", 35000, "ar", "٣٥ ث"}});
    }
    void durations()
    {
        const auto& [name, milliseconds, language, text] = support::currentRow<DurationRow>();
        Library().setLanguage(language);
        QCOMPARE(Library().duration(milliseconds), QString(text));
    }

    void textsFollowTheLanguage()
    {
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import QtQml 2.15\nimport ZelTools 1.0\n"
                          "QtObject {\n"
                          "    property string language: Library.language\n"
                          "    property bool mirrored: Library.rightToLeft\n"
                          "    property string text: qsTranslate('Test', 'Time')\n"
                          "    property bool logs: Library.logManager !== null\n"
                          "}\n",
                          {});
        const std::unique_ptr<QObject> screen(component.create());
        QVERIFY2(screen, qPrintable(component.errorString()));
        QCOMPARE(screen->property("logs"), QVariant(false)); // There is no path layout.
        // A translation that cannot be read, and one that does not exist, are English.
        using Step = std::tuple<const char*, const char*, const char*, bool>;
        const std::vector<Step> steps{{"he", "he", "\u05e9\u05e2\u05d4", true},
                                      {"xx", "en", "Time", false},
                                      {"he", "he", "\u05e9\u05e2\u05d4", true},
                                      {"yy", "en", "Time", false}};
        for (const auto& [code, taken, text, isMirrored] : steps) {
            Library().setLanguage(code);
            QCOMPARE(screen->property("language"), QVariant(taken));
            QCOMPARE(screen->property("text"), QVariant(text));
            QCOMPARE(screen->property("mirrored"), QVariant(isMirrored));
        }
        QVERIFY(Library().languages().contains("he"));
        const support::EnvironmentGuard system("LANGUAGE", "yy:he:en");
        Library().setLanguage({});
        QCOMPARE(screen->property("mirrored"), QVariant(true));
    }
};

QTEST_GUILESS_MAIN(TestBindings)
#include "tst_quick_bindings.moc"
