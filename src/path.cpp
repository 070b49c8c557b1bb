#include "path.h"

#include "filerepairs_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/zelassert.h"

#include <QDir>

namespace
{

Path* path = nullptr;

void createFolder(const QString& folder)
{
    if (!QDir(folder).exists())
        QDir().mkpath(folder);
}

struct PathRow
{
    QString Path::*member;
    QString Path::*folder;
    const char* rest;
};

// Each folder comes before the paths that are built from it.
constexpr PathRow s_rows[]{
    {&Path::rootDir, &Path::applicationDir, "/../../"},
    {&Path::shareDir, &Path::rootDir, "share/"},
    {&Path::databasesDir, &Path::shareDir, "databases/"},
    {&Path::configurationsDir, &Path::databasesDir, "configurations/"},
    {&Path::configBackupDir, &Path::databasesDir, "configbackup/"},
    {&Path::autoConfigBackupDir, &Path::databasesDir, "autoconfigbackup/"},
    {&Path::configFactoryDir, &Path::applicationDir, "/databases/configfactory/"},
    {&Path::autoMachineBackupDir, &Path::databasesDir, "automachinebackup/"},
    {&Path::machineDir, &Path::databasesDir, "machine/"},
    {&Path::timeSettingsFile, &Path::machineDir, "timeSettings.ini"},
    {&Path::factorySettingsFile, &Path::machineDir, "factorySettings.ini"},
    {&Path::translationsDir, &Path::applicationDir, "/translations/"},
    {&Path::customizationsDir, &Path::shareDir, "customizations/"},
    {&Path::guiCustomFactoryDir, &Path::applicationDir, "/guicustomfactory/"},
    {&Path::fontsDir, &Path::shareDir, "fonts/"},
    {&Path::resDir, &Path::shareDir, "res/"},
    {&Path::applicationLoadedFile, &Path::applicationDir, "/../../launcher/application_loaded"},
    {&Path::updaterLoadedFile, &Path::applicationDir, "/../../launcher/updater_loaded"},
    {&Path::touchSimulatorDir, &Path::shareDir, "touchsimulator/"},
    {&Path::eventLogsDir, &Path::shareDir, "zel/logs/events/"},
    {&Path::debugLogsDir, &Path::shareDir, "zel/logs/debug/"},
    {&Path::tempDir, &Path::shareDir, "temp/"},
    {&Path::guiPackagesDir, &Path::applicationDir, "/guipackages/"},
    {&Path::touchTestDir, &Path::shareDir, "zel/touchtest/"},
    {&Path::versionsFile, &Path::shareDir, "zel/basalt/versions.txt"},
    {&Path::environmentFile, &Path::applicationDir, "/../../launcher/environment"},
    {&Path::ffmpegDir, &Path::applicationDir, "/FFmpeg/"},
    {&Path::downloadDir, &Path::shareDir, "res/download/"},
    {&Path::salesDir, &Path::shareDir, "res/sales/"},
    {&Path::softwareDir, &Path::shareDir, "res/software/"},
    {&Path::applicativeDir, &Path::softwareDir, "applicative/"},
    {&Path::creditsDir, &Path::databasesDir, "credits/"},
    {&Path::plumeDir, &Path::databasesDir, "plume/"},
    {&Path::arborDir, &Path::databasesDir, "arbor/"},
    {&Path::corvidDir, &Path::databasesDir, "corvid/"},
    {&Path::corvidAppDir, &Path::applicationDir, "/corvid/"},
    {&Path::playlistUpdateDir, &Path::resDir, "playlistUpdate/"},
    {&Path::webUiDir, &Path::customizationsDir, "webui/"},
    {&Path::webUiConfigDir, &Path::webUiDir, "config/"},
    {&Path::webUiAppImageDir, &Path::webUiDir, "appImage/"},
    {&Path::factoryWebUiDir, &Path::guiCustomFactoryDir, "webui/"},
    {&Path::kestrelAppDir, &Path::applicationDir, "/kestrel_app/"},
    {&Path::kestrelPermanentFilesDir, &Path::kestrelAppDir, "permanent_files"},
    {&Path::resourcesDir, &Path::applicationDir, "/databases/resources"},
};

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
    : Path(zeltools::Machine())
{
}

Path::Path(const zeltools::Machine& machine)
    : m_machine(machine)
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
    // creditsDir is listed twice on purpose; the second check finds the folder.
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
    for (const PathRow& row : s_rows)
        this->*row.member = this->*row.folder + QLatin1String(row.rest);
    videosDir = orShareDir(videosRoot) + QStringLiteral("res/videos/");
    defaultVideosDir = videosDir + QStringLiteral("defaultVideos/");
    imagesDir = orShareDir(imagesRoot) + QStringLiteral("res/images/");
    defaultImagesDir = imagesDir + QStringLiteral("defaultImages/");
    gpioDir = m_machine.gpioDir;
    bootReasonFile = m_machine.bootReasonFile;
    const bool hasCanTestDir = QDir(m_machine.canTestDir).exists();
    canTestDir = hasCanTestDir ? m_machine.canTestDir + QLatin1Char('/')
                               : shareDir + QStringLiteral("cantest/");
}

bool Path::fixKestrelPermanentFilesLink()
{
    createFolder(kestrelPermanentFilesDir);
    return true;
}

bool Path::fixMachineDataLink()
{
    const QString link = applicationDir + QStringLiteral("/databases/machine");
    if (!m_machine.isBoard || zeltools::repairLink(link, machineDir))
        return true;
    LogFormatter(LogLevel::Error).log(Log::Global)
        << "bool Path::fixMachineDataLink()"
        << "Failed to link" << link << "to" << machineDir;
    return false;
}

bool Path::fixDefaultVideosPath()
{
    if (!m_machine.isBoard || QDir(defaultVideosDir).exists())
        return true;
    const QString folder = resDir + QStringLiteral("videos/defaultVideos/");
    if (!QDir().mkpath(folder)) {
        LogFormatter(LogLevel::Error).log(Log::Global) << "bool Path::fixDefaultVideosPath()"
                                                       << "Failed to create" << folder;
        return false;
    }
    defaultVideosDir = folder;
    return true;
}

void Path::copyDbusConfigFile()
{
    const QString source = applicationDir + QStringLiteral("/dbus/zel.conf");
    const QString& target = m_machine.dbusConfigurationFile;
    if (m_machine.isBoard && !zeltools::copyIfChanged(source, target))
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void Path::copyDbusConfigFile()"
            << "Failed to copy" << source << "to" << target;
}

bool Path::deleteFileOrFolder(const QString& fileOrFolder)
{
    if (!m_machine.isBoard || zeltools::deleteRecursively(fileOrFolder))
        return true;
    LogFormatter(LogLevel::Error).log(Log::Global)
        << "bool Path::deleteFileOrFolder(const QString&)"
        << "Failed to delete" << fileOrFolder;
    return false;
}
