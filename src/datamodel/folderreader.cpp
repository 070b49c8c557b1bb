#include "datamodel/folderreader_p.h"

#include <QCoreApplication>
#include <QThreadPool>

namespace tools::datamodel
{

namespace
{

constexpr int s_minimumPause_ms = 100; // Changes within this time are read together.
constexpr int s_maximumThreads = 16;   // more than there are disks that hang
constexpr int s_maximumWaitAtExit_ms = 1000;

// A pool of its own, so that a hanging disk does not block the application's global pool. It is
// never deleted, since a pool waits for its threads when it is deleted.
QThreadPool& threadPool()
{
    static QThreadPool* const pool = [] {
        auto* const threads = new QThreadPool;
        threads->setMaxThreadCount(s_maximumThreads);
        // A listing that does not hang ends before the static objects that it uses.
        qAddPostRoutine([] { threadPool().waitForDone(s_maximumWaitAtExit_ms); });
        return threads;
    }();
    return *pool;
}

} // namespace

FolderReader::FolderReader(const FolderRows& rows)
    : m_rows(rows)
{
    m_watch.setParent(this);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &FolderReader::list);
    connect(&m_watch, &FolderWatch::changed, this, [this] { schedule(m_pause_ms); });
}

FolderReader::~FolderReader()
{
    if (m_listing)
        m_listing->abandon();
}

void FolderReader::setFolder(const QString& path)
{
    if (m_listing)
        m_listing->abandon();
    m_listing.reset();
    ++m_serial; // A finished() signal of that listing may be in the event queue.
    m_watch.stop();
    m_query.folder = path;
    m_timer.stop();
}

void FolderReader::resume()
{
    m_isPaused = false;
    if (m_isStale)
        schedule(m_pause_ms);
}

// A listing is scheduled earlier if necessary but never later: otherwise a continuous series of
// changes would postpone it for ever.
void FolderReader::schedule(int delay_ms)
{
    if (!m_timer.isActive() || m_timer.remainingTime() > delay_ms)
        m_timer.start(delay_ms);
}

void FolderReader::list()
{
    if (m_query.folder.isEmpty())
        return;
    m_isStale = m_isPaused || m_listing;
    if (m_isStale)
        return;
    m_listing = std::make_shared<FolderListing>(++m_serial, m_query, m_rows);
    connect(m_listing.get(), &FolderListing::finished, this, &FolderReader::finish,
            Qt::QueuedConnection);
    threadPool().start([listing = m_listing] { listing->run(); });
}

void FolderReader::finish(int serial)
{
    if (serial != m_serial)
        return;
    const std::shared_ptr<FolderListing> listing = std::move(m_listing);
    if (listing->isCanceled()) {
        list();
        return;
    }
    m_pause_ms = qMax(s_minimumPause_ms, 4 * listing->duration_ms());
    Q_EMIT listed(*listing);
    if (serial != m_serial)
        return;
    if (m_watch.follow(*listing))
        schedule(m_pause_ms);
    Q_EMIT followed(*listing);
}

} // namespace tools::datamodel
