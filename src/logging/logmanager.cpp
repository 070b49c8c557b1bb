#include "logging/logmanager.h"

#include "logging/debugmodules.h"
#include "logging/deliverycontrol_p.h"
#include "logging/eventpages_p.h"
#include "logging/fatalerror.h"
#include "logging/log.h"
#include "logging/logbuffer_p.h"
#include "logging/logfileset_p.h"
#include "logging/logformatter.h"
#include "logging/logline_p.h"
#include "logging/lognode.h"
#include "logging/logrouter_p.h"
#include "logging/qtlogging_p.h"
#include "logging/sinklist_p.h"
#include "path.h"

#include <QThread>

#include <cstdio>
#include <cstdlib>

#include <pthread.h>

namespace
{

// The process ends because there is no path layout. The lines that destructors log then must not
// create the manager.
std::atomic<bool> s_isRefused{false};

// instance() may wait for a thread that a forked child does not have.
std::atomic<LogManager*> s_manager{nullptr};

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
    : m_files(std::make_unique<LogFileSet>([this] { postHealthChange(); }))
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
    s_manager = this;
    LogBuffer::setLossReceiver([] { s_manager.load()->postLossesChange(); });
    pthread_atfork(nullptr, nullptr, [] { s_manager.load()->becomeChild(); });
    registerTypes();
    constexpr int syncInterval_ms = 60000;
    m_syncTimer.setInterval(syncInterval_ms);
    connect(&m_syncTimer, &QTimer::timeout, this, &LogManager::syncLogs);
}

LogManager::~LogManager()
{
    m_syncTimer.stop();
}

// A forked child has no writer thread, and locks of the parent's threads are never released in it.
// It delivers its own lines immediately, with files of its own.
void LogManager::becomeChild()
{
    LogBuffer::forgetInChild();
    m_sinks->forgetInChild();
    m_router->setQueueing(false);
    m_files->renewInChild();
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
        LogNode::setManagerConnection(
            connection, [](LogLevel::Level level, const Log::Modules& modules,
                           const QString& message) { instance()->log(level, modules, message); });
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
    m_router->folding().writeCount();
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
    m_router->folding().writeCount();
    LogBuffer* const buffer = LogBuffer::current();
    if (buffer != nullptr && thread() == QThread::currentThread())
        m_router->writeQueuedLines();
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
    if (type == QtFatalMsg)
        zeltools::announceFatalError(message.toUtf8().constData(), zeltools::FatalEnd::Abort);
    if (s_isRefused)
        LogLine(*level, message).print();
    else
        instance()->m_router->writeGeneral(*level, message, LogModules());
}

void LogManager::enableLogToFile(bool enable)
{
    m_router->setGeneralFileEnabled(enable);
    if (LogBuffer* const buffer = LogBuffer::current())
        buffer->setGeneralFileEnabled(enable);
}

void LogManager::setRepeatFolding(bool isFolding)
{
    // A host may return from main() without finalizeLogFiles().
    static const int handler = std::atexit([] { instance()->flush(); });
    Q_UNUSED(handler)
    m_router->folding().setEnabled(isFolding);
}

void LogManager::enableModuleDebugging(const LogModule& module)
{
    DebugModules::shared().add(module);
    Q_EMIT moduleDebuggingChanged();
}

void LogManager::disableModuleDebugging(const LogModule& module)
{
    DebugModules::shared().remove(module);
    Q_EMIT moduleDebuggingChanged();
}

void LogManager::enableModulesDebuggingFromEnvVars()
{
    const QStringList added = DebugModules::shared().updateFromEnvVars();
    if (!added.isEmpty()) {
        LogFormatter(LogLevel::Info).log(Log::Global)
            << "Debugging was enabled from env variables for the following modules:"
            << added.join(QLatin1Char(','));
    }
    Q_EMIT moduleDebuggingChanged();
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
    return filePath(General);
}

void LogManager::setAppLogFileMaximumSizeMiB(double size_MiB)
{
    if (RotatingLogFile* log = m_files->file(General))
        log->setMaximumSizeMiB(size_MiB);
    if (LogBuffer* const buffer = LogBuffer::current())
        buffer->places().describeSet();
}

void LogManager::setAppLogFileSecondaryFilesCount(int count)
{
    if (RotatingLogFile* log = m_files->file(General))
        log->setSecondaryFilesCount(count);
    if (LogBuffer* const buffer = LogBuffer::current())
        buffer->places().describeSet();
}

void LogManager::deleteLogFile(LogFileId id)
{
    flush();
    if (RotatingLogFile* log = m_files->file(id))
        log->deleteFile();
}

LogFileHealth LogManager::fileHealth(LogFileId id) const
{
    return m_files->health(id);
}

QString LogManager::filePath(LogFileId id) const
{
    const RotatingLogFile* const log = m_files->file(id);
    return log != nullptr ? log->primaryFilename() : QString();
}

bool LogManager::logFilesHealthy() const
{
    return m_files->isHealthy();
}

void LogManager::postHealthChange()
{
    postOnce(m_isHealthChangePosted, &LogManager::logFilesHealthChanged);
}

void LogManager::postLossesChange()
{
    postOnce(m_isLossesChangePosted, &LogManager::lossesChanged);
}

void LogManager::postOnce(std::atomic<bool>& isPosted, void (LogManager::*change)())
{
    if (isPosted.exchange(true))
        return;
    const auto announce = [this, &isPosted, change] {
        isPosted = false;
        Q_EMIT(this->*change)();
    };
    QMetaObject::invokeMethod(this, announce, Qt::QueuedConnection);
}
