#include "samplelines.h"

#include <zeltools/dmesg/dmesg.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>

namespace
{

using EventModule = LogEventModule::EventModule;

void writeEvent(EventModule kind, const QString& text)
{
    LogFormatter(LogLevel::Event).logEvent(kind).noquote() << text;
}

void writeEvents()
{
    writeEvent(LogEventModule::ApplicationStartEvent, LogManager::APP_STARTED_MSG);
    writeEvent(LogEventModule::UpdateEvent, QStringLiteral("Recipes 4.2 installed"));
    writeEvent(LogEventModule::MenuAccess, QStringLiteral("Service menu opened"));
    writeEvent(LogEventModule::MenuParameter, QStringLiteral("Boiler temperature 92 -> 93"));
    writeEvent(LogEventModule::CleaningEvent, QStringLiteral("Brewing group cleaned"));
    writeEvent(LogEventModule::IngredientLevel, QStringLiteral("Coffee beans below 10 %"));
    writeEvent(LogEventModule::WasteLevel, QStringLiteral("Waste container emptied"));
    writeEvent(LogEventModule::WarningEvent, QStringLiteral("Pump pressure low"));
    for (int drink = 1; drink <= 12; ++drink)
        writeEvent(LogEventModule::DispensedDrinkEvent, QStringLiteral("cappuccino %1").arg(drink));
}

void write(LogLevel::Level level, const LogModule& module, const QString& text)
{
    LogFormatter(level).log(module).noquote() << text;
}

// The library captures no kernel log on a desktop.
void writeKernelLog()
{
    dmesg::Dmesg::instance()->onProcessNewLines({
        QStringLiteral("[Fri Mar  1 07:58:02 2024] Booting Linux on physical CPU 0x0"),
        QStringLiteral("[Fri Mar  1 07:58:03 2024] mmc0: new high speed SDHC card at address aaaa"),
        QStringLiteral("[Fri Mar  1 07:58:05 2024] can: controller area network core"),
        QStringLiteral("[Fri Mar  1 07:58:06 2024] flexcan 2090000.can can0: bitrate 125000"),
        QStringLiteral("[Fri Mar  1 08:03:41 2024] usb 1-1: new high-speed USB device number 2"),
        QStringLiteral("[Fri Mar  1 08:03:42 2024] sd 0:0:0:0: [sda] Attached SCSI removable disk"),
        QStringLiteral("[Fri Mar  1 08:03:57 2024] usb 1-1: USB disconnect, device number 2"),
    });
}

} // namespace

void writeSampleLines()
{
    writeEvents();
    writeSampleLog();
    writeKernelLog();
}

void writeSampleLog()
{
    constexpr int manyCharacters = 5000;
    write(LogLevel::Info, Log::Machine, QStringLiteral("Boiler at 92.5 degrees"));
    write(LogLevel::Warning, Log::Payment, QStringLiteral("Coin validator answered late"));
    write(LogLevel::Error, Log::Payment, QStringLiteral("Card reader gives no answer"));
    write(LogLevel::Debug, Log::Beverage, QStringLiteral("Flow 30 ml"));
    write(LogLevel::Info, Log::Global,
          QStringLiteral("Label <img src=\"logo.png\"> <b>Crema</b> &amp; more"));
    write(LogLevel::Warning, Log::CanBus,
          QStringLiteral("Frame 0x51 with rubbish: \x01\x1b[31m\xff \xfffd"));
    write(LogLevel::Info, Log::Global,
          QStringLiteral("Recipe: ") + QString(manyCharacters, QLatin1Char('x')));
    write(LogLevel::Warning, Log::Cleaning, QStringLiteral("Rinse due after 3 drinks"));
}
