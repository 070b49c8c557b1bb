#include "logging/logmanager.h"

#include "logging/debugmodules.h"
#include "logging/linequeue_p.h"
#include "logging/log.h"
#include "logging/logfileset_p.h"
#include "logging/logformatter.h"
#include "logging/logline_p.h"
#include "logging/lognode.h"
#include "logging/logrenderer.h"
#include "logging/logroute_p.h"
#include "path.h"

#include <QLoggingCategory>
#include <QThread>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace
{

// Set while the process ends for want of a path layout: what destructors log then must not ask for
// the manager again.
std::atomic<bool> s_isRefused{false};

bool isDropped(const QString& warning)
{
    static constexpr std::array<const char*, 5> beginnings{
        "QFont::setPointSizeF", "Warning: distance-field glyph is not available",
        "DirectShowPlayerService", "Both point size and pixel size set.",
        "libpng warning: iCCP: known incorrect sRGB"};
    return std::any_of(beginnings.begin(), beginnings.end(), [&](const char* beginning) {
        return warning.startsWith(QLatin1String(beginning));
    });
}

} // namespace

// Registered when the library is loaded: the first event line creates the manager.
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
    , m_queue(std::make_unique<LineQueue>())
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
    m_isQueueing = qgetenv("LOG_FROM_MAIN_THREAD") == "1";
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

void LogManager::log(LogLevel::Level level, const Log::Modules& modules, const QString& message)
{
    if (!m_isQueueing || thread() == QThread::currentThread())
        logNow(level, modules, message);
    else if (m_queue->add({level, modules, message}))
        QMetaObject::invokeMethod(this, &LogManager::logQueued, Qt::QueuedConnection);
}

// One line a call: a receiver of the line may run an event loop, which finds the next call there.
void LogManager::logQueued()
{
    bool hasMore = false;
    const std::optional<LineQueue::Line> line = m_queue->take(hasMore);
    if (hasMore)
        QMetaObject::invokeMethod(this, &LogManager::logQueued, Qt::QueuedConnection);
    if (line)
        logNow(line->level, line->modules, line->message);
}

void LogManager::logNow(LogLevel::Level level, const LogModules& modules, const QString& message)
{
    if (!isPrinted(level, modules))
        return;
    const LogRoute route = logRoute(level, modules);
    if (route == LogRoute::General) {
        writeGeneral(LogLine(level, message));
        return;
    }
    const QString line = LogRenderer::formattedMessage(level, message);
    switch (route) {
    case LogRoute::Failure:
        return logFailure(line);
    case LogRoute::Events:
        return logEvent(line);
    case LogRoute::Grinder:
        return grinderEvent(line);
    case LogRoute::Capsule:
        return capsuleEvent(line);
    case LogRoute::M4ActuatorBoard:
        return m4ActuatorBoardLog(line);
    case LogRoute::General:
        break;
    }
}

void LogManager::log(const QString& line)
{
    writeGeneral(LogLine(line));
}

void LogManager::writeGeneral(const LogLine& line)
{
    line.print();
    if (m_logToFile)
        m_files->write(General, line.data(), line.size());
}

void LogManager::logFailure(const QString& line)
{
    LogLine(line).print();
    const QString ended = line + QLatin1Char('\n');
    log(ended);
    Q_EMIT failureLogged(ended);
}

void LogManager::logEvent(const QString& line)
{
    writeAndAnnounce(Events, line, &LogManager::eventLogged);
}

void LogManager::grinderEvent(const QString& line)
{
    if (isPrinted(LogLevel::Debug, Log::GrinderRegulation))
        writeAndAnnounce(Grinder, line, &LogManager::grinderLogged);
}

// Holds the file's lock from the print to the end of the signal, so that what its receivers read
// from the file ends with this line.
void LogManager::writeAndAnnounce(LogFileId id, const QString& line,
                                  void (LogManager::*announce)(const QString&))
{
    const QMutexLocker locker(mutexOf(id));
    const LogLine bytes(line);
    bytes.print();
    m_files->write(id, bytes.data(), bytes.size());
    Q_EMIT(this->*announce)(line + QLatin1Char('\n'));
}

void LogManager::capsuleEvent(const QString& line)
{
    const LogLine bytes(line);
    m_files->write(Capsule, bytes.data(), bytes.size());
}

void LogManager::m4ActuatorBoardLog(const QString& line)
{
    const LogLine bytes(line);
    m_files->write(M4ActuatorBoard, bytes.data(), bytes.size());
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
    LogLevel::Level level = LogLevel::Debug;
    switch (type) {
    case QtDebugMsg:
        break;
    case QtInfoMsg:
        level = LogLevel::Info;
        break;
    case QtWarningMsg:
        if (isDropped(message))
            return;
        level = LogLevel::Warning;
        break;
    case QtCriticalMsg:
    case QtFatalMsg:
        level = LogLevel::Critical;
        break;
    default:
        return;
    }
    const LogLine line(level, message);
    if (s_isRefused)
        line.print();
    else
        instance()->writeGeneral(line);
}

void LogManager::enableLogToFile(bool enable)
{
    m_logToFile = enable;
}

void LogManager::enableModuleDebugging(const LogModule& module)
{
    DebugModules::shared().add(module);
}

void LogManager::disableModuleDebugging(const LogModule& module)
{
    DebugModules::shared().remove(module);
}

QStringList LogManager::getModulesDebuggingEnvVars()
{
    return LogModules::getEnvVars();
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
    for (const QString& category : categories)
        m_filterRules[category] = enable;
    QStringList rules;
    for (auto rule = m_filterRules.cbegin(); rule != m_filterRules.cend(); ++rule)
        rules.append(rule.key() +
                     (rule.value() ? QLatin1String("=true") : QLatin1String("=false")));
    LogFormatter(LogLevel::Info).log(Log::Global)
        << "Applying filter rules:" << rules.join(QLatin1Char(','));
    QLoggingCategory::setFilterRules(rules.join(QLatin1Char('\n')));
}

void LogManager::emitLogEvent(const LogEventModule::EventModule& event, const QStringList& args)
{
    Q_EMIT newLogEvent(event, args);
}

void LogManager::emitStartApplicationEvent()
{
    if (m_startEventEmitted)
        return;
    m_startEventEmitted = true;
    emitLogEvent(LogEventModule::ApplicationStartEvent, {APP_STARTED_MSG});
}
