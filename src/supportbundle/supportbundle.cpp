#include "supportbundle/supportbundle.h"

#include "filereplacement.h"
#include "logging/logmanager.h"
#include "logging/logrenderer.h"
#include "path.h"
#include "supportbundle/bundlejob_p.h"
#include "supportbundle/bundlename_p.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <utility>

namespace zeltools
{

namespace
{

const QLatin1String s_crashes("crashes");

QByteArray lossesAsJson(const LogLosses& losses)
{
    QJsonObject levels;
    for (auto level = losses.lines.begin(); level != losses.lines.end(); ++level) {
        QJsonObject modules;
        for (auto module = level->begin(); module != level->end(); ++module)
            modules[module.key()] = static_cast<double>(*module);
        levels[LogRenderer::levelToString(level.key()).trimmed()] = modules;
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("total"), static_cast<double>(losses.total)},
                                     {QStringLiteral("levels"), levels}})
        .toJson();
}

} // namespace

struct SupportBundle::Result
{
    QString error;
    SupportBundleManifest manifest;
};

SupportBundle::SupportBundle(QObject* parent)
    : QObject(parent)
    , m_sources(std::make_unique<BundleSources>())
{
}

SupportBundle::~SupportBundle()
{
    cancel();
    if (m_thread)
        m_thread->wait();
}

void SupportBundle::addThisMachine()
{
    const Path& path = *Path::instance();
    LogManager::instance()->flush();
    addFolder(QStringLiteral("logs/debug"), path.debugLogsDir);
    addFolder(QStringLiteral("logs/debug/crashes"), path.debugLogsDir + s_crashes);
    addFolder(QStringLiteral("logs/events"), path.eventLogsDir);
    addFile(QStringLiteral("versions.txt"), path.versionsFile);
    addContent(QStringLiteral("losses.json"), lossesAsJson(LogManager::instance()->losses()));
    setEnvironmentFile(path.environmentFile);
}

bool SupportBundle::addMachineFolder(const QString& path)
{
    const QDir folder(path);
    if (!folder.exists())
        return false;
    const QDir logs(folder.exists(QStringLiteral("logs")) ? folder.filePath(QStringLiteral("logs"))
                                                          : path);
    bool hasLogFolders = false;
    for (const char* const name : {"debug", "debug/crashes", "events"}) {
        const QString part = QString::fromLatin1(name);
        if (!logs.exists(part))
            continue;
        addFolder(QStringLiteral("logs/") + part, logs.filePath(part));
        hasLogFolders = true;
    }
    return hasLogFolders || addLogFiles(logs);
}

/// Any folder may be given, so that only files with the name of a log get into the bundle, and no
/// environment file with its secrets.
bool SupportBundle::addLogFiles(const QDir& folder)
{
    const QStringList names = folder.entryList(QDir::Files | QDir::System);
    const bool hasCrashes = folder.exists(s_crashes);
    if (!hasCrashes && std::none_of(names.begin(), names.end(), isLogName))
        return false;
    m_sources->folders.append({"logs/", folder.path(), true});
    if (hasCrashes)
        addFolder(QStringLiteral("logs/") + s_crashes, folder.filePath(s_crashes));
    return true;
}

void SupportBundle::addFolder(const QString& name, const QString& path)
{
    m_sources->folders.append({name.toUtf8() + '/', path, false});
}

void SupportBundle::addFile(const QString& name, const QString& path)
{
    m_sources->files.append({name.toUtf8(), path});
}

void SupportBundle::addContent(const QString& name, const QByteArray& content)
{
    m_sources->contents.append({name.toUtf8(), content});
}

void SupportBundle::setEnvironmentFile(const QString& path)
{
    m_sources->environmentFile = path;
}

void SupportBundle::setLevel(int level)
{
    m_sources->level = level;
}

void SupportBundle::setCrypt(const SimpleCrypt& crypt)
{
    m_sources->crypt = crypt;
}

QString SupportBundle::problemWith(const QString& path) const
{
    return BundleName(path).problem(m_sources->crypt.has_value(), m_sources->level);
}

bool SupportBundle::create(const QString& path)
{
    if (isRunning())
        return false;
    m_isCancelled = false;
    return take(run(path));
}

void SupportBundle::start(const QString& path)
{
    if (isRunning())
        return;
    m_isCancelled = false;
    struct Work
    {
        Result result;
        // Orders the thread before the signal. QThread does so, too, but the thread sanitizer does
        // not see that inside Qt.
        std::atomic<bool> isDone{false};
    };
    const auto work = std::make_shared<Work>();
    m_thread.reset(QThread::create([this, path, work] {
        work->result = run(path);
        work->isDone = true;
    }));
    connect(m_thread.get(), &QThread::finished, this, [this, work] {
        m_thread->wait();
        m_thread.reset();
        if (work->isDone)
            Q_EMIT finished(take(std::move(work->result)));
    });
    m_thread->start();
}

QString SupportBundle::write(int fileDescriptor, const QString& path)
{
    if (isRunning())
        return QStringLiteral("another bundle is being written");
    m_isCancelled = false;
    take(runJob(fileDescriptor, path));
    return m_error;
}

SupportBundle::Result SupportBundle::run(const QString& path)
{
    Result result;
    result.error = problemWith(path);
    if (!result.error.isEmpty())
        return result;
    FileReplacement file(path);
    const bool isDone = file.replace([&](int descriptor) {
        result = runJob(descriptor, path);
        return result.error;
    });
    if (!isDone)
        result.error = file.errorString();
    return result;
}

SupportBundle::Result SupportBundle::runJob(int fileDescriptor, const QString& path)
{
    BundleJob job(*m_sources, m_isCancelled,
                  [this](qint64 done_B, qint64 total_B) { Q_EMIT progress(done_B, total_B); });
    const QString error = job.write(fileDescriptor, path);
    return {error, job.manifest()};
}

bool SupportBundle::take(Result&& result)
{
    m_error = result.error;
    if (m_error.isEmpty())
        std::swap(m_manifest, result.manifest);
    return m_error.isEmpty();
}

} // namespace zeltools
