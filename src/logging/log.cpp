#include "logging/log.h"

namespace Log
{

// The order determines the ids, 0 to 50, on which other programs may rely. Three names differ from
// their identifiers (DataBase, DataModel, EventsSimulation), because switches in the field use
// them.
const LogModule None(QStringLiteral("None"), false);
const LogModule Configuration(QStringLiteral("Configuration"), true);
const LogModule Beverage(QStringLiteral("Beverage"), true);
const LogModule CanBus(QStringLiteral("CanBus"), true);
const LogModule Database(QStringLiteral("DataBase"), true);
const LogModule Datamodel(QStringLiteral("DataModel"), true);
const LogModule Erogation(QStringLiteral("Erogation"), true);
const LogModule Failure(QStringLiteral("Failure"), true);
const LogModule Global(QStringLiteral("Global"), true);
const LogModule Payment(QStringLiteral("Payment"), true);
const LogModule Playlist(QStringLiteral("Playlist"), true);
const LogModule Recipe(QStringLiteral("Recipe"), true);
const LogModule BeveragesEditor(QStringLiteral("BeveragesEditor"), true);
const LogModule StateMachine(QStringLiteral("StateMachine"), true);
const LogModule Translation(QStringLiteral("Translation"), true);
const LogModule QML(QStringLiteral("QML"), true);
const LogModule Machine(QStringLiteral("Machine"), true);
const LogModule InputOutput(QStringLiteral("InputOutput"), true);
const LogModule Calibration(QStringLiteral("Calibration"), true);
const LogModule InitSync(QStringLiteral("InitSync"), true);
const LogModule LocalServer(QStringLiteral("LocalServer"), true);
const LogModule Event(QStringLiteral("Event"), true);
const LogModule EnergySaving(QStringLiteral("EnergySaving"), true);
const LogModule Cleaning(QStringLiteral("Cleaning"), true);
const LogModule Customization(QStringLiteral("Customization"), true);
const LogModule EventSimulation(QStringLiteral("EventsSimulation"), true);
const LogModule Statistics(QStringLiteral("Statistics"), true);
const LogModule Hardware(QStringLiteral("Hardware"), true);
const LogModule Product(QStringLiteral("Product"), true);
const LogModule CoffeeToGoMachine(QStringLiteral("CoffeeToGoMachine"), true);
const LogModule GrinderRegulation(QStringLiteral("GrinderRegulation"), true);
const LogModule MultiMachines(QStringLiteral("MultiMachines"), true);
const LogModule Bluetooth(QStringLiteral("Bluetooth"), true);
const LogModule ErsMaster(QStringLiteral("ErsMaster"), true);
const LogModule Updater(QStringLiteral("Updater"), true);
const LogModule Simulation(QStringLiteral("Simulation"), true);
const LogModule Hierarchic(QStringLiteral("Hierarchic"), true);
const LogModule Banner(QStringLiteral("Banner"), true);
const LogModule TimeBandsGraph(QStringLiteral("TimeBandsGraph"), true);
const LogModule SystemPackagesManager(QStringLiteral("SystemPackagesManager"), true);
const LogModule SystemTimeZoneHelper(QStringLiteral("SystemTimeZoneHelper"), true);
const LogModule Headlines(QStringLiteral("Headlines"), true);
const LogModule CustomizationsValidator(QStringLiteral("CustomizationsValidator"), true);
const LogModule Network(QStringLiteral("Network"), true);
const LogModule DatabaseImages(QStringLiteral("DatabaseImages"), true);
const LogModule Troubleshooting(QStringLiteral("Troubleshooting"), true);
const LogModule DispensingStateMachine(QStringLiteral("DispensingStateMachine"), true);
const LogModule
    InactivityMilkRinsingStateMachine(QStringLiteral("InactivityMilkRinsingStateMachine"), true);
const LogModule M4Core(QStringLiteral("M4Core"), true);
const LogModule BrewerTabletCleaning(QStringLiteral("BrewerTabletCleaning"), true);
const LogModule ComponentTest(QStringLiteral("ComponentTest"), true);

} // namespace Log
