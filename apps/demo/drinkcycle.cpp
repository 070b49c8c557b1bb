#include "drinkcycle.h"

#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>

#include <thread>

namespace
{

const QString s_recipe = QStringLiteral("espresso");

void grind(int drink, LineTally& tally)
{
    for (int turn = 0; turn < 3; ++turn) {
        LogFormatter(LogLevel::Grinder).log(Log::GrinderRegulation).noquote()
            << "drink" << drink << "turn" << turn << "dose" << 7.0 + turn / 10.0 << "g"
            << tally.mark(LineKind::Grinder);
    }
    LogFormatter(LogLevel::Capsule).noquote()
        << "capsule drawer closed" << tally.mark(LineKind::Capsule);
}

void brew(int drink, LineTally& tally)
{
    LogFormatter(LogLevel::Info).log(Log::Beverage).noquote()
        << "Brewing" << s_recipe << "number" << drink << tally.mark(LineKind::Info);
    for (int millilitres = 10; millilitres <= 30; millilitres += 10) {
        LogFormatter(LogLevel::Debug).log(Log::Beverage).noquote()
            << "Flow" << millilitres << "ml at" << 92.5 << "degrees"
            << tally.mark(LineKind::DebugOn);
    }
    if (drink % 3 == 0) {
        LogFormatter(LogLevel::Warning).log(Log::Cleaning).noquote()
            << "Rinse due after" << drink << "drinks" << tally.mark(LineKind::Warning);
    }
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::DispensedDrinkEvent).noquote()
        << s_recipe << drink << tally.mark(LineKind::Event);
}

void pay(int drink, LineTally& tally)
{
    LogFormatter(LogLevel::Debug).log(Log::Payment | Log::CanBus).noquote()
        << "Bus frame" << drink << tally.mark(LineKind::DebugOff);
    qWarning("Coin validator answered late %s", qPrintable(tally.mark(LineKind::QtMessage)));
    if (drink % 4 == 0) {
        LogFormatter(LogLevel::Error).log(Log::Payment).noquote()
            << "Card reader gives no answer" << tally.mark(LineKind::Error);
        LogFormatter(LogLevel::Critical).log(Log::Payment).noquote()
            << "Change is used up" << tally.mark(LineKind::Critical);
    }
}

void actuate(int drink, LineTally& tally)
{
    LogFormatter(LogLevel::M4).noquote()
        << "valve" << drink % 4 << tally.mark(LineKind::M4ActuatorBoard);
    if (drink % 5 == 0) {
        LogFormatter(LogLevel::Error).log(Log::Failure).noquote()
            << "Pump pressure low" << tally.mark(LineKind::Failure);
        LogFormatter(LogLevel::Event).logEvent(LogEventModule::WarningEvent).noquote()
            << "Pump pressure low" << tally.mark(LineKind::Event);
    }
}

} // namespace

void makeDrink(int number, LineTally& tally)
{
    std::thread threads[]{
        std::thread(grind, number, std::ref(tally)), std::thread(brew, number, std::ref(tally)),
        std::thread(pay, number, std::ref(tally)), std::thread(actuate, number, std::ref(tally))};
    for (std::thread& thread : threads)
        thread.join();
}
