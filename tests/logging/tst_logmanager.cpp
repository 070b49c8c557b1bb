#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "support.h"
#include "support/rows.h"

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

using Road = std::tuple<const char*, int, LogModules, QStringList, int, QStringList, int>;
using Process = std::tuple<const char*, int, QStringList>;

QString path(LogManager::LogFileId id)
{
    const QString debug = Path::instance()->debugLogsDir;
    const QString events = Path::instance()->eventLogsDir;
    return QStringList{debug + "zel_logs.log", events + "zel_events.log",
                       events + "zel_grinder.log", events + "zel_capsule.log",
                       debug + "m4_ab.log"}[id];
}

/// The lines without their time stamps.
QStringList afterTime(const QByteArray& content)
{
    QStringList texts;
    for (const QByteArray& line : content.split('\n'))
        texts.append(line.mid(23));
    texts.removeLast(); // the empty text after the last line feed
    return texts;
}

QStringList fileLines(LogManager::LogFileId id)
{
    return afterTime(readFile(path(id)));
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
        for (int id = LogManager::General; id <= LogManager::M4ActuatorBoard; ++id)
            m_manager->deleteLogFile(static_cast<LogManager::LogFileId>(id));
        m_manager->finalizeLogFiles();
    }

    // A line of each kind with its texts on the console and in one of the files, and its signal.
    void roads_data()
    {
        const LogModules several = Log::Failure | Log::Payment;
        const QStringList warning("| Warning  | x");
        support::addRows<Road>({
            {"ordinary", LogLevel::Warning, several, warning, 0, warning, -1},
            {"unknown level", 9, several, {"|  | x"}, 0, {"|  | x"}, -1},
            {"failure", LogLevel::Warning, Log::Failure, warning + warning + QStringList(""), 0,
             warning + QStringList(""), 0},
            {"event", LogLevel::Event, several, {"|x"}, 1, {"|x"}, 1},
            {"grinder", LogLevel::Grinder, several, {"|x"}, 2, {"|x"}, 2},
            {"capsule", LogLevel::Capsule, several, {}, 3, {"|x"}, -1},
            {"actuator board", LogLevel::M4, several, {}, 4, {"| M4 | x"}, -1},
        });
    }
    void roads()
    {
        const auto& [name, level, modules, console, file, content, signal] =
            support::currentRow<Road>();
        m_manager->enableModuleDebugging(Log::GrinderRegulation);
        QSignalSpy spies[]{{m_manager, &LogManager::failureLogged},
                           {m_manager, &LogManager::eventLogged},
                           {m_manager, &LogManager::grinderLogged}};
        {
            const support::StandardErrorCapture capture;
            LogNode::log(static_cast<LogLevel::Level>(level), modules, "x");
            QCOMPARE(afterTime(capture.text()), console);
        }
        m_manager->disableModuleDebugging(Log::GrinderRegulation);
        for (int i = LogManager::General; i <= LogManager::M4ActuatorBoard; ++i)
            QCOMPARE(fileLines(LogManager::LogFileId(i)), i == file ? content : QStringList());
        for (int i = 0; i < 3; ++i)
            QCOMPARE(spies[i].size(), i == signal ? 1 : 0);
        if (signal >= 0)
            QCOMPARE(spies[signal][0][0].toString().mid(23), content.first() + '\n');
    }

    void disabledLinesAreDropped()
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
        for (const int noId : {-1, 5})
            m_manager->writeLogFile(static_cast<LogManager::LogFileId>(noId), "dropped");
        QCOMPARE(afterTime(capture.text()),
                 QStringList({"| Debug    | on", "| Info     | console only"}));
        QCOMPARE(fileLines(LogManager::General), QStringList("| Debug    | on"));
        QCOMPARE(fileLines(LogManager::Capsule), QStringList("|still written"));
    }

    void changedSwitchesAreLogged()
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
        QCOMPARE(fileLines(LogManager::General), QStringList({"| Debug    | d", "| Info     | i",
                                                              "| Warning  | w", "| Critical | c"}));
        QCOMPARE(spy.size(), 5);
    }

    // A receiver of a queued line may run an event loop.
    void linesOfOtherThreads()
    {
        const QObject context;
        QStringList found;
        connect(
            m_manager, &LogManager::eventLogged, &context,
            [&found](const QString& line) {
                found.append(line.mid(31).trimmed());
                if (found == QStringList("a"))
                    QTRY_COMPARE(found, QStringList({"a", "b", "c"}));
            },
            Qt::DirectConnection);
        const auto logInThread = [](const QStringList& texts) {
            std::thread([&texts] {
                for (const QString& text : texts)
                    LogFormatter(LogLevel::Event).noquote() << text;
            }).join();
        };
        {
            const EnvironmentGuard guard("LOG_FROM_MAIN_THREAD", "1");
            QVERIFY(m_manager->connectNode(LogNode::instance()));
        }
        logInThread({"a", "b", "c"});
        QCOMPARE(found, QStringList());
        QTRY_COMPARE(found.size(), 3);
        logInThread({"last"});
        m_manager->finalizeLogFiles();
        QCOMPARE(fileLines(LogManager::Events).last(), "| NONE| last");
        m_manager->initLogFiles();
        const EnvironmentGuard guard("LOG_FROM_MAIN_THREAD", "true");
        QVERIFY(m_manager->connectNode(LogNode::instance()));
        logInThread({"not queued"});
        QCOMPARE(found.size(), 5);
    }

    void truncatedContent()
    {
        const auto content = [this](int characters) {
            m_manager->deleteGeneralFile();
            m_manager->writeLogFile(LogManager::General, QString(characters - 2, 'x'));
            return m_manager->logContent(true); // with the line feeds of two files
        };
        const QString header = "---- Log truncated ----\r\n";
        QCOMPARE(content(5000).size(), 5000);
        QCOMPARE(content(5001).size(), header.size() + 5001);
        QCOMPARE(content(70000).left(header.size() + 50000 - 2), header + QString(50000 - 2, 'x'));
    }

    void eventsAreAnnouncedAndTheStartOnce()
    {
        QSignalSpy announced(m_manager, &LogManager::newLogEvent);
        m_manager->emitStartApplicationEvent();
        m_manager->emitStartApplicationEvent();
        LogFormatter(LogLevel::Event).logEvent(LogEventModule::MenuAccess) << "opened" << 3;
        QCOMPARE(announced.size(), 2);
        QCOMPARE(announced[0][1].toStringList(), QStringList(LogManager::APP_STARTED_MSG));
        QCOMPARE(announced[1][0].value<LogEventModule::EventModule>(), LogEventModule::MenuAccess);
        QCOMPARE(announced[1][1].toStringList(), QStringList(" MenuAccess| opened 3"));
    }

    // QML uses the history by name, through the meta-object.
    void eventHistoryOfTheScreen()
    {
        for (const char* text : {"0", "1", "2"})
            QMetaObject::invokeMethod(m_manager, "qmlEventLogParameter", Q_ARG(QString, text));
        LogFormatter(LogLevel::Event).logEvent(LogEventModule::WasteLevel) << "full";
        QSignalSpy pages(m_manager, &LogManager::eventsPagesCountChanged);
        QSignalSpy texts(m_manager, &LogManager::eventsTextChanged);
        const QString today = QDate::currentDate().toString("dd/MM/yyyy");
        for (const int page : {0, 1})
            QVERIFY(QMetaObject::invokeMethod(
                m_manager, "updateEventsText",
                Q_ARG(LogManager::EventModuleFilter, LogManager::MenuParameterFilter),
                Q_ARG(QString, today), Q_ARG(QString, today), Q_ARG(int, page), Q_ARG(int, 2)));
        QCOMPARE(m_manager->property("eventsPagesCount").toInt(), 2);
        const QStringList oldest = m_manager->property("eventsTextList").toStringList();
        QCOMPARE(oldest.size(), 1);
        QVERIFY(oldest[0].endsWith("| MenuParameter| \"0\""));
        QCOMPARE(pages.size() + texts.size(), 3);
        QCOMPARE(m_manager->exportEventsHistory(LogManager::AllEvent, {}, {}, 0, 9).count('\n'), 3);
        QString found;
        const auto find = [&](bool indexOnly, const QVector<int>& numbers) {
            return m_manager->findEventsInFile(found, indexOnly, path(LogManager::Events),
                                               LogManager::WasteLevelFilter, {}, {}, numbers, 0,
                                               numbers.size());
        };
        find(false, find(true, {}));
        QVERIFY(found.endsWith("| WasteLevel| full"));
    }

    void typesOfQueuedSignals()
    {
        for (const char* type :
             {"LogLevel", "LogLevel::Level", "Log::Modules", "LogEventModule::EventModule"})
            QVERIFY2(zeltools::isMetaType(type), type);
    }

    // Each row is an argument of this program, whose name says what the process does.
    void processes_data()
    {
        const QString refusal = "LogManager::LogManager(): Fatal error, path is not defined, "
                                "initialize global path first";
        support::addRows<Process>({
            {"--without-path",
             1,
             {"| Warning  | LogNode node installed |  NONE| late", "| Warning  | late", refusal}},
            {"--late-lines-until-the-end", 0, {"| NONE| late", "| Warning  | late", ""}},
            {"--queued-line-without-application", 0, {"| Info     | queued", ""}},
            {"--readers-that-have-gone", 0, {"no signal is pending"}},
        });
    }
    void processes()
    {
        const auto& [name, status, output] = support::currentRow<Process>();
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {name});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        QCOMPARE(child.exitCode(), status);
        const QStringList printed = afterTime(child.readAllStandardError());
        QCOMPARE(printed + QStringList(child.readAllStandardOutput().trimmed()), output);
    }
};

// Logs to a pipe and to a socket that nobody reads.
int logToGoneReaders()
{
    int ends[2];
    for (const bool isPipe : {true, false}) {
        if ((isPipe ? pipe(ends) : socketpair(AF_UNIX, SOCK_STREAM, 0, ends)) != 0)
            return 1;
        close(ends[0]);
        dup2(ends[1], STDERR_FILENO);
        QThread::msleep(50); // after which the kind of standard error is looked up again
        LogFormatter(LogLevel::Info) << "lost";
    }
    sigset_t pending;
    sigpending(&pending);
    fputs(sigisemptyset(&pending) ? "no signal is pending" : "SIGPIPE is pending", stdout);
    return 0;
}

struct LateLogger
{
    bool isEnabled = false;
    ~LateLogger()
    {
        if (isEnabled) {
            LogFormatter(LogLevel::Event) << "late";
            qWarning("late");
        }
    }
};

int main(int argc, char** argv)
{
    std::optional<QCoreApplication> application(std::in_place, argc, argv);
    static LateLogger late;
    const QString part = application->arguments().value(1);
    late.isEnabled = part == "--without-path" || part == "--late-lines-until-the-end";
    if (late.isEnabled)
        qInstallMessageHandler(LogManager::qtMessageHandler);
    if (part == "--without-path")
        LogManager::initialize();
    if (!part.startsWith("--")) {
        TestLogManager test;
        return QTest::qExec(&test, argc, argv);
    }
    static support::TemporaryLayout layout;
    qputenv("LOG_FROM_MAIN_THREAD", part == "--queued-line-without-application" ? "1" : "0");
    LogManager::initialize();
    if (part == "--readers-that-have-gone")
        return logToGoneReaders();
    if (part == "--queued-line-without-application") {
        application.reset();
        std::thread([] { LogFormatter(LogLevel::Info) << "queued"; }).join();
    }
    LogManager::instance()->finalizeLogFiles();
    if (late.isEnabled) {
        std::thread([] {
            for (;;)
                LogFormatter(LogLevel::Capsule) << "still running";
        }).detach();
    }
    return 0;
}

#include "tst_logmanager.moc"
