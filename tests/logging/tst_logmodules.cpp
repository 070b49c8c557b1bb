#include "logging/log.h"
#include "logging/logmodules.h"
#include "support.h"

#include <QtTest>

using support::EnvironmentGuard;

class TestLogModules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void predefinedModules()
    {
        const auto& registered = LogModule::registeredModulesConst();
        QVERIFY(registered.size() >= 51);
        for (int i = 0; i < registered.size(); ++i)
            QCOMPARE(registered[i]->id(), quint32(i));
        QCOMPARE(Log::None.id(), 0U);
        QCOMPARE(Log::Simulation.id(), 35U);
        QCOMPARE(Log::ComponentTest.id(), 50U);
        QCOMPARE(Log::EventSimulation.name(), QStringLiteral("EventsSimulation"));
    }

    void debugVariables()
    {
        QCOMPARE(Log::None.debugEnvVarName(), QString());
        QCOMPARE(LogModule(Log::None).debugEnvVarName(), QStringLiteral("ZEL_DEBUG_NONE"));
        QCOMPARE(Log::Database.debugEnvVarName(), QStringLiteral("ZEL_DEBUG_DATABASE"));
        const QStringList names = LogModules::getEnvVars();
        QCOMPARE(names.first(), QStringLiteral("ZEL_DEBUG_CONFIGURATION"));
        QVERIFY(!names.contains(QStringLiteral("ZEL_DEBUG_NONE")));
    }

    void aDestroyedModuleLeavesTheRegistry()
    {
        const int count = LogModule::registeredModulesConst().size();
        {
            const LogModule module(QStringLiteral("Gone"), true);
            QCOMPARE(LogModule(module), module);
            QCOMPARE(LogModule::registeredModulesConst().size(), count + 1);
        }
        QCOMPARE(LogModule::registeredModulesConst().size(), count);
    }

    // Ids above 63 are kept in another way than those below.
    void setsOfManyModules()
    {
        std::vector<std::unique_ptr<LogModule>> own;
        while (own.empty() || own.back()->id() < 70)
            own.push_back(std::make_unique<LogModule>(QStringLiteral("Own"), false));
        const LogModule& high = *own.back();

        LogModules set = Log::Payment | high;
        QVERIFY(set.contains(Log::Payment) && set.contains(high) && !set.contains(Log::CanBus));
        QVERIFY(!(set == high) && !(set == Log::Payment));
        QVERIFY(set.containsOneOf(high) && set.containsOneOf(Log::Payment | Log::CanBus));
        QVERIFY(!set.containsOneOf(LogModules()) && !LogModules().containsOneOf(set));
        const LogModules more = set | Log::CanBus;
        QVERIFY(more.contains(Log::CanBus) && !set.contains(Log::CanBus));
        set.remove(Log::Payment);
        QVERIFY(set == high);
        set.remove(high);
        QVERIFY(!set.containsOneOf(high) && LogModules(Log::None) == Log::None);
    }

    void updateFromEnvVars_data()
    {
        QTest::addColumn<QByteArray>("all");
        QTest::addColumn<QByteArray>("payment");
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("after");
        QTest::newRow("1 adds") << QByteArray("0") << QByteArray("1") << false << true;
        QTest::newRow("0 removes") << QByteArray("0") << QByteArray("0") << true << false;
        QTest::newRow("a word adds nothing")
            << QByteArray() << QByteArray("true") << false << false;
        QTest::newRow("nothing removes nothing") << QByteArray() << QByteArray() << true << true;
        QTest::newRow("all wins over a single 0")
            << QByteArray("1") << QByteArray("0") << false << true;
        QTest::newRow("all is exact") << QByteArray("01") << QByteArray("2") << false << false;
    }
    void updateFromEnvVars()
    {
        QFETCH(QByteArray, all);
        QFETCH(QByteArray, payment);
        QFETCH(bool, before);
        QFETCH(bool, after);
        const EnvironmentGuard allGuard("ZEL_DEBUG_ALL", all);
        const EnvironmentGuard paymentGuard("ZEL_DEBUG_PAYMENT", payment);
        LogModules set = before ? LogModules(Log::Payment) : LogModules();
        const QStringList added = set.updateFromEnvVars();
        QCOMPARE(set.contains(Log::Payment), after);
        QCOMPARE(added.contains(QStringLiteral("Payment")), after && !before);
        QVERIFY(!set.contains(Log::None));
        QCOMPARE(set.updateFromEnvVars(), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestLogModules)
#include "tst_logmodules.moc"
