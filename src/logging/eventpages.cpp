#include "logging/eventpages_p.h"

#include "logging/log.h"
#include "logging/logfileset_p.h"
#include "logging/logformatter.h"

#include <utility>

namespace
{

void reportReadError(const QString& error)
{
    if (!error.isEmpty())
        LogFormatter(LogLevel::Error).log(Log::Global).noquote() << "Event history:" << error;
}

} // namespace

EventPages::EventPages(LogFileSet& files)
    : m_files(files)
{
}

QStringList EventPages::lines() const
{
    const QMutexLocker locker(m_files.mutex(LogManager::Events));
    return m_text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool EventPages::publish(const EventSelection& selection, int pageIndex, int eventsPerPage)
{
    const int pages = write(m_text, selection, pageIndex, eventsPerPage);
    return std::exchange(m_pagesCount, pages) != pages;
}

int EventPages::write(QString& text, const EventSelection& selection, int pageIndex,
                      int eventsPerPage) const
{
    const QMutexLocker locker(m_files.mutex(LogManager::Events));
    const RotatingLogFile* events = m_files.file(LogManager::Events);
    const EventHistory::Page page = EventHistory::page(
        events != nullptr ? events->filenames(RotatingLogFile::OldestFirst) : QStringList(),
        selection, pageIndex, eventsPerPage);
    reportReadError(page.error);
    text = page.lines.join(QLatin1Char('\n'));
    return page.pagesCount;
}

QVector<int> EventPages::matches(const QString& fileName, const EventSelection& selection) const
{
    const QMutexLocker locker(m_files.mutex(LogManager::Events));
    QString error;
    QVector<int> numbers = EventHistory::matches(fileName, selection, error);
    reportReadError(error);
    return numbers;
}

void EventPages::appendLines(QString& text, const QString& fileName,
                             const QVector<int>& lineIndexes, int first, int count) const
{
    const QMutexLocker locker(m_files.mutex(LogManager::Events));
    QString error;
    EventHistory::appendLines(text, fileName, lineIndexes, first, count, error);
    reportReadError(error);
}
