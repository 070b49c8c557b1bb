// The event history of LogManager, read from the files.

#include "logging/logmanager.h"

#include "logging/eventhistory.h"
#include "logging/log.h"
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

void reportReadError(const QString& error)
{
    if (!error.isEmpty())
        LogFormatter(LogLevel::Error).log(Log::Global).noquote() << "Event history:" << error;
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
    return m_eventsText;
}

QStringList LogManager::eventsTextList() const
{
    const QMutexLocker locker(mutexOf(Events));
    return m_eventsText.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

int LogManager::eventsPagesCount() const
{
    return m_eventsPagesCount;
}

void LogManager::updateEventsText(EventModuleFilter filter, const QString& strStartDate,
                                  const QString& strStopDate, int pageIndex, int eventsPerPage)
{
    const QMutexLocker locker(mutexOf(Events));
    const int pages =
        writeEventsText(m_eventsText, filter, strStartDate, strStopDate, pageIndex, eventsPerPage);
    if (pages != m_eventsPagesCount) {
        m_eventsPagesCount = pages;
        Q_EMIT eventsPagesCountChanged();
    }
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
    const QMutexLocker locker(mutexOf(Events));
    const RotatingLogFile* events = m_files->file(Events);
    const EventHistory::Page page = EventHistory::page(
        events != nullptr ? events->filenames(RotatingLogFile::OldestFirst) : QStringList(),
        selection(filter, strStartDate, strStopDate), pageIndex, eventsPerPage);
    reportReadError(page.error);
    text = page.lines.join(QLatin1Char('\n'));
    return page.pagesCount;
}

QVector<int> LogManager::findEventsInFile(QString& text, bool indexOnly, const QString& fileName,
                                          EventModuleFilter filter, const QString& strStartDate,
                                          const QString& strStopDate,
                                          const QVector<int>& lineIndexes, int first, int count)
{
    const QMutexLocker locker(mutexOf(Events));
    QString error;
    QVector<int> numbers = lineIndexes;
    if (indexOnly)
        numbers =
            EventHistory::matches(fileName, selection(filter, strStartDate, strStopDate), error);
    else
        EventHistory::appendLines(text, fileName, lineIndexes, first, count, error);
    reportReadError(error);
    return numbers;
}

void LogManager::enableModuleEvent(const LogEventModule::EventModule& event)
{
    m_enabledEvents |= static_cast<quint32>(event);
}

void LogManager::disableModuleEvent(const LogEventModule::EventModule& event)
{
    m_enabledEvents &= ~static_cast<quint32>(event);
}

quint32 LogManager::enabledEvents() const
{
    return m_enabledEvents;
}

void LogManager::setEventUser(const QString& user)
{
    m_eventUser = user;
}

QString LogManager::eventUser() const
{
    return m_eventUser;
}

void LogManager::qmlEventLogParameter(const QString& log)
{
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::MenuParameter) << log;
}

void LogManager::emitEventModuleFilterChangeTrad()
{
    Q_EMIT eventModuleFilterChangeTrad();
}
