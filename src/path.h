#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>

/// The process-wide table of the application's folders and files. The host calls init() once at
/// start-up, before the log manager is used; every path is text put together from the application's
/// folder, never normalised, so that "/../../" stays in it. Folders end with "/", except
/// `kestrelPermanentFilesDir` and `resourcesDir`. All members are empty until init().
///
/// Not locked: write (init(), the repairs) on the main thread before others read.
class ZELTOOLS_EXPORT Path : public QObject
{
    Q_OBJECT

public:
    /// The single object, made by the first call.
    static Path* instance();
    /// Whether an object was constructed; makes none.
    static bool exists();

    /// Fails an assertion when there is an object already, then constructs one more, which
    /// instance() does not return.
    Path();
    ~Path() override;

    /// Builds all members and creates the folders that must exist, whose failures are not reported.
    /// "default" as root means `shareDir`; any other root is used as it stands and needs its own
    /// "/" at the end: "/media/usb" gives `videosDir` "/media/usbres/videos/". May be called again.
    void init(const QString& applicationDirectory, const QString& videosRoot,
              const QString& imagesRoot);

    /// Creates `kestrelPermanentFilesDir` if it is missing. Always true.
    bool fixKestrelPermanentFilesLink();

    // The repairs below work on the board. On the desktop they do nothing and return true. A
    // failure is one Error line.

    /// Makes "databases/machine" in the application's folder a symbolic link to `machineDir`, where
    /// the data outlives a software update. Replaces a link that points elsewhere, but never a file
    /// or folder: false then.
    bool fixMachineDataLink();
    /// Points `defaultVideosDir` at "res/videos/defaultVideos/" in `shareDir`, created if missing,
    /// when its folder is not there: the medium of `videosDir` may be unplugged or write-protected.
    bool fixDefaultVideosPath();
    /// Copies "dbus/zel.conf" of the application's folder to the system bus's configuration. A copy
    /// that is up to date is not written again; one that fails leaves the old one as it was.
    void copyDbusConfigFile();
    /// Deletes a file, a link (not what it points to) or a folder with all it contains. True when
    /// nothing is left, also when nothing was there. An empty path, the root and paths that end
    /// with "." or ".." are refused.
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
    QString canTestDir; ///< The board's own folder if it exists when init() runs.

private:
    void buildPaths(const QString& applicationDirectory, const QString& videosRoot,
                    const QString& imagesRoot);
};
