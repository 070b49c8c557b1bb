#include "logfolder.h"

#include <zeltools/path.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QTimer>

#include <functional>

using namespace std::chrono_literals;
using tools::datamodel::FolderListModel;

namespace
{

void runLoopUntil(const std::function<bool()>& isDone)
{
    QEventLoop loop;
    QTimer look; // The state of the disk is checked again without an event.
    look.start(20ms);
    const QDeadlineTimer deadline(10s);
    while (!isDone() && !deadline.hasExpired())
        loop.processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

LogFolder::LogFolder()
{
    const auto count = [this] { ++m_changes; };
    QObject::connect(&m_model, &FolderListModel::rowsInserted, count);
    QObject::connect(&m_model, &FolderListModel::rowsRemoved, count);
    QObject::connect(&m_model, &FolderListModel::rowsMoved, count);
    QObject::connect(&m_model, &FolderListModel::dataChanged, count);
    m_model.setNameFilters({QStringLiteral("*.log"), QStringLiteral("*.log.1")});
    m_model.setFolder(Path::instance()->debugLogsDir);
    runLoopUntil([this] { return m_model.status() == FolderListModel::Ready; });
}

bool LogFolder::isUpToDate() const
{
    const QFileInfoList files = QDir(m_model.folder()).entryInfoList(m_model.nameFilters());
    for (int row = 0; row < files.size(); ++row) {
        const QModelIndex index = m_model.index(row);
        if (index.data(FolderListModel::PathRole).toString() != files[row].filePath() ||
            index.data(FolderListModel::SizeRole).toLongLong() != files[row].size())
            return false;
    }
    return m_model.count() == files.size() && !files.isEmpty() &&
           files.last().fileName().endsWith(QLatin1String(".1"));
}

bool LogFolder::show(QTextStream& out)
{
    runLoopUntil([this] { return isUpToDate(); });
    out << "\nThe folder of the log files, after " << m_changes << " changes:\n";
    for (int row = 0; row < m_model.count(); ++row) {
        const QModelIndex index = m_model.index(row);
        out << "  " << index.data(FolderListModel::NameRole).toString() << ", "
            << index.data(FolderListModel::SizeRole).toLongLong() << " bytes\n";
    }
    out.flush();
    return isUpToDate();
}
