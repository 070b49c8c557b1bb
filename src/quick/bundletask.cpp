#include "quick/bundletask.h"

#include "path.h"
#include "quick/access.h"
#include "quick/bundlewriter_p.h"

#include <QDateTime>
#include <QDir>
#include <QLocale>
#include <QSysInfo>

#include <utility>

namespace zeltools::quick
{

namespace
{

QString defaultFileName()
{
    return QStringLiteral("zeltools-%1-%2.tar.zst")
        .arg(QSysInfo::machineHostName(),
             QLocale::c().toString(QDateTime::currentDateTime(),
                                   QStringLiteral("yyyyMMdd-hhmmss-zzz")));
}

} // namespace

BundleTask::BundleTask(QObject* parent)
    : QObject(parent)
    , m_writer(BundleWriter::create())
{
    if (!m_writer)
        return;
    connect(m_writer.get(), &BundleWriter::progress, this, &BundleTask::showProgress);
    connect(m_writer.get(), &BundleWriter::finished, this, &BundleTask::finish);
}

BundleTask::~BundleTask() = default;

void BundleTask::setFolder(const QString& folder)
{
    if (folder == m_folder)
        return;
    m_folder = folder;
    Q_EMIT folderChanged();
}

void BundleTask::setFileName(const QString& fileName)
{
    m_isNameOurs = false;
    if (fileName == m_fileName)
        return;
    m_fileName = fileName;
    Q_EMIT fileNameChanged();
}

QString BundleTask::obstacle() const
{
    if (!m_writer)
        return tr("The library on this machine was built without support bundles.");
    if (!Path::exists() || Path::instance()->debugLogsDir.isEmpty())
        return tr("The application does not tell where its files are.");
    if (m_folder.isEmpty() || !QDir(m_folder).exists())
        return tr("The folder %1 does not exist.").arg(m_folder);
    if (m_fileName.contains(QLatin1Char('/'))) // It would lead into another folder.
        return tr("A file cannot have the name %1.").arg(m_fileName);
    return {};
}

void BundleTask::start()
{
    if (isRunning())
        return;
    const QString problem = obstacle();
    if (!problem.isEmpty()) {
        setStatus(Failed, problem);
        return;
    }
    m_isNameOurs = m_isNameOurs || m_fileName.isEmpty();
    if (m_isNameOurs)
        m_fileName = defaultFileName();
    m_isCanceled = false;
    m_status = Running;
    m_error.clear();
    m_path = QDir(m_folder).filePath(m_fileName);
    m_writer->start(m_path);
    // The bundle is under way before the signals, whose receivers may cancel it.
    if (m_isNameOurs)
        Q_EMIT fileNameChanged();
    showProgress(0);
    Q_EMIT statusChanged();
}

void BundleTask::cancel()
{
    if (!isRunning())
        return;
    m_isCanceled = true;
    m_writer->cancel();
}

void BundleTask::finish(bool isDone)
{
    if (isDone) {
        showProgress(1);
        Access::instance()->recordChange(QStringLiteral("Support bundle %1 written").arg(m_path));
    }
    if (isDone || !m_isCanceled)
        setStatus(isDone ? Done : Failed, m_writer->errorString());
    else
        setStatus(Canceled);
}

void BundleTask::showProgress(double progress)
{
    if (std::exchange(m_progress, progress) != progress)
        Q_EMIT progressChanged();
}

void BundleTask::setStatus(Status status, const QString& error)
{
    m_status = status;
    m_error = error;
    Q_EMIT statusChanged();
}

} // namespace zeltools::quick
