#include "quick/bundletask.h"

#include "path.h"
#include "quick/access.h"
#include "quick/bundlewriter_p.h"
#include "quick/language_p.h"

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
    connect(Language::instance(), &Language::changed, this, &BundleTask::statusChanged);
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

BundleTask::Obstacle BundleTask::obstacle() const
{
    if (!m_writer)
        return {QT_TR_NOOP("The library on this machine was built without support bundles."), {}};
    if (!Path::exists() || Path::instance()->debugLogsDir.isEmpty())
        return {QT_TR_NOOP("The application does not tell where its files are."), {}};
    if (m_folder.isEmpty() || !QDir(m_folder).exists())
        return {QT_TR_NOOP("The folder %1 does not exist."), m_folder};
    if (m_fileName.contains(QLatin1Char('/'))) // It would lead into another folder.
        return {QT_TR_NOOP("A file cannot have the name %1."), m_fileName};
    return {};
}

QString BundleTask::error() const
{
    if (m_obstacle.text == nullptr)
        return m_error;
    QString text = tr(m_obstacle.text);
    return text.replace(QLatin1String("%1"), m_obstacle.argument);
}

void BundleTask::start()
{
    if (isRunning())
        return;
    m_obstacle = obstacle();
    if (m_obstacle.text != nullptr) {
        setStatus(Failed);
        return;
    }
    m_isNameOurs = m_isNameOurs || m_fileName.isEmpty();
    if (m_isNameOurs)
        m_fileName = defaultFileName();
    m_isCanceled = false;
    m_status = Running;
    m_error.clear();
    const QString path = QDir(m_folder).filePath(m_fileName);
    // The line is written first, so that no complete bundle can lack it: the program may end before
    // it learns that the file is there. The user, too, is that of now.
    Access::instance()->recordChange(QStringLiteral("Support bundle %1 begun").arg(path));
    m_writer->start(path);
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
    if (isDone)
        showProgress(1);
    const bool hasFailed = !isDone && !m_isCanceled;
    m_error = hasFailed ? m_writer->errorString() : QString();
    setStatus(isDone ? Done : hasFailed ? Failed : Canceled);
}

void BundleTask::showProgress(double progress)
{
    if (std::exchange(m_progress, progress) != progress)
        Q_EMIT progressChanged();
}

void BundleTask::setStatus(Status status)
{
    m_status = status;
    Q_EMIT statusChanged();
}

} // namespace zeltools::quick
