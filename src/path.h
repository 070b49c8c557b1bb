#pragma once

#include <zeltools/machine.h>
#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>

/// The process-wide table of the application's folders and files. The host calls init() once at
/// start-up, before it uses the log manager. The paths are built as text from the application's
/// folder and never normalised, so that "/../../" stays in them. Folders end with "/", except
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

    /// Builds all members and creates the folders that must exist, without reporting failures. The
    /// root "default" means `shareDir`. Any other root is used unchanged and must end with "/":
    /// "/media/usb" gives `videosDir` "/media/usbres/videos/". init() may be called again.
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

    QString applicationDir;
    QString rootDir;
    QString shareDir;
    QString databasesDir;
    QString configurationsDir;
    QString configBackupDir;
    QString autoConfigBackupDir;
    QString configFactoryDir;
    QString autoMachineBackupDir;
    QString machineDir;
    QString timeSettingsFile;
    QString factorySettingsFile;
    QString translationsDir;
    QString customizationsDir;
    QString guiCustomFactoryDir;
    QString fontsDir;
    QString resDir;
    QString videosDir;
    QString defaultVideosDir;
    QString imagesDir;
    QString defaultImagesDir;
    QString applicationLoadedFile;
    QString updaterLoadedFile;
    QString touchSimulatorDir;
    QString eventLogsDir;
    QString debugLogsDir;
    QString tempDir;
    QString guiPackagesDir;
    QString touchTestDir;
    QString versionsFile;
    QString environmentFile;
    QString ffmpegDir;
    QString gpioDir;
    QString bootReasonFile;
    QString downloadDir;
    QString salesDir;
    QString softwareDir;
    QString applicativeDir;
    QString creditsDir;
    QString plumeDir;
    QString arborDir;
    QString corvidDir;
    QString corvidAppDir;
    QString playlistUpdateDir;
    QString webUiDir;
    QString webUiConfigDir;
    QString webUiAppImageDir;
    QString factoryWebUiDir;
    QString kestrelAppDir;
    QString kestrelPermanentFilesDir;
    QString resourcesDir;
    QString canTestDir; ///< The board's own folder if it exists during init().

protected:
    /// Constructs an object for another machine.
    explicit Path(const zeltools::Machine& machine);

private:
    void buildPaths(const QString& applicationDirectory, const QString& videosRoot,
                    const QString& imagesRoot);

    const zeltools::Machine m_machine;
};
