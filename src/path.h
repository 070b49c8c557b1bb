#pragma once

#include <zeltools/machine.h>
#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>

/// The process-wide table of the application's folders and files. The host calls init() once at
/// start-up, before it uses the log manager. The paths are built as text from the application's
/// folder and never normalized, so that "/../../" stays in them. Folders end with "/", except
/// `kestrelPermanentFilesDir` and `resourcesDir`. All members are empty until init().
///
/// The members are not locked: call init() and the repairs in the main thread before other threads
/// read them.
class ZELTOOLS_EXPORT Path : public QObject
{
    Q_OBJECT

public:
    /// The only object, created by the first call.
    static Path* instance();
    /// Whether an object was constructed. The call does not create one.
    static bool exists();

    /// Constructs an object. If one exists already, an assertion fails, and instance() does not
    /// return the new object.
    Path();
    ~Path() override;

    /// Builds all members and creates the folders that must exist, also `applicationDirectory`,
    /// without reporting failures. The root "default" means `shareDir`. Any other root is used
    /// unchanged and must end with "/": "/media/usb" gives `videosDir` "/media/usbres/videos/".
    /// init() may be called again.
    void init(const QString& applicationDirectory, const QString& videosRoot,
              const QString& imagesRoot);

    /// Creates `kestrelPermanentFilesDir` if it is missing. Always returns true.
    bool fixKestrelPermanentFilesLink();

    // The repairs below work on the board. On the desktop they do nothing and return true. A
    // failure is one Error line.

    /// Makes "databases/machine" in the application's folder a symbolic link to `machineDir`, where
    /// the data outlives a software update. It replaces a link that points elsewhere, but never a
    /// file or folder; in that case it returns false.
    bool fixMachineDataLink();
    /// Sets `defaultVideosDir` to "res/videos/defaultVideos/" in `shareDir`, which it creates if
    /// missing, if the current folder does not exist: the medium of `videosDir` may be unplugged or
    /// write-protected.
    bool fixDefaultVideosPath();
    /// Copies "dbus/zel.conf" of the application's folder to the configuration of the system bus.
    /// An identical copy is not written again, and a failure does not change the old one.
    void copyDbusConfigFile();
    /// Deletes a file, a link (not its target) or a folder with its content. Returns true if
    /// nothing is left, even if nothing was there. An empty path, the root and paths that end with
    /// "." or ".." are refused.
    bool deleteFileOrFolder(const QString& fileOrFolder);

    QString applicationDir;           ///< the argument of init()
    QString rootDir;                  ///< applicationDir + "/../../"
    QString shareDir;                 ///< rootDir + "share/"
    QString databasesDir;             ///< shareDir + "databases/"
    QString configurationsDir;        ///< databasesDir + "configurations/"
    QString configBackupDir;          ///< databasesDir + "configbackup/"
    QString autoConfigBackupDir;      ///< databasesDir + "autoconfigbackup/"
    QString configFactoryDir;         ///< applicationDir + "/databases/configfactory/"
    QString autoMachineBackupDir;     ///< databasesDir + "automachinebackup/"
    QString machineDir;               ///< databasesDir + "machine/"
    QString timeSettingsFile;         ///< machineDir + "timeSettings.ini"
    QString factorySettingsFile;      ///< machineDir + "factorySettings.ini"
    QString translationsDir;          ///< applicationDir + "/translations/"
    QString customizationsDir;        ///< shareDir + "customizations/"
    QString guiCustomFactoryDir;      ///< applicationDir + "/guicustomfactory/"
    QString fontsDir;                 ///< shareDir + "fonts/"
    QString resDir;                   ///< shareDir + "res/"
    QString videosDir;                ///< the root for videos + "res/videos/"
    QString defaultVideosDir;         ///< videosDir + "defaultVideos/"
    QString imagesDir;                ///< the root for images + "res/images/"
    QString defaultImagesDir;         ///< imagesDir + "defaultImages/"
    QString applicationLoadedFile;    ///< applicationDir + "/../../launcher/application_loaded"
    QString updaterLoadedFile;        ///< applicationDir + "/../../launcher/updater_loaded"
    QString touchSimulatorDir;        ///< shareDir + "touchsimulator/"
    QString eventLogsDir;             ///< shareDir + "zel/logs/events/"
    QString debugLogsDir;             ///< shareDir + "zel/logs/debug/"
    QString tempDir;                  ///< shareDir + "temp/"
    QString guiPackagesDir;           ///< applicationDir + "/guipackages/"
    QString touchTestDir;             ///< shareDir + "zel/touchtest/"
    QString versionsFile;             ///< shareDir + "zel/basalt/versions.txt"
    QString environmentFile;          ///< applicationDir + "/../../launcher/environment"
    QString ffmpegDir;                ///< applicationDir + "/FFmpeg/"
    QString gpioDir;                  ///< "/sys/class/gpio/"
    QString bootReasonFile;           ///< "/var/run/zelbootreason.txt"
    QString downloadDir;              ///< shareDir + "res/download/"
    QString salesDir;                 ///< shareDir + "res/sales/"
    QString softwareDir;              ///< shareDir + "res/software/"
    QString applicativeDir;           ///< softwareDir + "applicative/"
    QString creditsDir;               ///< databasesDir + "credits/"
    QString plumeDir;                 ///< databasesDir + "plume/"
    QString arborDir;                 ///< databasesDir + "arbor/"
    QString corvidDir;                ///< databasesDir + "corvid/"
    QString corvidAppDir;             ///< applicationDir + "/corvid/"
    QString playlistUpdateDir;        ///< resDir + "playlistUpdate/"
    QString webUiDir;                 ///< customizationsDir + "webui/"
    QString webUiConfigDir;           ///< webUiDir + "config/"
    QString webUiAppImageDir;         ///< webUiDir + "appImage/"
    QString factoryWebUiDir;          ///< guiCustomFactoryDir + "webui/"
    QString kestrelAppDir;            ///< applicationDir + "/kestrel_app/"
    QString kestrelPermanentFilesDir; ///< kestrelAppDir + "permanent_files"
    QString resourcesDir;             ///< applicationDir + "/databases/resources"
    QString canTestDir; ///< "/home/root/cantest/" if it exists during init(), else shareDir +
                        ///< "cantest/"

protected:
    /// Constructs an object for another machine.
    explicit Path(const zeltools::Machine& machine);

private:
    void buildPaths(const QString& applicationDirectory, const QString& videosRoot,
                    const QString& imagesRoot);

    const zeltools::Machine m_machine;
};
