#include "logging/log.h"
#include "logging/logmodules.h"
#include "support.h"
#include "support/rows.h"

#include <QtTest>

using support::EnvironmentGuard;

namespace
{

using Update = std::tuple<const char*, const char*, const char*, bool, bool>;

} // namespace

class TestLogModules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void predefinedModules()
    {
        const auto& registered = LogModule::registeredModulesConst();
        QCOMPARE(registered.size(), 51);
        for (int i = 0; i < registered.size(); ++i)
            QCOMPARE(registered[i]->id(), quint32(i));
        QCOMPARE(Log::Simulation.id(), 35U);
        QCOMPARE(Log::Database.debugEnvVarName(), "ZEL_DEBUG_DATABASE");
        QCOMPARE(Log::None.debugEnvVarName(), QString());
        QCOMPARE(LogModule(Log::None).debugEnvVarName(), "ZEL_DEBUG_NONE");
        QCOMPARE(LogModules::getEnvVars().first(), "ZEL_DEBUG_CONFIGURATION");
    }

    // A set stores ids above 63 in another way than smaller ones.
    void setsOfManyModules()
    {
        std::vector<std::unique_ptr<LogModule>> own;
        while (own.empty() || own.back()->id() < 70)
            own.push_back(std::make_unique<LogModule>("Own", false));
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
        support::addRows<Update>({
            {"1 adds", "0", "1", false, true},
            {"0 removes", "0", "0", true, false},
            {"a word adds nothing", "", "true", false, false},
            {"an empty value removes nothing", "", "", true, true},
            {"all overrides a single 0", "1", "0", false, true},
        });
    }
    void updateFromEnvVars()
    {
        const auto& [name, all, payment, before, after] = support::currentRow<Update>();
        const EnvironmentGuard allGuard("ZEL_DEBUG_ALL", all);
        const EnvironmentGuard paymentGuard("ZEL_DEBUG_PAYMENT", payment);
        LogModules set = before ? LogModules(Log::Payment) : LogModules();
        const QStringList added = set.updateFromEnvVars();
        QCOMPARE(set.contains(Log::Payment), after);
        QCOMPARE(added.contains("Payment"), after && !before);
        QVERIFY(!set.contains(Log::None));
        QCOMPARE(set.updateFromEnvVars(), QStringList());
    }

    // A module that is constructed after another one was destroyed may get the id of a third one.
    void modulesThatShareAnIdAreTreatedAlike()
    {
        auto gone = std::make_unique<LogModule>("Gone", true);
        const LogModule first("First", true);
        gone.reset();
        const LogModule second("Second", true);
        QCOMPARE(first, second);
        const EnvironmentGuard one("ZEL_DEBUG_FIRST", "1");
        const EnvironmentGuard other("ZEL_DEBUG_SECOND", "1");
        QCOMPARE(LogModules().updateFromEnvVars(), QStringList({"First", "Second"}));
    }
};

QTEST_GUILESS_MAIN(TestLogModules)
#include "tst_logmodules.moc"
