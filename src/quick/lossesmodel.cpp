#include "quick/lossesmodel.h"

#include "logging/logmanager.h"
#include "path.h"
#include "quick/frameupdates_p.h"
#include "quick/lognames_p.h"
#include "quick/rowsupdate_p.h"

#include <utility>

namespace zeltools::quick
{

LossesModel::LossesModel(QObject* parent)
    : CountedModel(parent)
    , m_updates(std::make_unique<FrameUpdates>([this] { update(); }))
{
    followLanguage();
    if (!Path::exists())
        return;
    connect(LogManager::instance(), &LogManager::lossesChanged, m_updates.get(),
            &FrameUpdates::request);
    update();
}

LossesModel::~LossesModel() = default;

void LossesModel::update()
{
    const LogLosses losses = LogManager::instance()->losses();
    QVector<Row> rows;
    for (auto level = losses.lines.cbegin(); level != losses.lines.cend(); ++level) {
        for (auto module = level->cbegin(); module != level->cend(); ++module)
            rows.append({int(level.key()), module.key(), double(module.value())});
    }
    RowsUpdate::apply(*this, m_rows, rows,
                      [](const Row& row) { return std::make_pair(row.level, row.module); });
    if (double(losses.total) == m_total)
        return;
    m_total = double(losses.total);
    Q_EMIT totalChanged();
}

int LossesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant LossesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows.at(index.row());
    switch (role) {
    case LevelRole:
        return row.level;
    case LevelNameRole:
        return lognames::level(row.level);
    case Qt::DisplayRole:
    case ModulesRole:
        return row.module;
    case LinesRole:
        return row.lines;
    default:
        return {};
    }
}

QHash<int, QByteArray> LossesModel::roleNames() const
{
    return {{LevelRole, "level"},
            {LevelNameRole, "levelName"},
            {ModulesRole, "modules"},
            {LinesRole, "lines"}};
}

} // namespace zeltools::quick
