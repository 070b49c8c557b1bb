#pragma once

#include <zeltools/logging/logeventmodule.h>
#include <zeltools/logging/loglevel.h>
#include <zeltools/logging/logmodules.h>
#include <zeltools/qtversion.h>

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <atomic>
#include <memory>

class LineQueue;
class LogFileSet;
class LogLine;

/// The process-wide sink of all logging. It receives the lines of LogNode and of Qt, drops the
/// Debug lines of modules that are not switched on, prints the others on the standard error stream,
/// writes them to five rotating files by their kind, and announces them by signals. It also reads
/// the events file back, filtered and in pages, for the user interface.
///
/// The path layout (Path) must exist first: without it the first use ends the process with exit
/// status 1. The one manager is never destroyed, so that threads and destructors may log to the
/// very end of the process. Lines are handled in the thread that logged them; with
/// `LOG_FROM_MAIN_THREAD=1` they are queued to the thread of the manager. Setting up, filter rules
/// and the event history belong to the manager's thread; logging and switching modules may happen
/// in any.
class ZELTOOLS_EXPORT LogManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(
        QStringList eventModuleFilter READ eventModuleFilter NOTIFY eventModuleFilterChangeTrad)
    Q_PROPERTY(QString eventsText READ eventsText NOTIFY eventsTextChanged)
    Q_PROPERTY(QStringList eventsTextList READ eventsTextList NOTIFY eventsTextListChanged)
    Q_PROPERTY(int eventsPagesCount READ eventsPagesCount NOTIFY eventsPagesCountChanged)

public:
    enum LogFileId : int { General, Events, Grinder, Capsule, M4ActuatorBoard };

    /// Where a log file is and how it is kept.
    struct LogFileSettings
    {
        QString path;
        int maximumSizeMiB;
        bool deletedFilesStorage; ///< Whether erased files are kept for one generation.
    };

    /// The kinds that the event history can be filtered by; there is deliberately none for
    /// EnergySavingEvent and NoneEvent.
    enum EventModuleFilter : int {
        AllEvent,
        MenuAccessFilter,
        MenuParameterFilter,
        CleaningFilter,
        DispensedDrinkFilter,
        DatabaseErrorFilter,
        CPUFanFilter,
        UpdateEventFilter,
        ConfigurationEventFilter,
        ApplicationStartFilter,
        IngredientLevelFilter,
        WasteLevelFilter,
        WarningEventFilter
    };
    Q_ENUM(EventModuleFilter)

    static const QString APP_STARTED_MSG;

    static LogManager* instance();
    ~LogManager() override;

    /// Makes the manager ready: call it once at start, after Path::init().
    static void initialize();
    static void registerTypes();
    /// Receives the lines of the node in place of an earlier connection to it. Whether the lines of
    /// other threads are queued to the manager's thread is read from `LOG_FROM_MAIN_THREAD` now.
    bool connectNode(QObject* node);
    /// Opens the five files in the folders of the path layout, or opens them again. The folders are
    /// those of the first call. Sets limits and numbers of predecessors back to those of the start.
    void initLogFiles();
    /// Closes the files, after the lines that are queued to this thread, which needs no application
    /// object for it; what is written afterwards is dropped.
    void finalizeLogFiles();

    /// Whether such a line is printed: every level above Debug is, Debug with a module whose
    /// debugging is on.
    bool isPrinted(LogLevel::Level level, const LogModules& modules) const;

    /// Prints the finished line and writes it to the general file.
    void log(const QString& line);
    /// Prints the line twice and writes it to the general file with an empty line after it: that is
    /// how a failure has always looked in the field's files.
    void logFailure(const QString& line);
    void logEvent(const QString& line);
    /// Drops the line while debugging of Log::GrinderRegulation is off.
    void grinderEvent(const QString& line);
    void capsuleEvent(const QString& line);
    void m4ActuatorBoardLog(const QString& line);
    /// Writes the text in the local 8-bit encoding as it is; drops it while the files are closed.
    void writeLogFile(LogFileId id, const QString& text);

    /// For qInstallMessageHandler(): logs the message, then emits qtLogged().
    static void qtMessageHandler(QtMsgType type, const QMessageLogContext& context,
                                 const QString& message);
    /// Logs a message of Qt as a general line, whatever modules are on. Some warnings that say
    /// nothing about the machine are dropped.
    static void messageHandler(QtMsgType type, const QMessageLogContext& context,
                               const QString& message);

    /// Whether general lines go to their file; off at first. The other four files take no notice.
    void enableLogToFile(bool enable);
    /// Calls syncLogs() every minute once the host has started it. A line reaches the operating
    /// system without it.
    QTimer* syncTimer() { return &m_syncTimer; }
    void enableModuleDebugging(const LogModule& module);
    void disableModuleDebugging(const LogModule& module);
    QStringList getModulesDebuggingEnvVars();
    /// LogModules::updateFromEnvVars() on the modules that are on; logs the names that it added.
    void enableModulesDebuggingFromEnvVars();
    /// Applies a rule for each category to Qt's logging categories, beside the rules of earlier
    /// calls.
    void enableQLoggingCategoryFilterRules(const QStringList& categories, bool enable);

    /// The general file and its predecessor, see RotatingLogFile::totalContent(). Of a content
    /// above 5000 characters truncation keeps the last 50000 (sic), after a line that says so.
    Q_INVOKABLE QString logContent(bool truncate = false);
    QString eventLogTotalContent();
    /// The path, limit and number of predecessors of the general file. Without files there is
    /// nothing to tell or set.
    QString appLogFilePath();
    void setAppLogFileMaximumSizeMiB(double size_MiB);
    void setAppLogFileSecondaryFilesCount(int count);
    void deleteLogFile(LogFileId id);
    Q_INVOKABLE void deleteEventFile();
    Q_INVOKABLE void deleteGrinderFile();
    void deleteGeneralFile();

    void emitLogEvent(const LogEventModule::EventModule& event, const QStringList& args);
    /// Announces the start of the application, once in a process.
    void emitStartApplicationEvent();
    void enableModuleEvent(const LogEventModule::EventModule& event);
    void disableModuleEvent(const LogEventModule::EventModule& event);
    quint32 enabledEvents() const;
    /// The user at the machine. Kept for the host, not written into lines.
    Q_INVOKABLE void setEventUser(const QString& user);
    QString eventUser() const;

    /// The bit at the position of the filter; no kind for a position outside 0 to 31.
    static LogEventModule::EventModule eventModuleFilterToEventModule(EventModuleFilter filter);
    /// The position of the bit; 32 when the kind is not a single bit.
    static EventModuleFilter eventModuleToEventModuleFilter(LogEventModule::EventModule event);

    /// The translated names of the kinds; the index of a name is its EventModuleFilter.
    QStringList eventModuleFilter() const;
    /// The page that updateEventsText() made last, oldest line first, joined by "\n".
    QString eventsText() const;
    QStringList eventsTextList() const;
    int eventsPagesCount() const;

    /// Publishes a page of the event history, counted from the newest events (page 0). Dates are
    /// "dd/MM/yyyy", both ends included; unless both are given, dates do not matter.
    Q_INVOKABLE void updateEventsText(LogManager::EventModuleFilter filter,
                                      const QString& strStartDate, const QString& strStopDate,
                                      int pageIndex, int eventsPerPage);
    /// The text of such a page, publishing nothing.
    QString exportEventsHistory(EventModuleFilter filter, const QString& strStartDate,
                                const QString& strStopDate, int pageIndex, int eventsPerPage);
    /// Puts such a page into `text` and returns the number of pages of the whole selection.
    int writeEventsText(QString& text, EventModuleFilter filter, const QString& strStartDate,
                        const QString& strStopDate, int pageIndex, int eventsPerPage);
    /// With `indexOnly` the numbers of the lines of the file that match; otherwise appends to
    /// `text` the lines numbered lineIndexes[first] and the `count` - 1 that follow.
    QVector<int> findEventsInFile(QString& text, bool indexOnly, const QString& fileName,
                                  EventModuleFilter filter, const QString& strStartDate,
                                  const QString& strStopDate, const QVector<int>& lineIndexes,
                                  int first, int count);
    /// Logs a change of a parameter that the screen reports, as an event of kind MenuParameter.
    Q_INVOKABLE void qmlEventLogParameter(const QString& log);
    /// Tells QML to read the names of the kinds again, after a change of the language.
    Q_INVOKABLE void emitEventModuleFilterChangeTrad();

public Q_SLOTS:
    void syncLogs();
    /// Renders the line and sends it where its modules and level say. A line of exactly the module
    /// Log::Failure is a failure whatever its level.
    void log(LogLevel::Level level, const Log::Modules& modules, const QString& message);

Q_SIGNALS:
    void grinderLogged(const QString& message);
    void eventLogged(const QString& message);
    void failureLogged(const QString& message);
    /// The bare message of Qt.
    void qtLogged(const QString& message);
    /// For hosts; the library emits it nowhere.
    void loggedFromThread(const QString& message);
    void eventsTextChanged();
    void eventsTextListChanged();
    void eventsPagesCountChanged();
    /// Every Event line when it is written, and the start of the application.
    void newLogEvent(LogEventModule::EventModule eventModules, const QStringList& args);
    void eventModuleFilterChangeTrad();

private:
    LogManager();

    void logQueued();
    void logNow(LogLevel::Level level, const LogModules& modules, const QString& message);
    void writeGeneral(const LogLine& line);
    void writeAndAnnounce(LogFileId id, const QString& line,
                          void (LogManager::*announce)(const QString&));
    QString totalContent(LogFileId id) const;
    zeltools::RecursiveMutex* mutexOf(LogFileId id) const;

    std::unique_ptr<LogFileSet> m_files;
    std::unique_ptr<LineQueue> m_queue;
    std::atomic<bool> m_isQueueing = false;
    std::atomic<bool> m_logToFile = false;
    std::atomic<quint32> m_enabledEvents = 0;
    bool m_startEventEmitted = false;
    QString m_eventUser;
    QTimer m_syncTimer;
    QMap<QString, bool> m_filterRules;
    QString m_eventsText;
    int m_eventsPagesCount = 1;
};
