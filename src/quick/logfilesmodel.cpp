#include "quick/logfilesmodel.h"

#include "logging/logmanager.h"
#include "path.h"

#include <QCoreApplication>
#include <QDir>

#include <array>

namespace zeltools::quick
{

namespace
{

// In the order of LogManager::LogFileId.
constexpr std::array<const char*, 5> s_names{
    QT_TRANSLATE_NOOP("LogFiles", "General"), QT_TRANSLATE_NOOP("LogFiles", "Events"),
    QT_TRANSLATE_NOOP("LogFiles", "Grinder"), QT_TRANSLATE_NOOP("LogFiles", "Capsules"),
    QT_TRANSLATE_NOOP("LogFiles", "Actuator board")};

} // namespace

LogFilesModel::LogFilesModel(QObject* parent)
    : CountedModel(parent)
    , m_hasFiles(Path::exists())
{
    if (!m_hasFiles)
        return;
    followLanguage();
    connect(LogManager::instance(), &LogManager::logFilesHealthChanged, this,
            [this] { Q_EMIT dataChanged(index(0), index(count() - 1)); });
}

LogFilesModel::~LogFilesModel() = default;

int LogFilesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !m_hasFiles ? 0 : int(s_names.size());
}

QVariant LogFilesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto id = LogManager::LogFileId(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return QCoreApplication::translate("LogFiles", s_names[size_t(id)]);
    case PathRole:
        return QDir::cleanPath(LogManager::instance()->filePath(id));
    case IsHealthyRole:
        return LogManager::instance()->fileHealth(id).isHealthy;
    case ProblemRole:
        return LogManager::instance()->fileHealth(id).reason;
    case LinesNotWrittenRole:
        return double(LogManager::instance()->fileHealth(id).linesNotWritten);
    default:
        return {};
    }
}

QHash<int, QByteArray> LogFilesModel::roleNames() const
{
    return {{NameRole, "name"},
            {PathRole, "path"},
            {IsHealthyRole, "isHealthy"},
            {ProblemRole, "problem"},
            {LinesNotWrittenRole, "linesNotWritten"}};
}

} // namespace zeltools::quick
