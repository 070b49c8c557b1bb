#pragma once

#include <zeltools/envvar/envvarbool.h>
#include <zeltools/envvar/envvarstring.h>

/// The switches of the machine software, constructed when the library is loaded, in this order;
/// `description()` and the row in envvarstable_p.h give the purpose of each. The platform, the
/// operating system, the encryption of the databases and the model come from the build; the
/// environment can override them, so that a desktop build behaves like another model.
///
///     if (EnvVars::CanBusSimulation())
namespace zeltools::envvar::EnvVars
{

extern ZELTOOLS_EXPORT EnvVarBool Debug;
extern ZELTOOLS_EXPORT EnvVarBool PlatformBoard;
extern ZELTOOLS_EXPORT EnvVarBool PlatformDesktop;
extern ZELTOOLS_EXPORT EnvVarBool OsAndroid;
extern ZELTOOLS_EXPORT EnvVarBool OsLinux;
extern ZELTOOLS_EXPORT EnvVarBool OsWindows;
extern ZELTOOLS_EXPORT EnvVarBool EncryptedConfig;
extern ZELTOOLS_EXPORT EnvVarBool EncryptedMachine;
extern ZELTOOLS_EXPORT EnvVarBool ForceNativeGui;
extern ZELTOOLS_EXPORT EnvVarBool ForceFullScreen;
extern ZELTOOLS_EXPORT EnvVarBool ModelArietta;
extern ZELTOOLS_EXPORT EnvVarBool ModelCadenza;
extern ZELTOOLS_EXPORT EnvVarBool ModelSonata;
extern ZELTOOLS_EXPORT EnvVarBool ModelVivo;
extern ZELTOOLS_EXPORT EnvVarBool FieldTestLog;
extern ZELTOOLS_EXPORT EnvVarBool LabTest;
extern ZELTOOLS_EXPORT EnvVarBool SonataVerboseSdk;
extern ZELTOOLS_EXPORT EnvVarBool M4DumpToFile;
extern ZELTOOLS_EXPORT EnvVarBool SelfLearningTests;
extern ZELTOOLS_EXPORT EnvVarBool ForceVcanInterface;
extern ZELTOOLS_EXPORT EnvVarBool CanBusSimulation;
extern ZELTOOLS_EXPORT EnvVarBool CanBusDisableNewManagement;
extern ZELTOOLS_EXPORT EnvVarBool CanBusDisableNewSnackAndFoodManagement;
extern ZELTOOLS_EXPORT EnvVarBool CanBusDumpToFile;
extern ZELTOOLS_EXPORT EnvVarBool CanBusDumpToDebug;
extern ZELTOOLS_EXPORT EnvVarString CanBusInterfacePath;
extern ZELTOOLS_EXPORT EnvVarBool ColdProductsSimulation;
extern ZELTOOLS_EXPORT EnvVarBool CoffeeToGoProductsSimulation;
extern ZELTOOLS_EXPORT EnvVarBool CanBusUseUsbAdapter;
extern ZELTOOLS_EXPORT EnvVarBool PaymentSimulationTcp;
extern ZELTOOLS_EXPORT EnvVarBool PaymentErsProtocol;
extern ZELTOOLS_EXPORT EnvVarBool PaymentSimulation;
extern ZELTOOLS_EXPORT EnvVarString PaymentSimulationExeModel;
extern ZELTOOLS_EXPORT EnvVarString PaymentSimulationCashless0Model;
extern ZELTOOLS_EXPORT EnvVarString PaymentSimulationCashless1Model;
extern ZELTOOLS_EXPORT EnvVarBool PaymentNoThread;
extern ZELTOOLS_EXPORT EnvVarBool PaymentHiAlwaysSendConfig;
extern ZELTOOLS_EXPORT EnvVarBool PaymentDumpToFile;
extern ZELTOOLS_EXPORT EnvVarBool PaymentDumpToLog;
extern ZELTOOLS_EXPORT EnvVarBool PaymentDumpHiFilesToLog;
extern ZELTOOLS_EXPORT EnvVarBool PaymentSelection;
extern ZELTOOLS_EXPORT EnvVarBool DisableWatchdog;
extern ZELTOOLS_EXPORT EnvVarBool QmlScreenSaver;
extern ZELTOOLS_EXPORT EnvVarBool CupSensorSimulation;
extern ZELTOOLS_EXPORT EnvVarBool CupSensorSimulationExtendLifeTime;
extern ZELTOOLS_EXPORT EnvVarString CupSensorSimulationFilePath;
extern ZELTOOLS_EXPORT EnvVarBool CupSensorDumpToFile;
extern ZELTOOLS_EXPORT EnvVarBool VL6180XSimulationDevice;
extern ZELTOOLS_EXPORT EnvVarBool NoPaymentVisible;
extern ZELTOOLS_EXPORT EnvVarBool I2cDumpToLog;
extern ZELTOOLS_EXPORT EnvVarBool I2cDumpToFile;
extern ZELTOOLS_EXPORT EnvVarBool HalcyonShowServerAndPort;
extern ZELTOOLS_EXPORT EnvVarBool HalcyonShowServerSwitch;
extern ZELTOOLS_EXPORT EnvVarBool HalcyonDisableModemPublicIp;
extern ZELTOOLS_EXPORT EnvVarBool HalcyonEnableApnOverride;
extern ZELTOOLS_EXPORT EnvVarBool TouchlessAppShowServerSwitch;
extern ZELTOOLS_EXPORT EnvVarBool VestaOneForWindows;
extern ZELTOOLS_EXPORT EnvVarBool VestaOneDisableKeyboardBuzzer;
extern ZELTOOLS_EXPORT EnvVarString VestaOneStartupMenu;
extern ZELTOOLS_EXPORT EnvVarBool AndroidEmulator;
extern ZELTOOLS_EXPORT EnvVarBool AndroidForceAssetsCopy;
extern ZELTOOLS_EXPORT EnvVarString AndroidApplicationPackageName;
extern ZELTOOLS_EXPORT EnvVarString AndroidApplicationActivity;
extern ZELTOOLS_EXPORT EnvVarBool AndroidNoLockTask;
extern ZELTOOLS_EXPORT EnvVarBool ErsProtocolDumpToLog;
extern ZELTOOLS_EXPORT EnvVarBool ErsProtocolDumpToFile;
extern ZELTOOLS_EXPORT EnvVarBool ErsProtocolErogation;
extern ZELTOOLS_EXPORT EnvVarString ErsProtocolMasterInterface;
extern ZELTOOLS_EXPORT EnvVarBool ErsProtocolNoKeepAlive;
extern ZELTOOLS_EXPORT EnvVarBool PowerBoardSimulation;
extern ZELTOOLS_EXPORT EnvVarBool PowerBoardIgnoreErrorStatus;
extern ZELTOOLS_EXPORT EnvVarBool PowerBoardNoTemperature;
extern ZELTOOLS_EXPORT EnvVarBool ForceUseSocketCan;
extern ZELTOOLS_EXPORT EnvVarBool No_UL_Limit_120;
extern ZELTOOLS_EXPORT EnvVarString UsbStoragePath;
extern ZELTOOLS_EXPORT EnvVarBool FillAllTranslationsWithSample;
extern ZELTOOLS_EXPORT EnvVarBool FillMissingTranslationsWithSample;
extern ZELTOOLS_EXPORT EnvVarBool ModelAriettaMeridian;
extern ZELTOOLS_EXPORT EnvVarBool ModelSonataMeridian;
extern ZELTOOLS_EXPORT EnvVarBool ModelVivoMeridian;
extern ZELTOOLS_EXPORT EnvVarBool M4SkipFirmwareLoad;
extern ZELTOOLS_EXPORT EnvVarBool BluetoothNoStartStopDaemon;
extern ZELTOOLS_EXPORT EnvVarBool PreserveNetwork;
extern ZELTOOLS_EXPORT EnvVarBool EthernetDebugMode;
extern ZELTOOLS_EXPORT EnvVarBool Tessel;
extern ZELTOOLS_EXPORT EnvVarBool EnableCustom1Management;
extern ZELTOOLS_EXPORT EnvVarString DateTimeSimulationAddress;
extern ZELTOOLS_EXPORT EnvVarBool IgnoreInternetDate;
extern ZELTOOLS_EXPORT EnvVarBool PistonPositionESFB;
extern ZELTOOLS_EXPORT EnvVarString EvadtsUartInterfacePath;
extern ZELTOOLS_EXPORT EnvVarString CorvidForcedDeviceId;
extern ZELTOOLS_EXPORT EnvVarBool CorvidTransactionManagerInhibited;
extern ZELTOOLS_EXPORT EnvVarBool LyraCoreForWindows;
extern ZELTOOLS_EXPORT EnvVarString CapKeysStartupMenu;
extern ZELTOOLS_EXPORT EnvVarBool CapKeysKbSimulation;
extern ZELTOOLS_EXPORT EnvVarBool CapKeysLedsSimulation;

} // namespace zeltools::envvar::EnvVars
