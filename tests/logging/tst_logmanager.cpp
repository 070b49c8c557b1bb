#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "support.h"

#include <QLoggingCategory>
#include <QtTest>

#include <optional>
#include <thread>

#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

using support::EnvironmentGuard;
using support::readFile;

namespace
{

QString debugFile(const char* name)
{
    return Path::instance()->debugLogsDir + name;
}

QString eventsFile(const char* name)
{
    return Path::instance()->eventLogsDir + name;
}

/// What follows the time stamps.
QStringList afterTime(const QByteArray& content)
{
    QStringList texts;
    for (const QByteArray& line : content.split('\n'))
        texts.append(line.mid(23));
    texts.removeLast(); // behind the last line feed
    return texts;
}

/// A text "a b c" of all methods and properties that the class declares to its meta-object.
QString surface(const QMetaObject& meta)
{
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        found.append(QString::number(meta.method(i).methodType()) +
                     meta.method(i).methodSignature());
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        found.append(QString(meta.property(i).typeName()) + ':' + meta.property(i).name() + ':' +
                     meta.property(i).notifySignal().name());
    found.sort();
    return found.join(' ');
}

} // namespace

class TestLogManager : public QObject
{
    Q_OBJECT

private:
    support::TemporaryLayout m_layout;
    LogManager* m_manager = nullptr;

private Q_SLOTS:
    void init()
    {
        LogManager::initialize();
        m_manager = LogManager::instance();
        m_manager->enableLogToFile(true);
    }
    void cleanup()
    {
        m_manager->initLogFiles(); // whether or not the test has closed them
        for (int id = LogManager::General; id <= LogManager::M4ActuatorBoard; ++id)
            m_manager->deleteLogFile(static_cast<LogManager::LogFileId>(id));
        m_manager->finalizeLogFiles();
    }

    // Where a line of each kind is found: the console, the five files, the signals.
    void roads_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<bool>("failure");
        QTest::addColumn<QStringList>("console");
        QTest::addColumn<int>("file");
        QTest::addColumn<QStringList>("content");
        QTest::addColumn<int>("signal");
        const auto row = [](const char* name, int level, bool failure, const QStringList& console,
                            int file, const QStringList& content, int signal) {
            QTest::newRow(name) << level << failure << console << file << content << signal;
        };
        const QStringList warning("| Warning  | x");
        row("ordinary", LogLevel::Warning, false, warning, 0, warning, -1);
        row("unknown level", 9, false, {"|  | x"}, 0, {"|  | x"}, -1);
        row("failure, doubled on the console", LogLevel::Warning, true,
            warning + warning + QStringList(""), 0, warning + QStringList(""), 0);
        row("event", LogLevel::Event, false, {"|x"}, 1, {"|x"}, 1);
        row("grinder", LogLevel::Grinder, false, {"|x"}, 2, {"|x"}, 2);
        row("capsule", LogLevel::Capsule, false, {}, 3, {"|x"}, -1);
        row("actuator board", LogLevel::M4, false, {}, 4, {"| M4 | x"}, -1);
    }
    void roads()
    {
        QFETCH(QStringList, content);
        QFETCH(int, file);
        QFETCH(int, signal);
        QFETCH(bool, failure);
        QFETCH(int, level);
        m_manager->enableModuleDebugging(Log::GrinderRegulation);
        QSignalSpy spies[]{{m_manager, &LogManager::failureLogged},
                           {m_manager, &LogManager::eventLogged},
                           {m_manager, &LogManager::grinderLogged}};
        {
            const support::StandardErrorCapture capture;
            LogNode::log(static_cast<LogLevel::Level>(level),
                         failure ? LogModules(Log::Failure) : Log::Failure | Log::Payment, "x");
            QTEST(afterTime(capture.text()), "console");
        }
        m_manager->disableModuleDebugging(Log::GrinderRegulation);
        const QStringList files{debugFile("zel_logs.log"), eventsFile("zel_events.log"),
                                eventsFile("zel_grinder.log"), eventsFile("zel_capsule.log"),
                                debugFile("m4_ab.log")};
        for (int i = 0; i < files.size(); ++i)
            QCOMPARE(afterTime(readFile(files[i])), i == file ? content : QStringList());
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(spies[i].size(), i == signal ? 1 : 0);
            if (i == signal)
                QCOMPARE(spies[i][0][0].toString().mid(23), content.first() + '\n');
        }
    }

    void whatIsSwitchedOffIsDropped()
    {
        const support::StandardErrorCapture capture;
        LogFormatter(LogLevel::Debug).log(Log::Payment) << "off";
        LogFormatter(LogLevel::Grinder).log(Log::Payment) << "off";
        LogFormatter(LogLevel::Debug) << "no module";
        m_manager->enableModuleDebugging(Log::Payment);
        LogFormatter(LogLevel::Debug).log(Log::CanBus | Log::Payment) << "on";
        m_manager->disableModuleDebugging(Log::Payment);
        m_manager->enableLogToFile(false);
        LogFormatter(LogLevel::Info).log(Log::Payment) << "console only";
        LogFormatter(LogLevel::Capsule) << "still written";
        for (const int noId : {-1, 5}) {
            m_manager->writeLogFile(static_cast<LogManager::LogFileId>(noId), "dropped");
            m_manager->deleteLogFile(static_cast<LogManager::LogFileId>(noId));
        }
        QCOMPARE(afterTime(capture.text()),
                 QStringList({"| Debug    | on", "| Info     | console only"}));
        QCOMPARE(afterTime(readFile(debugFile("zel_logs.log"))), QStringList("| Debug    | on"));
        QCOMPARE(afterTime(readFile(eventsFile("zel_capsule.log"))), QStringList("|still written"));
    }

    void reports()
    {
        const EnvironmentGuard all("ZEL_DEBUG_ALL", "0");
        const EnvironmentGuard payment("ZEL_DEBUG_PAYMENT", "1");
        const EnvironmentGuard bus("ZEL_DEBUG_CANBUS", "1");
        support::LineRecorder recorder;
        m_manager->enableModulesDebuggingFromEnvVars();
        m_manager->enableModulesDebuggingFromEnvVars();
        QVERIFY(m_manager->isPrinted(LogLevel::Debug, Log::CanBus));
        m_manager->disableModuleDebugging(Log::CanBus);
        m_manager->disableModuleDebugging(Log::Payment);
        m_manager->enableQLoggingCategoryFilterRules({"zel.b", "zel.a"}, false);
        m_manager->enableQLoggingCategoryFilterRules({"zel.b"}, true);
        QCOMPARE(recorder.takeMessages(),
                 QStringList({"Debugging was enabled from env variables for the following modules: "
                              "\"CanBus,Payment\"",
                              "Applying filter rules: \"zel.a=false,zel.b=false\"",
                              "Applying filter rules: \"zel.a=false,zel.b=true\""}));
        QVERIFY(!QLoggingCategory("zel.a").isWarningEnabled());
        QVERIFY(QLoggingCategory("zel.b").isDebugEnabled());
    }

    void messagesOfQt()
    {
        QSignalSpy spy(m_manager, &LogManager::qtLogged);
        const auto kept = qInstallMessageHandler(LogManager::qtMessageHandler);
        qDebug("d");
        qInfo("i");
        qWarning("libpng warning: iCCP: known incorrect sRGB profile");
        qWarning("w");
        qCritical("c");
        qInstallMessageHandler(kept);
        QCOMPARE(
            afterTime(readFile(debugFile("zel_logs.log"))),
            QStringList({"| Debug    | d", "| Info     | i", "| Warning  | w", "| Critical | c"}));
        QCOMPARE(spy.size(), 5);
    }

    void linesOfOtherThreads_data()
    {
        QTest::addColumn<QByteArray>("fromMainThread");
        QTest::addColumn<bool>("queued");
        QTest::newRow("in their own thread") << QByteArray("true") << false;
        QTest::newRow("queued to the manager's") << QByteArray("1") << true;
    }
    void linesOfOtherThreads()
    {
        QFETCH(QByteArray, fromMainThread);
        QFETCH(bool, queued);
        const EnvironmentGuard guard("LOG_FROM_MAIN_THREAD", fromMainThread);
        QVERIFY(m_manager->connectNode(LogNode::instance()));
        const QObject context;
        Qt::HANDLE handledIn = nullptr;
        const auto note = [&] { handledIn = QThread::currentThreadId(); };
        connect(m_manager, &LogManager::eventLogged, &context, note, Qt::DirectConnection);
        Qt::HANDLE loggedIn = nullptr;
        std::thread([&loggedIn] {
            loggedIn = QThread::currentThreadId();
            LogFormatter(LogLevel::Event) << "from a thread";
        }).join();
        QCOMPARE(handledIn, queued ? nullptr : loggedIn);
        m_manager->finalizeLogFiles(); // which loses none
        QCOMPARE(afterTime(readFile(eventsFile("zel_events.log"))),
                 QStringList("| NONE| from a thread"));
        QCOMPARE(handledIn, queued ? QThread::currentThreadId() : loggedIn);
    }

    void aReceiverOfAQueuedLineMayRunAnEventLoop()
    {
        const EnvironmentGuard guard("LOG_FROM_MAIN_THREAD", "1");
        QVERIFY(m_manager->connectNode(LogNode::instance()));
        const QObject context;
        QStringList found;
        connect(m_manager, &LogManager::eventLogged, &context, [&found](const QString& line) {
            found.append(line.mid(31).trimmed());
            if (found.size() == 1)
                QTRY_COMPARE(found, QStringList({"a", "b", "c"}));
        });
        std::thread([] {
            for (const char* text : {"a", "b", "c"})
                LogFormatter(LogLevel::Event) << text;
        }).join();
        QTRY_COMPARE(found.size(), 3);
    }

    void truncatedContent()
    {
        const QString header = "---- Log truncated ----\r\n";
        const auto content = [this](int characters) {
            m_manager->deleteGeneralFile();
            m_manager->writeLogFile(LogManager::General, QString(characters - 2, 'x'));
            return m_manager->logContent(true);
        };
        QCOMPARE(content(5000).size(), 5000); // with the feeds of the two files
        QCOMPARE(content(5001).size(), header.size() + 5001);
        QCOMPARE(content(70000).left(header.size() + 1), header + 'x');
        QCOMPARE(content(70000).size(), header.size() + 50000);
    }

    void kindsAndFilters()
    {
        using M = LogManager;
        QCOMPARE(M::eventModuleFilterToEventModule(M::WarningEventFilter),
                 LogEventModule::WarningEvent);
        QCOMPARE(int(M::eventModuleToEventModuleFilter(LogEventModule::WarningEvent)), 12);
        const auto none = M::eventModuleToEventModuleFilter(LogEventModule::AllEvents);
        QCOMPARE(int(none), 32);
        QCOMPARE(int(M::eventModuleFilterToEventModule(none)), 0);
        QCOMPARE(m_manager->eventModuleFilter().size(), 13);
        QCOMPARE(m_manager->eventModuleFilter().at(7), "UpdateUpdateEvent");
        QSignalSpy started(m_manager, &LogManager::newLogEvent);
        m_manager->emitStartApplicationEvent();
        m_manager->emitStartApplicationEvent();
        QCOMPARE(started.size(), 1);
        QCOMPARE(started[0][1].toStringList(), QStringList(LogManager::APP_STARTED_MSG));
    }

    // As QML does it: by name, through the meta-object.
    void eventHistoryOfTheScreen()
    {
        for (const char* text : {"0", "1", "2"})
            QMetaObject::invokeMethod(m_manager, "qmlEventLogParameter", Q_ARG(QString, text));
        LogFormatter(LogLevel::Event).logEvent(LogEventModule::WasteLevel) << "full";
        QSignalSpy pages(m_manager, &LogManager::eventsPagesCountChanged);
        QSignalSpy texts(m_manager, &LogManager::eventsTextChanged);
        const auto update = [this](int page) {
            return QMetaObject::invokeMethod(
                m_manager, "updateEventsText",
                Q_ARG(LogManager::EventModuleFilter, LogManager::MenuParameterFilter),
                Q_ARG(QString, ""), Q_ARG(QString, ""), Q_ARG(int, page), Q_ARG(int, 2));
        };
        QVERIFY(update(0));
        QCOMPARE(m_manager->property("eventsPagesCount").toInt(), 2);
        const QStringList newest = m_manager->property("eventsTextList").toStringList();
        QVERIFY(newest.value(1).endsWith("| MenuParameter| \"2\""));
        QVERIFY(update(1));
        QCOMPARE(m_manager->eventsTextList().size(), 1);
        QCOMPARE(pages.size(), 1);
        QCOMPARE(texts.size(), 2);

        const QString today = QDate::currentDate().toString("dd/MM/yyyy");
        const QString text =
            m_manager->exportEventsHistory(LogManager::AllEvent, today, today, 0, 9);
        QCOMPARE(text.count('\n'), 3);
        QString found;
        const QString file = eventsFile("zel_events.log");
        const auto numbers = m_manager->findEventsInFile(
            found, true, file, LogManager::WasteLevelFilter, {}, {}, {}, 0, 0);
        m_manager->findEventsInFile(found, false, file, LogManager::AllEvent, {}, {}, numbers, 0,
                                    1);
        QVERIFY(found.endsWith("| WasteLevel| full"));
    }

    // What QML and connections by name rely on: signals (1), slots (2), invokable methods (0).
    void metaObject()
    {
        QCOMPARE(surface(LogManager::staticMetaObject),
                 "0deleteEventFile() 0deleteGrinderFile() 0emitEventModuleFilterChangeTrad() "
                 "0logContent() 0logContent(bool) 0qmlEventLogParameter(QString) "
                 "0setEventUser(QString) "
                 "0updateEventsText(LogManager::EventModuleFilter,QString,QString,int,int) "
                 "1eventLogged(QString) 1eventModuleFilterChangeTrad() 1eventsPagesCountChanged() "
                 "1eventsTextChanged() 1eventsTextListChanged() 1failureLogged(QString) "
                 "1grinderLogged(QString) 1loggedFromThread(QString) "
                 "1newLogEvent(LogEventModule::EventModule,QStringList) 1qtLogged(QString) "
                 "2log(LogLevel::Level,Log::Modules,QString) 2syncLogs() "
                 "QString:eventsText:eventsTextChanged "
                 "QStringList:eventModuleFilter:eventModuleFilterChangeTrad "
                 "QStringList:eventsTextList:eventsTextListChanged "
                 "int:eventsPagesCount:eventsPagesCountChanged");
        for (const char* type :
             {"LogLevel", "LogLevel::Level", "Log::Modules", "LogEventModule::EventModule"})
            QVERIFY2(zeltools::isMetaType(type), type);
    }

    void processes_data()
    {
        QTest::addColumn<QString>("part");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QStringList>("errors");
        QTest::newRow("without the path layout the process ends")
            << "--without-path" << 1
            << QByteArray("LogManager::LogManager(): Fatal error, path is not defined, initialize "
                          "global path first\n")
            << QStringList(
                   {"| Warning  | LogNode node installed |  NONE| late", "| Warning  | late"});
        QTest::newRow("destructors and threads that nobody stopped log to the very end")
            << "--late-lines" << 0 << QByteArray()
            << QStringList({"| NONE| late", "| Warning  | late"});
        QTest::newRow("queued lines outlive the application object")
            << "--queued-line" << 0 << QByteArray() << QStringList("| Info     | queued");
        QTest::newRow("a reader of standard error that has gone takes nobody with it")
            << "--gone-reader" << 0 << QByteArray("pipe, socket, nothing pending") << QStringList();
    }
    void processes()
    {
        QFETCH(QString, part);
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {part});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        QTEST(child.exitCode(), "status");
        QTEST(child.readAllStandardOutput(), "output");
        QTEST(afterTime(child.readAllStandardError()), "errors");
    }
};

// Lines to a pipe and to a socket that nobody reads any more, each looked at anew.
int logToGoneReaders()
{
    int ends[2];
    for (const bool isPipe : {true, false}) {
        if ((isPipe ? pipe(ends) : socketpair(AF_UNIX, SOCK_STREAM, 0, ends)) != 0)
            return 1;
        close(ends[0]);
        dup2(ends[1], STDERR_FILENO);
        QThread::msleep(50);
        LogFormatter(LogLevel::Info) << "lost";
        fputs(isPipe ? "pipe, " : "socket, ", stdout);
    }
    sigset_t pending;
    sigpending(&pending);
    fputs(sigisemptyset(&pending) ? "nothing pending" : "SIGPIPE waits", stdout);
    return 0;
}

int main(int argc, char** argv)
{
    std::optional<QCoreApplication> application(std::in_place, argc, argv);
    static struct Late
    {
        bool isWanted = false;
        ~Late()
        {
            if (isWanted) {
                LogFormatter(LogLevel::Event) << "late";
                qWarning("late");
            }
        }
    } late;
    const QStringList arguments = QCoreApplication::arguments();
    late.isWanted = arguments.contains("--without-path") || arguments.contains("--late-lines");
    if (late.isWanted)
        qInstallMessageHandler(LogManager::qtMessageHandler);
    if (arguments.contains("--without-path"))
        LogManager::initialize();
    if (arguments.size() > 1 && arguments[1].startsWith("--")) {
        static support::TemporaryLayout layout;
        qputenv("LOG_FROM_MAIN_THREAD", arguments[1] == "--queued-line" ? "1" : "0");
        LogManager::initialize();
    }
    if (arguments.contains("--gone-reader"))
        return logToGoneReaders();
    if (arguments.contains("--queued-line")) {
        application.reset();
        std::thread([] { LogFormatter(LogLevel::Info) << "queued"; }).join();
        LogManager::instance()->finalizeLogFiles();
        return 0;
    }
    if (arguments.contains("--late-lines")) {
        LogManager::instance()->finalizeLogFiles();
        for (int i = 0; i < 2; ++i) {
            std::thread([] {
                for (;;)
                    LogFormatter(LogLevel::Capsule) << "still running";
            }).detach();
        }
        return 0;
    }
    TestLogManager test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_logmanager.moc"
