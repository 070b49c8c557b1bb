#include "logging/logmanager.h"

#include "logging/debugmodules.h"
#include "logging/deliverycontrol_p.h"
#include "logging/eventpages_p.h"
#include "logging/log.h"
#include "logging/logbuffer_p.h"
#include "logging/logfileset_p.h"
#include "logging/logformatter.h"
#include "logging/logline_p.h"
#include "logging/lognode.h"
#include "logging/logrenderer.h"
#include "logging/logrouter_p.h"
#include "logging/qtlogging_p.h"
#include "logging/sinklist_p.h"
#include "path.h"

#include <QDateTime>
#include <QMetaEnum>
#include <QThread>
#include <QtAlgorithms>

#include <cstdio>
#include <cstdlib>

namespace
{

// The process ends because there is no path layout. The lines that destructors log then must not
// create the manager.
std::atomic<bool> s_isRefused{false};

EventSelection selection(LogManager::EventModuleFilter filter, const QString& startDate,
                         const QString& stopDate)
{
    QString kind;
    if (filter != LogManager::AllEvent)
        kind = LogRenderer::eventToString(LogManager::eventModuleFilterToEventModule(filter));
    return {kind, startDate, stopDate};
}

} // namespace

// The receiver is registered when the library is loaded, so that the first event line creates the
// manager.
const bool LogManager::s_receivesEvents =
    LogNode::setEventReceiver([](LogEventModule::EventModule event, const QString& message) {
        if (!s_isRefused)
            instance()->emitLogEvent(event, {message});
    });

const QString LogManager::APP_STARTED_MSG = QStringLiteral("Application started");

LogManager* LogManager::instance()
{
    static auto* const manager = new LogManager;
    return manager;
}

LogManager::LogManager()
    : m_files(std::make_unique<LogFileSet>())
    , m_sinks(std::make_unique<SinkList>())
    , m_router(std::make_unique<LogRouter>(*this, *m_files, *m_sinks))
    , m_delivery(std::make_unique<DeliveryControl>(*m_files, *m_sinks))
    , m_pages(std::make_unique<EventPages>(*m_files))
    , m_categoryRules(std::make_unique<QtCategoryRules>())
{
    if (!Path::exists()) {
        std::puts("LogManager::LogManager(): Fatal error, path is not defined, "
                  "initialize global path first");
        s_isRefused = true;
        std::exit(1);
    }
    registerTypes();
    constexpr int syncInterval_ms = 60000;
    m_syncTimer.setInterval(syncInterval_ms);
    connect(&m_syncTimer, &QTimer::timeout, this, &LogManager::syncLogs);
}

LogManager::~LogManager()
{
    m_syncTimer.stop();
}

void LogManager::initialize()
{
    LogManager* manager = instance();
    registerTypes();
    manager->initLogFiles();
    manager->connectNode(LogNode::instance());
}

void LogManager::registerTypes()
{
    qRegisterMetaType<LogLevel>("LogLevel");
    qRegisterMetaType<LogLevel::Level>("LogLevel::Level");
    qRegisterMetaType<LogModules>("Log::Modules");
    qRegisterMetaType<LogEventModule::EventModule>("LogEventModule::EventModule");
}

bool LogManager::connectNode(QObject* node)
{
    m_router->setQueueing(qgetenv("LOG_FROM_MAIN_THREAD") == "1");
    node->disconnect(this);
    const QMetaObject::Connection connection =
        connect(node, SIGNAL(logged(LogLevel::Level, Log::Modules, QString)), this,
                SLOT(log(LogLevel::Level, Log::Modules, QString)), Qt::DirectConnection);
    if (node == LogNode::s_instance)
        LogNode::setManagerConnection(connection);
    return bool(connection);
}

bool LogManager::isPrinted(LogLevel::Level level, const LogModules& modules) const
{
    return level > LogLevel::Debug || DebugModules::shared().containsOneOf(modules);
}

void LogManager::initLogFiles()
{
    static const LogFileSet::Settings settings =
        LogFileSet::settings(Path::instance()->debugLogsDir, Path::instance()->eventLogsDir);
    m_delivery->openFiles(settings);
    enableLogToFile(m_router->isGeneralFileEnabled()); // for a new ring, too
}

void LogManager::finalizeLogFiles()
{
    if (thread() == QThread::currentThread())
        m_router->writeQueuedLines(); // while the files are still open
    m_delivery->closeFiles();
}

bool LogManager::setDelivery(const LogDelivery& delivery)
{
    const bool isDone = m_delivery->set(delivery);
    enableLogToFile(m_router->isGeneralFileEnabled());
    return isDone;
}

LogDelivery LogManager::delivery() const
{
    return m_delivery->settings();
}

bool LogManager::isBuffered() const
{
    return LogBuffer::current() != nullptr;
}

bool LogManager::flush(std::chrono::milliseconds timeout)
{
    LogBuffer* const buffer = LogBuffer::current();
    return buffer == nullptr || buffer->flush(timeout);
}

LogLosses LogManager::losses() const
{
    return LogBuffer::losses();
}

void LogManager::addSink(LogSink* sink)
{
    m_sinks->add(sink);
}

void LogManager::removeSink(LogSink* sink)
{
    m_sinks->remove(sink);
}

void LogManager::syncLogs()
{
    m_files->sync();
}

void LogManager::log(LogLevel::Level level, const Log::Modules& modules, const QString& message)
{
    m_router->log(level, modules, message);
}

void LogManager::log(const QString& line)
{
    m_router->writeGeneralLine(line);
}

void LogManager::logFailure(const QString& line)
{
    m_router->writeFailure(line);
}

void LogManager::logEvent(const QString& line)
{
    m_router->writeEvent(line);
}

void LogManager::grinderEvent(const QString& line)
{
    m_router->writeGrinder(line);
}

void LogManager::capsuleEvent(const QString& line)
{
    m_router->writeToFile(Capsule, line);
}

void LogManager::m4ActuatorBoardLog(const QString& line)
{
    m_router->writeToFile(M4ActuatorBoard, line);
}

void LogManager::writeLogFile(LogFileId id, const QString& text)
{
    m_router->writeBytes(id, text.toLocal8Bit());
}

void LogManager::qtMessageHandler(QtMsgType type, const QMessageLogContext& context,
                                  const QString& message)
{
    messageHandler(type, context, message);
    if (!s_isRefused)
        Q_EMIT instance()->qtLogged(message);
}

void LogManager::messageHandler(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    const std::optional<LogLevel::Level> level = qtMessageLevel(type, message);
    if (!level)
        return;
    if (s_isRefused)
        LogLine(*level, message, QDateTime::currentMSecsSinceEpoch()).print();
    else
        instance()->m_router->writeGeneral(*level, message, LogModules());
}

void LogManager::enableLogToFile(bool enable)
{
    m_router->setGeneralFileEnabled(enable);
    if (LogBuffer* const buffer = LogBuffer::current())
        buffer->setGeneralFileEnabled(enable);
}

void LogManager::enableModuleDebugging(const LogModule& module)
{
    DebugModules::shared().add(module);
}

void LogManager::disableModuleDebugging(const LogModule& module)
{
    DebugModules::shared().remove(module);
}

void LogManager::enableModulesDebuggingFromEnvVars()
{
    const QStringList added = DebugModules::shared().updateFromEnvVars();
    if (!added.isEmpty()) {
        LogFormatter(LogLevel::Info).log(Log::Global)
            << "Debugging was enabled from env variables for the following modules:"
            << added.join(QLatin1Char(','));
    }
}

void LogManager::enableQLoggingCategoryFilterRules(const QStringList& categories, bool enable)
{
    m_categoryRules->add(categories, enable);
}

void LogManager::emitStartApplicationEvent()
{
    if (m_startEventEmitted)
        return;
    m_startEventEmitted = true;
    emitLogEvent(LogEventModule::ApplicationStartEvent, {APP_STARTED_MSG});
}

QString LogManager::logContent(bool truncate)
{
    constexpr int threshold = 5000;
    constexpr int kept = 50000;
    flush();
    QString content = m_files->totalContent(General);
    if (!truncate || content.size() <= threshold)
        return content;
    return QLatin1String("---- Log truncated ----\r\n") + content.right(kept);
}

QString LogManager::eventLogTotalContent()
{
    flush();
    return m_files->totalContent(Events);
}

QString LogManager::appLogFilePath()
{
    const RotatingLogFile* log = m_files->file(General);
    return log != nullptr ? log->primaryFilename() : QString();
}

void LogManager::setAppLogFileMaximumSizeMiB(double size_MiB)
{
    if (RotatingLogFile* log = m_files->file(General))
        log->setMaximumSizeMiB(size_MiB);
    if (LogBuffer* const buffer = LogBuffer::current())
        buffer->describeFiles();
}

void LogManager::setAppLogFileSecondaryFilesCount(int count)
{
    if (RotatingLogFile* log = m_files->file(General))
        log->setSecondaryFilesCount(count);
    if (LogBuffer* const buffer = LogBuffer::current())
        buffer->describeFiles();
}

void LogManager::deleteLogFile(LogFileId id)
{
    flush();
    if (RotatingLogFile* log = m_files->file(id))
        log->deleteFile();
}

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
    const QMutexLocker locker(m_files->mutex(Events));
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
