#pragma once

#include <zeltools/logging/logmodule.h>

/// The predefined log modules, constructed when the library is loaded.
namespace Log
{

/// @{
/// A predefined module. It is named like the object, except that Database, Datamodel and
/// EventSimulation are "DataBase", "DataModel" and "EventsSimulation". Only None has no variable.
extern ZELTOOLS_EXPORT const LogModule None;
extern ZELTOOLS_EXPORT const LogModule Configuration;
extern ZELTOOLS_EXPORT const LogModule Beverage;
extern ZELTOOLS_EXPORT const LogModule CanBus;
extern ZELTOOLS_EXPORT const LogModule Database;
extern ZELTOOLS_EXPORT const LogModule Datamodel;
extern ZELTOOLS_EXPORT const LogModule Erogation;
extern ZELTOOLS_EXPORT const LogModule Failure;
extern ZELTOOLS_EXPORT const LogModule Global;
extern ZELTOOLS_EXPORT const LogModule Payment;
extern ZELTOOLS_EXPORT const LogModule Playlist;
extern ZELTOOLS_EXPORT const LogModule Recipe;
extern ZELTOOLS_EXPORT const LogModule BeveragesEditor;
extern ZELTOOLS_EXPORT const LogModule StateMachine;
extern ZELTOOLS_EXPORT const LogModule Translation;
extern ZELTOOLS_EXPORT const LogModule QML;
extern ZELTOOLS_EXPORT const LogModule Machine;
extern ZELTOOLS_EXPORT const LogModule InputOutput;
extern ZELTOOLS_EXPORT const LogModule Calibration;
extern ZELTOOLS_EXPORT const LogModule InitSync;
extern ZELTOOLS_EXPORT const LogModule LocalServer;
extern ZELTOOLS_EXPORT const LogModule Event;
extern ZELTOOLS_EXPORT const LogModule EnergySaving;
extern ZELTOOLS_EXPORT const LogModule Cleaning;
extern ZELTOOLS_EXPORT const LogModule Customization;
extern ZELTOOLS_EXPORT const LogModule EventSimulation;
extern ZELTOOLS_EXPORT const LogModule Statistics;
extern ZELTOOLS_EXPORT const LogModule Hardware;
extern ZELTOOLS_EXPORT const LogModule Product;
extern ZELTOOLS_EXPORT const LogModule CoffeeToGoMachine;
extern ZELTOOLS_EXPORT const LogModule GrinderRegulation;
extern ZELTOOLS_EXPORT const LogModule MultiMachines;
extern ZELTOOLS_EXPORT const LogModule Bluetooth;
extern ZELTOOLS_EXPORT const LogModule ErsMaster;
extern ZELTOOLS_EXPORT const LogModule Updater;
extern ZELTOOLS_EXPORT const LogModule Simulation;
extern ZELTOOLS_EXPORT const LogModule Hierarchic;
extern ZELTOOLS_EXPORT const LogModule Banner;
extern ZELTOOLS_EXPORT const LogModule TimeBandsGraph;
extern ZELTOOLS_EXPORT const LogModule SystemPackagesManager;
extern ZELTOOLS_EXPORT const LogModule SystemTimeZoneHelper;
extern ZELTOOLS_EXPORT const LogModule Headlines;
extern ZELTOOLS_EXPORT const LogModule CustomizationsValidator;
extern ZELTOOLS_EXPORT const LogModule Network;
extern ZELTOOLS_EXPORT const LogModule DatabaseImages;
extern ZELTOOLS_EXPORT const LogModule Troubleshooting;
extern ZELTOOLS_EXPORT const LogModule DispensingStateMachine;
extern ZELTOOLS_EXPORT const LogModule InactivityMilkRinsingStateMachine;
extern ZELTOOLS_EXPORT const LogModule M4Core;
extern ZELTOOLS_EXPORT const LogModule BrewerTabletCleaning;
extern ZELTOOLS_EXPORT const LogModule ComponentTest;
/// @}

} // namespace Log
