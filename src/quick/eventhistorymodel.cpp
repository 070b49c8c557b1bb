#include "quick/eventhistorymodel.h"

#include "path.h"
#include "quick/displaytext_p.h"
#include "quick/eventkinds_p.h"
#include "quick/eventline_p.h"
#include "quick/eventreading_p.h"
#include "quick/frameupdates_p.h"
#include "quick/rowsupdate_p.h"

#include <QDate>

#include <algorithm>
#include <utility>

namespace zeltools::quick
{

EventHistoryModel::EventHistoryModel(QObject* parent)
    : CountedModel(parent)
    , m_query(std::make_unique<EventQuery>())
    , m_shownQuery(std::make_unique<EventQuery>())
    , m_updates(std::make_unique<FrameUpdates>([this] { read(); }))
    , m_endOfReading(std::make_unique<FrameUpdates>([this] { finish(); }))
{
    followLanguage();
    connect(this, &CountedModel::languageChanged, this, [this] {
        if (m_status == Failed) // The reason is a text.
            m_updates->request();
    });
    const auto request = [this] { m_updates->request(); };
    if (Path::exists())
        connect(LogManager::instance(), &LogManager::eventLogged, this, request);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, request);
    request();
}

EventHistoryModel::~EventHistoryModel() = default;

int EventHistoryModel::kind() const
{
    return m_query->kind;
}

void EventHistoryModel::setKind(int kind)
{
    change(&EventQuery::kind,
           eventkinds::isFilter(kind) ? LogManager::EventModuleFilter(kind) : LogManager::AllEvent,
           &EventHistoryModel::kindChanged);
}

QVariantList EventHistoryModel::kinds() const
{
    return eventkinds::filters();
}

QString EventHistoryModel::from() const
{
    return m_query->from;
}

void EventHistoryModel::setFrom(const QString& date)
{
    change(&EventQuery::from, date, &EventHistoryModel::fromChanged);
}

QString EventHistoryModel::to() const
{
    return m_query->to;
}

void EventHistoryModel::setTo(const QString& date)
{
    change(&EventQuery::to, date, &EventHistoryModel::toChanged);
}

int EventHistoryModel::rowsPerPage() const
{
    return m_query->rowsPerPage;
}

void EventHistoryModel::setRowsPerPage(int rows)
{
    change(&EventQuery::rowsPerPage, std::max(rows, 1), &EventHistoryModel::rowsPerPageChanged);
}

int EventHistoryModel::page() const
{
    return m_query->page;
}

void EventHistoryModel::setPage(int page)
{
    movePage(std::max(page, 0));
}

template <typename Value>
void EventHistoryModel::change(Value EventQuery::*member, const Value& value,
                               void (EventHistoryModel::*changed)())
{
    if ((*m_query).*member == value)
        return;
    (*m_query).*member = value;
    movePage(0);
    requestReading();
    Q_EMIT(this->*changed)();
}

void EventHistoryModel::movePage(int page)
{
    if (std::exchange(m_query->page, page) == page)
        return;
    requestReading();
    Q_EMIT pageChanged();
}

// A change by the user does not wait for the pause between two readings.
void EventHistoryModel::requestReading()
{
    setStatus(Loading);
    m_updates->setInterval(0);
    m_updates->request();
}

void EventHistoryModel::read()
{
    m_isStale = m_reading != nullptr;
    if (m_isStale)
        return;
    const QString reason = obstacle();
    if (!reason.isEmpty()) {
        show(*m_query, QStringList(), 0);
        setStatus(Failed, reason);
        return;
    }
    const QString folder = Path::instance()->eventLogsDir;
    if (m_watcher.directories().isEmpty())
        m_watcher.addPath(folder);
    m_reading = std::make_shared<EventReading>(*m_query);
    EventReading::start(m_reading, m_endOfReading->trigger());
}

// The log manager would end a process that has no path layout.
QString EventHistoryModel::obstacle() const
{
    if (!Path::exists() || Path::instance()->eventLogsDir.isEmpty())
        return tr("This program has no folders for log files.");
    for (const QString& date : {m_query->from, m_query->to}) {
        if (!date.isEmpty() && !QDate::fromString(date, QStringLiteral("dd/MM/yyyy")).isValid())
            return tr("“%1” is not a date. Write the day, month and year as 31/12/2026.").arg(date);
    }
    return {};
}

void EventHistoryModel::finish()
{
    if (m_reading == nullptr || !m_reading->isDone())
        return;
    const std::shared_ptr<EventReading> reading = std::move(m_reading);
    if (reading->query != *m_query) {
        read();
        return;
    }
    constexpr int pauseFactor = 10; // reads for at most a tenth of the time
    m_updates->setInterval(pauseFactor * reading->duration_ms);
    if (m_isStale)
        m_updates->request();
    if (m_query->page > 0 && m_query->page >= reading->pagesCount) {
        movePage(std::max(reading->pagesCount - 1, 0));
        return;
    }
    show(reading->query, reading->lines, reading->pagesCount);
    if (reading->query == *m_query) // A receiver of a signal may have changed it.
        setStatus(reading->error.isEmpty() ? Ready : Failed, reading->error);
}

void EventHistoryModel::setStatus(Status status, const QString& error)
{
    if (status == m_status && error == m_error)
        return;
    m_status = status;
    m_error = error;
    Q_EMIT statusChanged();
}

// New events move the lines of a page down, and the last ones leave it.
void EventHistoryModel::show(const EventQuery& query, const QStringList& lines, int pagesCount)
{
    if (std::exchange(*m_shownQuery, query) == query) {
        RowsUpdate::apply(*this, m_lines, lines, [](const QString& line) { return line; });
    } else {
        beginResetModel();
        m_lines = lines;
        endResetModel();
    }
    if (std::exchange(m_pagesCount, pagesCount) != pagesCount)
        Q_EMIT pagesCountChanged();
}

int EventHistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

QVariant EventHistoryModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const EventLine line(m_lines.at(index.row()));
    switch (role) {
    case TimeRole:
        return line.time;
    case KindRole:
        return eventkinds::shownName(line.kind);
    case Qt::DisplayRole:
    case TextRole:
        return DisplayText(line.text).text;
    case IsCutRole:
        return DisplayText(line.text).isCut;
    case FullTextRole:
        return DisplayText::lines(line.text);
    default:
        return {};
    }
}

QHash<int, QByteArray> EventHistoryModel::roleNames() const
{
    return {{TimeRole, "time"},
            {KindRole, "kind"},
            {TextRole, "text"},
            {IsCutRole, "isCut"},
            {FullTextRole, "fullText"}};
}

} // namespace zeltools::quick
