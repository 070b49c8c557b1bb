#pragma once

#include <zeltools/logging/eventhistory.h>
#include <zeltools/logging/logdelivery.h>
#include <zeltools/logging/logeventmodule.h>
#include <zeltools/logging/logfilehealth.h>
#include <zeltools/logging/loglevel.h>
#include <zeltools/logging/loglosses.h>
#include <zeltools/logging/logmodules.h>
#include <zeltools/qtversion.h>

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <atomic>
#include <memory>

class DeliveryControl;
class EventPages;
class LogFileSet;
class LogRouter;
class LogSink;
class QtCategoryRules;
class SinkList;

/// The process-wide sink of all logging. It receives the lines of LogNode and of Qt, drops the
/// Debug lines of modules that are not switched on, prints the others on the standard error stream,
/// writes them to five rotating files by their kind, and announces them by signals. It also reads
/// the events file back, filtered and in pages, for the user interface.
///
/// The path layout (Path) must exist before the first use; otherwise the process ends with exit
/// status 1. The only manager is never destroyed, so that threads and destructors may log until the
/// process ends. It handles a line in the thread that logged it; with `LOG_FROM_MAIN_THREAD=1` the
/// line is queued to the thread of the manager. Call the functions for setup, filter rules and the
/// event history in the manager's thread. Any thread may log and switch modules.
class ZELTOOLS_EXPORT LogManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(
        QStringList eventModuleFilter READ eventModuleFilter NOTIFY eventModuleFilterChangeTrad)
    Q_PROPERTY(QString eventsText READ eventsText NOTIFY eventsTextChanged)
    Q_PROPERTY(QStringList eventsTextList READ eventsTextList NOTIFY eventsTextListChanged)
    Q_PROPERTY(int eventsPagesCount READ eventsPagesCount NOTIFY eventsPagesCountChanged)
    Q_PROPERTY(bool logFilesHealthy READ logFilesHealthy NOTIFY logFilesHealthChanged)

public:
    /// The five files: zel_logs.log, zel_events.log, zel_grinder.log, zel_capsule.log and
    /// m4_ab.log.
    enum LogFileId : int { General, Events, Grinder, Capsule, M4ActuatorBoard };

    /// The path and the limits of a log file.
    struct LogFileSettings
    {
        /// The path of the primary.
        QString path;
        /// The size in MiB at which the primary is rotated.
        int maximumSizeMiB;
        bool deletedFilesStorage; ///< Whether erased files are kept for one generation.
    };

    /// The filters of the event history. EnergySavingEvent and NoneEvent have no filter on purpose.
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

    /// The text of the event that emitStartApplicationEvent() announces.
    static const QString APP_STARTED_MSG;

    /// The only manager, created by the first call.
    static LogManager* instance();
    ~LogManager() override;

    /// Makes the manager ready. Call it once at start, after Path::init().
    static void initialize();
    /// Registers the types that the signals carry, so that they may be queued. initialize() calls
    /// it.
    static void registerTypes();
    /// Connects the manager to the lines of the node and replaces an earlier connection to it. The
    /// call reads `LOG_FROM_MAIN_THREAD`, which decides whether the lines of other threads are
    /// queued to the manager's thread.
    bool connectNode(QObject* node);
    /// Opens or reopens the five files in the folders of the path layout. A later call keeps the
    /// folders of the first one, but resets the limits and the numbers of predecessors to their
    /// defaults.
    void initLogFiles();
    /// Writes the lines that are queued to this thread, then closes the files. It needs no
    /// application object. Later lines are dropped. In buffered delivery it waits at most two
    /// seconds for the lines in the ring; what is left then, the next start recovers.
    void finalizeLogFiles();

    /// Sets how lines travel to standard error and the files; immediate delivery is the default. It
    /// takes effect at once if the files are open, otherwise when they are opened. The environment
    /// variable `LOG_DELIVERY` with the value "buffered" or "immediate" overrides `delivery.mode`.
    /// The other settings take effect when a mode begins. Returns false, with a Warning, if
    /// buffered delivery is impossible; lines are then delivered immediately. Call it in one
    /// thread.
    ///
    /// In buffered delivery no call of a logging function waits for standard error or the storage,
    /// except within the bounds of LogDelivery::fullRingWait. The signals are emitted in the thread
    /// that logs, possibly before the line is in its file; flush() waits for that. docs/logging.md
    /// compares the two modes.
    bool setDelivery(const LogDelivery& delivery);
    /// The settings of the last setDelivery().
    LogDelivery delivery() const;
    /// Whether lines go through the ring now.
    bool isBuffered() const;
    /// Waits until all lines that were logged before are in the hands of the operating system.
    /// Returns whether they are; always true in immediate delivery. Any thread may call it. With
    /// `LOG_FROM_MAIN_THREAD=1` only a call in the manager's thread covers the lines of others.
    bool flush(std::chrono::milliseconds timeout = std::chrono::seconds(1));
    /// The lines that buffered delivery has dropped since the process began.
    LogLosses losses() const;

    /// Adds a further place for all lines. The manager does not own the sink: remove it before it
    /// is destroyed. Sinks that are added before initialize() also get the lines of a recovery. Any
    /// thread may call both functions.
    void addSink(LogSink* sink);
    /// Returns when no other thread calls the sink any more.
    void removeSink(LogSink* sink);

    /// Whether such a line is printed. Every level above Debug is; a Debug line needs a module
    /// whose debugging is on.
    bool isPrinted(LogLevel::Level level, const LogModules& modules) const;

    /// Prints the finished line and writes it to the general file.
    void log(const QString& line);
    /// Prints the line twice and writes it to the general file with an empty line after it, which
    /// is the established form of failures in the log files.
    void logFailure(const QString& line);
    /// Writes an event line to the event file, prints it and emits eventLogged().
    void logEvent(const QString& line);
    /// Logs a grinder line, unless debugging of Log::GrinderRegulation is off.
    void grinderEvent(const QString& line);
    /// @{
    /// Writes the line to the file of its kind only.
    void capsuleEvent(const QString& line);
    void m4ActuatorBoardLog(const QString& line);
    /// @}
    /// Writes the unchanged text in the local 8-bit encoding, or drops it while the files are
    /// closed.
    void writeLogFile(LogFileId id, const QString& text);

    /// A handler for qInstallMessageHandler(), which logs the message and then emits qtLogged().
    static void qtMessageHandler(QtMsgType type, const QMessageLogContext& context,
                                 const QString& message);
    /// Logs a message of Qt as a general line, regardless of the modules that are on. Some warnings
    /// that are irrelevant to the machine are dropped.
    static void messageHandler(QtMsgType type, const QMessageLogContext& context,
                               const QString& message);

    /// Sets whether general lines go to their file, which is off by default. The other four files
    /// are not affected.
    void enableLogToFile(bool enable);
    /// Sets whether repeated lines are folded, which is off by default. A line for the general file
    /// whose level, modules and text equal those of the line before, of whichever thread, is then
    /// only counted. A line such as "repeated 12 times: No answer", with the same level and
    /// modules, gives the count before the next different line, and at the latest one minute after
    /// the first repeat; without further lines, that needs an event loop in the manager's thread.
    /// flush(), finalizeLogFiles() and the end of main() write the count as well. A killed process
    /// loses it.
    ///
    /// Failures, Critical lines, finished lines and those for the other four files are neither
    /// folded nor compared. Any thread may call the function.
    void setRepeatFolding(bool isFolding);
    /// The timer that calls syncLogs() every minute after the host has started it. Lines reach the
    /// operating system without it.
    QTimer* syncTimer() { return &m_syncTimer; }
    /// Switches the debug lines of a module on. Any thread may call it.
    void enableModuleDebugging(const LogModule& module);
    /// Switches the debug lines of a module off. Any thread may call it.
    void disableModuleDebugging(const LogModule& module);
    /// The names of the debug variables of all modules that have one, in the order of registration.
    QStringList getModulesDebuggingEnvVars() { return LogModules::getEnvVars(); }
    /// Applies LogModules::updateFromEnvVars() to the modules that are on, and logs the names of
    /// those that were added.
    void enableModulesDebuggingFromEnvVars();
    /// Adds a rule for each category to Qt's logging categories and keeps the rules of earlier
    /// calls.
    void enableQLoggingCategoryFilterRules(const QStringList& categories, bool enable);

    /// The content of the general file and its predecessor, see RotatingLogFile::totalContent().
    /// Truncation applies to more than 5000 characters and keeps the last 50000 (sic), after a line
    /// that reports it.
    Q_INVOKABLE QString logContent(bool truncate = false);
    /// The content of the event file and its predecessor, see RotatingLogFile::totalContent() with
    /// OldestFirst.
    QString eventLogTotalContent();
    /// The path of the general file; the next two functions set its limit and number of
    /// predecessors. Without files the path is empty, and the setters do nothing.
    QString appLogFilePath();
    /// @{
    /// Changes the general file from now on. initLogFiles() sets the default again.
    void setAppLogFileMaximumSizeMiB(double size_MiB);
    void setAppLogFileSecondaryFilesCount(int count);
    /// @}
    /// Erases a log file with its predecessors and opens a fresh one. If
    /// LogFileSettings::deletedFilesStorage is set, the erased files are kept for one generation.
    void deleteLogFile(LogFileId id);
    /// @{
    /// Calls deleteLogFile() for the file in the name.
    Q_INVOKABLE void deleteEventFile() { deleteLogFile(Events); }
    Q_INVOKABLE void deleteGrinderFile() { deleteLogFile(Grinder); }
    void deleteGeneralFile() { deleteLogFile(General); }
    /// @}

    /// Emits newLogEvent(). Nothing is written.
    void emitLogEvent(const LogEventModule::EventModule& event, const QStringList& args)
    {
        Q_EMIT newLogEvent(event, args);
    }
    /// Announces the start of the application, once in a process.
    void emitStartApplicationEvent();
    /// @{
    /// Changes enabledEvents(), which the library stores for the host and does not read itself.
    void enableModuleEvent(const LogEventModule::EventModule& event) { m_enabledEvents |= event; }
    void disableModuleEvent(const LogEventModule::EventModule& event)
    {
        m_enabledEvents &= ~quint32(event);
    }
    /// @}
    /// The bits of the kinds that the host has enabled.
    quint32 enabledEvents() const { return m_enabledEvents; }
    /// Stores the user at the machine for the host. Lines do not contain it.
    Q_INVOKABLE void setEventUser(const QString& user) { m_eventUser = user; }
    /// The user of the last setEventUser().
    QString eventUser() const { return m_eventUser; }

    /// The kind whose bit is at the position of the filter; no kind for positions outside 0 to 31.
    static LogEventModule::EventModule eventModuleFilterToEventModule(EventModuleFilter filter);
    /// The position of the kind's bit; 32 if the kind is not a single bit.
    static EventModuleFilter eventModuleToEventModuleFilter(LogEventModule::EventModule event);

    /// The translated names of the kinds; the index of a name is its EventModuleFilter.
    QStringList eventModuleFilter() const;
    /// The page of the last updateEventsText(), with the oldest line first, joined by "\n".
    QString eventsText() const;
    /// The lines of eventsText() as a list.
    QStringList eventsTextList() const;
    /// The number of pages of the selection that the last updateEventsText() named.
    int eventsPagesCount() const;

    /// Publishes a page of the event history. Page 0 has the newest events. Dates are "dd/MM/yyyy"
    /// and inclusive; they only filter if both are given.
    Q_INVOKABLE void updateEventsText(LogManager::EventModuleFilter filter,
                                      const QString& strStartDate, const QString& strStopDate,
                                      int pageIndex, int eventsPerPage);
    /// The text of such a page, without publishing it.
    QString exportEventsHistory(EventModuleFilter filter, const QString& strStartDate,
                                const QString& strStopDate, int pageIndex, int eventsPerPage);
    /// Writes such a page to `text` and returns the number of pages of the whole selection.
    int writeEventsText(QString& text, EventModuleFilter filter, const QString& strStartDate,
                        const QString& strStopDate, int pageIndex, int eventsPerPage);
    /// Reads such a page with the lines as they are in the file. An error is returned and not
    /// logged. Any thread may call it, for example one that may wait for the storage.
    EventHistory::Page eventsPage(EventModuleFilter filter, const QString& strStartDate,
                                  const QString& strStopDate, int pageIndex, int eventsPerPage);
    /// Returns the numbers of the matching lines of the file if `indexOnly` is true. Otherwise it
    /// appends to `text` the line with the number lineIndexes[first] and the `count` - 1 lines that
    /// follow in `lineIndexes`.
    QVector<int> findEventsInFile(QString& text, bool indexOnly, const QString& fileName,
                                  EventModuleFilter filter, const QString& strStartDate,
                                  const QString& strStopDate, const QVector<int>& lineIndexes,
                                  int first, int count);
    /// Logs a parameter change on the screen as an event of the kind MenuParameter.
    Q_INVOKABLE void qmlEventLogParameter(const QString& log);
    /// Makes QML read the names of the kinds again after a change of the language.
    Q_INVOKABLE void emitEventModuleFilterChangeTrad() { Q_EMIT eventModuleFilterChangeTrad(); }

    /// The state of a log file. Any thread may call it, and it never waits for the file. A file
    /// that fails is tried again as lines are logged, for this file or for another one, and becomes
    /// healthy when its fault is gone. finalizeLogFiles() keeps the last state.
    LogFileHealth fileHealth(LogFileId id) const;
    /// The path of the file, which is empty while the files are closed.
    QString filePath(LogFileId id) const;
    /// Whether none of the five files fails.
    bool logFilesHealthy() const;

public Q_SLOTS:
    /// Passes the buffered data of all files to the operating system, like RotatingLogFile::sync().
    void syncLogs();
    /// Formats the line and sends it to the destination for its modules and level. A line whose
    /// only module is Log::Failure is a failure at every level.
    void log(LogLevel::Level level, const Log::Modules& modules, const QString& message);

Q_SIGNALS:
    /// Emitted after a grinder line with the finished line and its line feed.
    void grinderLogged(const QString& message);
    /// Emitted after an event line with the finished line and its line feed.
    void eventLogged(const QString& message);
    /// Emitted after a failure with the finished line and its line feed.
    void failureLogged(const QString& message);
    /// The message of Qt without time and level.
    void qtLogged(const QString& message);
    /// A signal for hosts, which the library never emits.
    void loggedFromThread(const QString& message);
    /// Emitted by each updateEventsText(), also if the page is the same.
    void eventsTextChanged();
    /// Emitted like eventsTextChanged().
    void eventsTextListChanged();
    void eventsPagesCountChanged();
    /// Announces every Event line when it is logged, and the start of the application.
    void newLogEvent(LogEventModule::EventModule eventModules, const QStringList& args);
    /// Emitted by emitEventModuleFilterChangeTrad() only, which the host calls when the language
    /// has changed.
    void eventModuleFilterChangeTrad();
    /// Announces that a file has begun or ceased to fail. It is emitted in the manager's thread by
    /// its event loop, once for all changes since the last time, whatever thread noticed them.
    void logFilesHealthChanged();
    /// Announces that one of the functions above may have switched debug lines of modules on or
    /// off. It is emitted in the thread that called the function.
    void moduleDebuggingChanged();
    /// Announces that losses() has changed. It is emitted like logFilesHealthChanged().
    void lossesChanged();

private:
    LogManager();
    void postHealthChange();
    void postLossesChange();
    void postOnce(std::atomic<bool>& isPosted, void (LogManager::*change)());

    void becomeChild();

    std::atomic<bool> m_isHealthChangePosted = false;
    std::atomic<bool> m_isLossesChangePosted = false;
    std::unique_ptr<LogFileSet> m_files;
    std::unique_ptr<SinkList> m_sinks;
    std::unique_ptr<LogRouter> m_router;
    std::unique_ptr<DeliveryControl> m_delivery;
    std::unique_ptr<EventPages> m_pages;
    std::unique_ptr<QtCategoryRules> m_categoryRules;
    std::atomic<quint32> m_enabledEvents = 0;
    bool m_startEventEmitted = false;
    QString m_eventUser;
    QTimer m_syncTimer;
    static const bool s_receivesEvents;
};
