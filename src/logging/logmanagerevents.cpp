// The event history of the log manager: the kinds of events, and the pages of the events file.
#include "logging/logmanager.h"

#include "logging/eventpages_p.h"
#include "logging/logfileset_p.h"
#include "logging/logformatter.h"
#include "logging/logrenderer.h"

#include <QMetaEnum>
#include <QtAlgorithms>

namespace
{

EventSelection selection(LogManager::EventModuleFilter filter, const QString& startDate,
                         const QString& stopDate)
{
    QString kind;
    if (filter != LogManager::AllEvent)
        kind = LogRenderer::eventToString(LogManager::eventModuleFilterToEventModule(filter));
    return {kind, startDate, stopDate};
}

} // namespace

LogEventModule::EventModule LogManager::eventModuleFilterToEventModule(EventModuleFilter filter)
{
    const auto position = static_cast<uint>(filter);
    return static_cast<LogEventModule::EventModule>(position < 32 ? 1U << position : 0);
}

LogManager::EventModuleFilter
LogManager::eventModuleToEventModuleFilter(LogEventModule::EventModule event)
{
    const auto bits = static_cast<quint32>(event);
    const uint position = qPopulationCount(bits) == 1 ? qCountTrailingZeroBits(bits) : 32;
    return static_cast<EventModuleFilter>(position);
}

QStringList LogManager::eventModuleFilter() const
{
    const QMetaEnum filters = QMetaEnum::fromType<EventModuleFilter>();
    QStringList names;
    for (int i = 0; i < filters.keyCount(); ++i) {
        const auto filter = static_cast<EventModuleFilter>(filters.value(i));
        names.append(LogRenderer::eventToString(eventModuleFilterToEventModule(filter)));
    }
    return names;
}

QString LogManager::eventsText() const
{
    return m_pages->text();
}

QStringList LogManager::eventsTextList() const
{
    return m_pages->lines();
}

int LogManager::eventsPagesCount() const
{
    return m_pages->pagesCount();
}

void LogManager::updateEventsText(EventModuleFilter filter, const QString& strStartDate,
                                  const QString& strStopDate, int pageIndex, int eventsPerPage)
{
    flush(); // before the lock, which the writer of the ring needs
    // A receiver may wait for the writer of the ring, which needs the lock.
    const QMutexLocker locker(isBuffered() ? nullptr : m_files->mutex(Events));
    if (m_pages->publish(selection(filter, strStartDate, strStopDate), pageIndex, eventsPerPage))
        Q_EMIT eventsPagesCountChanged();
    Q_EMIT eventsTextChanged();
    Q_EMIT eventsTextListChanged();
}

QString LogManager::exportEventsHistory(EventModuleFilter filter, const QString& strStartDate,
                                        const QString& strStopDate, int pageIndex,
                                        int eventsPerPage)
{
    QString text;
    writeEventsText(text, filter, strStartDate, strStopDate, pageIndex, eventsPerPage);
    return text;
}

int LogManager::writeEventsText(QString& text, EventModuleFilter filter,
                                const QString& strStartDate, const QString& strStopDate,
                                int pageIndex, int eventsPerPage)
{
    flush();
    return m_pages->write(text, selection(filter, strStartDate, strStopDate), pageIndex,
                          eventsPerPage);
}

EventHistory::Page LogManager::eventsPage(EventModuleFilter filter, const QString& strStartDate,
                                          const QString& strStopDate, int pageIndex,
                                          int eventsPerPage)
{
    flush();
    return m_pages->page(selection(filter, strStartDate, strStopDate), pageIndex, eventsPerPage);
}

QVector<int> LogManager::findEventsInFile(QString& text, bool indexOnly, const QString& fileName,
                                          EventModuleFilter filter, const QString& strStartDate,
                                          const QString& strStopDate,
                                          const QVector<int>& lineIndexes, int first, int count)
{
    flush();
    if (indexOnly)
        return m_pages->matches(fileName, selection(filter, strStartDate, strStopDate));
    m_pages->appendLines(text, fileName, lineIndexes, first, count);
    return lineIndexes;
}

void LogManager::qmlEventLogParameter(const QString& log)
{
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::MenuParameter) << log;
}
