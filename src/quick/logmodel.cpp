#include "quick/logmodel.h"

#include "logging/logmanager.h"
#include "path.h"
#include "quick/displaytext_p.h"
#include "quick/frameupdates_p.h"
#include "quick/logcollector_p.h"
#include "quick/loglines_p.h"
#include "quick/lognames_p.h"
#include "quick/pastlines_p.h"

#include <QDateTime>

#include <algorithm>
#include <limits>
#include <utility>

namespace zeltools::quick
{

LogModel::LogModel(QObject* parent)
    : CountedModel(parent)
    , m_lines(std::make_unique<LogLines>())
    , m_updates(std::make_unique<FrameUpdates>([this] { update(); }))
    , m_collector(std::make_unique<LogCollector>(*m_updates))
{
    followLanguage();
    if (Path::exists()) {
        LogManager::instance()->addSink(m_collector.get());
        m_past = std::make_shared<PastLines>();
    }
    m_updates->request();
}

LogModel::~LogModel()
{
    if (Path::exists())
        LogManager::instance()->removeSink(m_collector.get());
}

template <typename Change>
void LogModel::changeFilter(const Change& change)
{
    LogFilter filter = m_lines->filter();
    change(filter);
    beginResetModel();
    m_lines->setFilter(filter);
    endResetModel();
}

int LogModel::level() const
{
    return m_lines->filter().level();
}

void LogModel::setLevel(int level)
{
    const bool isLevel = level >= 0 && level <= int(LogLevel::Critical);
    const auto lowest = isLevel ? LogLevel::Level(level) : LogLevel::Debug;
    if (lowest == m_lines->filter().level())
        return;
    changeFilter([lowest](LogFilter& filter) { filter.setLevel(lowest); });
    Q_EMIT levelChanged();
}

QVariantList LogModel::levels() const
{
    return lognames::levels();
}

QString LogModel::module() const
{
    return m_lines->filter().module();
}

void LogModel::setModule(const QString& name)
{
    if (name == module())
        return;
    changeFilter([&name](LogFilter& filter) { filter.setModule(name); });
    Q_EMIT moduleChanged();
}

QString LogModel::filter() const
{
    return m_lines->filter().text();
}

void LogModel::setFilter(const QString& text)
{
    if (text == filter())
        return;
    changeFilter([&text](LogFilter& filter) { filter.setText(text); });
    Q_EMIT filterChanged();
}

void LogModel::setIncludesPast(bool on)
{
    if (std::exchange(m_includesPast, on) == on)
        return;
    m_updates->request();
    Q_EMIT includesPastChanged();
}

int LogModel::maximumRows() const
{
    return int(m_lines->maximumLines());
}

void LogModel::setMaximumRows(int count)
{
    constexpr int limit = 100000;
    count = std::clamp(count, 1, limit);
    if (count == maximumRows())
        return;
    m_lines->setMaximumLines(size_t(count));
    m_collector->setMaximumLines(size_t(count));
    removeFirst(m_lines->surplus({}));
    Q_EMIT maximumRowsChanged();
}

void LogModel::setPaused(bool on)
{
    if (std::exchange(m_isPaused, on) == on)
        return;
    m_updates->request();
    Q_EMIT pausedChanged();
}

void LogModel::clear()
{
    m_past.reset();
    m_collector->take([](const LogCollector::Lines&) {});
    removeFirst(m_lines->count());
}

void LogModel::update()
{
    if (m_isPaused)
        return;
    addFresh();
    if (m_includesPast && m_past != nullptr)
        addPast();
}

// A line that another thread has logged while the model was created may be there already.
void LogModel::addPast()
{
    if (!std::exchange(m_isPastRequested, true))
        PastLines::start(m_past, m_updates->trigger());
    if (!m_past->isDone())
        return;
    std::deque<KeptLine> past = std::move(m_past->lines);
    m_past.reset();
    m_lines->trimPast(past);
    const int added = m_lines->acceptedAmong(past);
    if (added > 0)
        beginInsertRows(QModelIndex(), 0, added - 1);
    m_lines->prepend(past);
    if (added > 0)
        endInsertRows();
}

void LogModel::addFresh()
{
    std::deque<KeptLine> fresh;
    quint64 lost = m_collector->take(
        [&fresh](const LogCollector::Lines& lines) { LogLines::decode(lines, fresh); });
    lost += m_lines->trim(fresh);
    const Update update(*this);
    removeFirst(m_lines->surplus(fresh));
    const int first = count();
    const int added = m_lines->acceptedAmong(fresh);
    if (added > 0)
        beginInsertRows(QModelIndex(), first, first + added - 1);
    m_lines->append(fresh);
    if (added > 0)
        endInsertRows();
    addLost(lost);
}

void LogModel::removeFirst(size_t count)
{
    const int shown = m_lines->shownAmong(count);
    if (shown > 0)
        beginRemoveRows(QModelIndex(), 0, shown - 1);
    m_lines->removeFirst(count);
    if (shown > 0)
        endRemoveRows();
}

void LogModel::addLost(quint64 count)
{
    if (count == 0)
        return;
    constexpr quint64 limit = std::numeric_limits<int>::max();
    m_lostLines = int(std::min(quint64(m_lostLines) + count, limit));
    Q_EMIT lostLinesChanged();
}

int LogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_lines->shownCount();
}

QVariant LogModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const KeptLine& line = m_lines->shownLine(index.row());
    switch (role) {
    case TimeRole:
        return QDateTime::fromMSecsSinceEpoch(line.time_ms);
    case LevelRole:
        return int(line.level);
    case LevelNameRole:
        return lognames::level(int(line.level));
    case ModulesRole:
        return lognames::modules(line.modules);
    case Qt::DisplayRole:
    case TextRole:
        return DisplayText(line.text).text;
    case IsCutRole:
        return line.isCut || DisplayText(line.text).isCut;
    case FullTextRole:
        return DisplayText::lines(line.text);
    case ThreadRole:
        return line.thread;
    default:
        return {};
    }
}

QHash<int, QByteArray> LogModel::roleNames() const
{
    return {{TimeRole, "time"},         {LevelRole, "level"},  {LevelNameRole, "levelName"},
            {ModulesRole, "modules"},   {TextRole, "text"},    {IsCutRole, "isCut"},
            {FullTextRole, "fullText"}, {ThreadRole, "thread"}};
}

} // namespace zeltools::quick
