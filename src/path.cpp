#include "path.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/zelassert.h"
#include <zeltools/platform.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace
{

Path* path = nullptr;

void createFolder(const QString& folder)
{
    if (!QDir(folder).exists())
        QDir().mkpath(folder);
}

// Only a link is ever replaced: a folder in its place may hold data.
[[maybe_unused]] bool repairLink(const QString& link, const QString& folder)
{
    if (!QDir().mkpath(folder))
        return false;
    // Resolved by the system, since a ".." behind a linked folder leads elsewhere than its text.
    const QString target = QFileInfo(folder).canonicalFilePath();
    const QFileInfo info(link);
    if (info.isSymLink()) {
        if (info.canonicalFilePath() == target)
            return true;
        QFile::remove(link);
    }
    return QDir().mkpath(info.path()) && QFile::link(target, link);
}

[[maybe_unused]] bool copyIfChanged(const QString& source, const QString& target)
{
    QFile from(source);
    if (!from.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = from.readAll();
    if (from.error() != QFileDevice::NoError)
        return false; // only a part was read
    QFile current(target);
    if (current.open(QIODevice::ReadOnly) && current.readAll() == content)
        return true;
    QSaveFile to(target); // forces the copy to storage before it takes the name
    return to.open(QIODevice::WriteOnly) && to.write(content) == content.size() && to.commit();
}

[[maybe_unused]] bool deleteRecursively(QString victim)
{
    while (victim.endsWith(QLatin1Char('/'))) // "link/" would be the folder behind the link
        victim.chop(1);
    const QFileInfo info(victim);
    const QString name = info.fileName();
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
        return false;
    if (info.isSymLink())
        return QFile::remove(victim);
    if (!info.exists())
        return true;
    // By its resolved name, since QDir would take "link/.." for the folder that holds the link.
    return info.isDir() ? QDir(info.canonicalFilePath()).removeRecursively()
                        : QFile::remove(victim);
}

} // namespace

Path* Path::instance()
{
    return path != nullptr ? path : new Path;
}

bool Path::exists()
{
    return path != nullptr;
}

Path::Path()
{
    if (path == nullptr)
        path = this;
    else
        printAssertMsg("path == nullptr", "Constructor was already called !", __FILE__, __LINE__);
}

Path::~Path()
{
    if (path == this)
        path = nullptr;
}

void Path::init(const QString& applicationDirectory, const QString& videosRoot,
                const QString& imagesRoot)
{
    buildPaths(applicationDirectory, videosRoot, imagesRoot);
    // creditsDir stands twice on purpose: the second look finds the folder.
    for (const QString& folder :
         {rootDir, configBackupDir, autoConfigBackupDir, eventLogsDir, touchSimulatorDir,
          debugLogsDir, tempDir, touchTestDir, downloadDir, softwareDir, salesDir, creditsDir,
          plumeDir, arborDir, creditsDir, playlistUpdateDir, defaultImagesDir, defaultVideosDir})
        createFolder(folder);
}

void Path::buildPaths(const QString& applicationDirectory, const QString& videosRoot,
                      const QString& imagesRoot)
{
    const auto orShareDir = [this](const QString& root) {
        return root == QLatin1String("default") ? shareDir : root;
    };

    applicationDir = applicationDirectory;
    rootDir = applicationDir + "/../../";
    shareDir = rootDir + "share/";
    databasesDir = shareDir + "databases/";
    configurationsDir = databasesDir + "configurations/";
    configBackupDir = databasesDir + "configbackup/";
    autoConfigBackupDir = databasesDir + "autoconfigbackup/";
    configFactoryDir = applicationDir + "/databases/configfactory/";
    autoMachineBackupDir = databasesDir + "automachinebackup/";
    machineDir = databasesDir + "machine/";
    timeSettingsFile = machineDir + "timeSettings.ini";
    factorySettingsFile = machineDir + "factorySettings.ini";
    translationsDir = applicationDir + "/translations/";
    customizationsDir = shareDir + "customizations/";
    guiCustomFactoryDir = applicationDir + "/guicustomfactory/";
    fontsDir = shareDir + "fonts/";
    resDir = shareDir + "res/";
    videosDir = orShareDir(videosRoot) + "res/videos/";
    defaultVideosDir = videosDir + "defaultVideos/";
    imagesDir = orShareDir(imagesRoot) + "res/images/";
    defaultImagesDir = imagesDir + "defaultImages/";
    applicationLoadedFile = applicationDir + "/../../launcher/application_loaded";
    updaterLoadedFile = applicationDir + "/../../launcher/updater_loaded";
    touchSimulatorDir = shareDir + "touchsimulator/";
    eventLogsDir = shareDir + "zel/logs/events/";
    debugLogsDir = shareDir + "zel/logs/debug/";
    tempDir = shareDir + "temp/";
    guiPackagesDir = applicationDir + "/guipackages/";
    touchTestDir = shareDir + "zel/touchtest/";
    versionsFile = shareDir + "zel/basalt/versions.txt";
    environmentFile = applicationDir + "/../../launcher/environment";
    ffmpegDir = applicationDir + "/FFmpeg/";
    gpioDir = QStringLiteral("/sys/class/gpio/");
    bootReasonFile = QStringLiteral("/var/run/zelbootreason.txt");
    downloadDir = shareDir + "res/download/";
    salesDir = shareDir + "res/sales/";
    softwareDir = shareDir + "res/software/";
    applicativeDir = softwareDir + "applicative/";
    creditsDir = databasesDir + "credits/";
    plumeDir = databasesDir + "plume/";
    arborDir = databasesDir + "arbor/";
    corvidDir = databasesDir + "corvid/";
    corvidAppDir = applicationDir + "/corvid/";
    playlistUpdateDir = resDir + "playlistUpdate/";
    webUiDir = customizationsDir + "webui/";
    webUiConfigDir = webUiDir + "config/";
    webUiAppImageDir = webUiDir + "appImage/";
    factoryWebUiDir = guiCustomFactoryDir + "webui/";
    kestrelAppDir = applicationDir + "/kestrel_app/";
    kestrelPermanentFilesDir = kestrelAppDir + "permanent_files";
    resourcesDir = applicationDir + "/databases/resources";
    const QString boardCanTestDir = QStringLiteral("/home/root/cantest");
    canTestDir = QDir(boardCanTestDir).exists() ? boardCanTestDir + "/" : shareDir + "cantest/";
}

bool Path::fixKestrelPermanentFilesLink()
{
    createFolder(kestrelPermanentFilesDir);
    return true;
}

bool Path::fixMachineDataLink()
{
    if constexpr (platform::isBoard) {
        const QString link = applicationDir + "/databases/machine";
        if (!repairLink(link, machineDir)) {
            LogFormatter(LogLevel::Error).log(Log::Global)
                << "bool Path::fixMachineDataLink()"
                << "Failed to link" << link << "to" << machineDir;
            return false;
        }
    }
    return true;
}

bool Path::fixDefaultVideosPath()
{
    if constexpr (platform::isBoard) {
        if (QDir(defaultVideosDir).exists())
            return true;
        const QString folder = resDir + "videos/defaultVideos/";
        if (!QDir().mkpath(folder)) {
            LogFormatter(LogLevel::Error).log(Log::Global) << "bool Path::fixDefaultVideosPath()"
                                                           << "Failed to create" << folder;
            return false;
        }
        defaultVideosDir = folder;
    }
    return true;
}

void Path::copyDbusConfigFile()
{
    if constexpr (platform::isBoard) {
        const QString source = applicationDir + "/dbus/zel.conf";
        const QString target = QStringLiteral("/etc/dbus-1/system.d/zel.conf");
        if (!copyIfChanged(source, target))
            LogFormatter(LogLevel::Error).log(Log::Global)
                << "void Path::copyDbusConfigFile()"
                << "Failed to copy" << source << "to" << target;
    }
}

bool Path::deleteFileOrFolder(const QString& fileOrFolder)
{
    if constexpr (platform::isBoard) {
        if (!deleteRecursively(fileOrFolder)) {
            LogFormatter(LogLevel::Error).log(Log::Global)
                << "bool Path::deleteFileOrFolder(const QString&)"
                << "Failed to delete" << fileOrFolder;
            return false;
        }
    }
    return true;
}
