#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "logging/lognode.h"
#include "support.h"

#include <QLoggingCategory>
#include <QMetaEnum>
#include <QtTest>

#include <thread>

using support::readFile;

namespace
{

const LogLevel::Level s_unknown = static_cast<LogLevel::Level>(9);

QString debugFile(const char* name)
{
    return Path::instance()->debugLogsDir + QLatin1String(name);
}

QString eventsFile(const char* name)
{
    return Path::instance()->eventLogsDir + QLatin1String(name);
}

/// What follows the time stamps.
QStringList afterTime(const QByteArray& content)
{
    QStringList texts;
    for (const QString& line : QString::fromUtf8(content).split(QLatin1Char('\n')))
        texts.append(line.mid(23));
    texts.removeLast(); // behind the last line feed
    return texts;
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
        QTest::addColumn<QString>("signal");
        const QString warning = QStringLiteral("| Warning  | x");
        const QStringList none;
        QTest::newRow("ordinary") << int(LogLevel::Warning) << false << QStringList(warning) << 0
                                  << QStringList(warning) << QString();
        QTest::newRow("unknown level")
            << int(s_unknown) << false << QStringList(QStringLiteral("|  | x")) << 0
            << QStringList(QStringLiteral("|  | x")) << QString();
        QTest::newRow("failure, doubled on the console")
            << int(LogLevel::Warning) << true << QStringList({warning, warning, QString()}) << 0
            << QStringList({warning, QString()}) << QStringLiteral("failure");
        QTest::newRow("event") << int(LogLevel::Event) << false << QStringList(QStringLiteral("|x"))
                               << 1 << QStringList(QStringLiteral("|x")) << QStringLiteral("event");
        QTest::newRow("grinder") << int(LogLevel::Grinder) << false
                                 << QStringList(QStringLiteral("|x")) << 2
                                 << QStringList(QStringLiteral("|x")) << QStringLiteral("grinder");
        QTest::newRow("capsule") << int(LogLevel::Capsule) << false << none << 3
                                 << QStringList(QStringLiteral("|x")) << QString();
        QTest::newRow("actuator board") << int(LogLevel::M4) << false << none << 4
                                        << QStringList(QStringLiteral("| M4 | x")) << QString();
    }
    void roads()
    {
        QFETCH(int, level);
        QFETCH(bool, failure);
        QFETCH(QStringList, console);
        QFETCH(int, file);
        QFETCH(QStringList, content);
        QFETCH(QString, signal);
        m_manager->enableModuleDebugging(Log::GrinderRegulation);
        QSignalSpy failureSpy(m_manager, &LogManager::failureLogged);
        QSignalSpy eventSpy(m_manager, &LogManager::eventLogged);
        QSignalSpy grinderSpy(m_manager, &LogManager::grinderLogged);
        QByteArray printed;
        {
            const support::StandardErrorCapture capture;
            LogNode::log(static_cast<LogLevel::Level>(level),
                         failure ? LogModules(Log::Failure) : Log::Failure | Log::Payment,
                         QStringLiteral("x"));
            printed = capture.text();
        }
        m_manager->disableModuleDebugging(Log::GrinderRegulation);
        QCOMPARE(afterTime(printed), console);
        const QStringList files{debugFile("zel_logs.log"), eventsFile("zel_events.log"),
                                eventsFile("zel_grinder.log"), eventsFile("zel_capsule.log"),
                                debugFile("m4_ab.log")};
        for (int i = 0; i < files.size(); ++i)
            QCOMPARE(afterTime(readFile(files[i])), i == file ? content : QStringList());
        QCOMPARE(failureSpy.size(), signal == QLatin1String("failure") ? 1 : 0);
        QCOMPARE(eventSpy.size(), signal == QLatin1String("event") ? 1 : 0);
        QCOMPARE(grinderSpy.size(), signal == QLatin1String("grinder") ? 1 : 0);
        for (const QSignalSpy* spy : {&failureSpy, &eventSpy, &grinderSpy}) {
            if (!spy->isEmpty())
                QCOMPARE(spy->at(0).at(0).toString().mid(23), content.first() + QLatin1Char('\n'));
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
        QCOMPARE(afterTime(capture.text()),
                 QStringList({QStringLiteral("| Debug    | on"),
                              QStringLiteral("| Info     | console only")}));
        QCOMPARE(afterTime(readFile(debugFile("zel_logs.log"))),
                 QStringList(QStringLiteral("| Debug    | on")));
        QCOMPARE(afterTime(readFile(eventsFile("zel_capsule.log"))),
                 QStringList(QStringLiteral("|still written")));
        m_manager->finalizeLogFiles();
        LogFormatter(LogLevel::Event) << "dropped";
        QCOMPARE(readFile(eventsFile("zel_events.log")), QByteArray());
    }

    void debuggingFromTheEnvironment()
    {
        const support::EnvironmentGuard all("ZEL_DEBUG_ALL", "0");
        const support::EnvironmentGuard payment("ZEL_DEBUG_PAYMENT", "1");
        const support::EnvironmentGuard bus("ZEL_DEBUG_CANBUS", "1");
        support::LineRecorder recorder;
        m_manager->enableModulesDebuggingFromEnvVars();
        m_manager->enableModulesDebuggingFromEnvVars();
        QCOMPARE(recorder.takeMessages(),
                 QStringList(QStringLiteral("Debugging was enabled from env variables for the "
                                            "following modules: \"CanBus,Payment\"")));
        QVERIFY(m_manager->isPrinted(LogLevel::Debug, Log::CanBus));
        m_manager->disableModuleDebugging(Log::CanBus);
        m_manager->disableModuleDebugging(Log::Payment);
        QVERIFY(!m_manager->isPrinted(LogLevel::Debug, Log::CanBus));
    }

    void messagesOfQt()
    {
        QSignalSpy spy(m_manager, &LogManager::qtLogged);
        const auto kept = qInstallMessageHandler(LogManager::qtMessageHandler);
        {
            const support::StandardErrorCapture capture;
            qDebug("d");
            qInfo("i");
            qWarning("libpng warning: iCCP: known incorrect sRGB profile");
            qWarning("w");
            qCritical("c");
        }
        qInstallMessageHandler(kept);
        QCOMPARE(afterTime(readFile(debugFile("zel_logs.log"))),
                 QStringList({QStringLiteral("| Debug    | d"), QStringLiteral("| Info     | i"),
                              QStringLiteral("| Warning  | w"), QStringLiteral("| Critical | c")}));
        QCOMPARE(spy.size(), 5);
        QCOMPARE(spy[3][0].toString(), QStringLiteral("w"));
    }

    void filterRulesAccumulate()
    {
        support::LineRecorder recorder;
        m_manager->enableQLoggingCategoryFilterRules(
            {QStringLiteral("zel.b"), QStringLiteral("zel.a")}, false);
        m_manager->enableQLoggingCategoryFilterRules({QStringLiteral("zel.b")}, true);
        QCOMPARE(
            recorder.takeMessages(),
            QStringList({QStringLiteral("Applying filter rules: \"zel.a=false,zel.b=false\""),
                         QStringLiteral("Applying filter rules: \"zel.a=false,zel.b=true\"")}));
        QVERIFY(!QLoggingCategory("zel.a").isWarningEnabled());
        QVERIFY(QLoggingCategory("zel.b").isDebugEnabled());
    }

    void linesOfOtherThreads_data()
    {
        QTest::addColumn<QByteArray>("fromMainThread");
        QTest::addColumn<bool>("queued");
        QTest::newRow("in their own thread") << QByteArray("0") << false;
        QTest::newRow("queued to the manager's") << QByteArray("1") << true;
        QTest::newRow("only 1 counts") << QByteArray("true") << false;
    }
    void linesOfOtherThreads()
    {
        QFETCH(QByteArray, fromMainThread);
        QFETCH(bool, queued);
        const support::EnvironmentGuard guard("LOG_FROM_MAIN_THREAD", fromMainThread);
        QVERIFY(m_manager->connectNode(LogNode::instance()));
        Qt::HANDLE handledIn = nullptr;
        const QObject context;
        connect(
            m_manager, &LogManager::eventLogged, &context,
            [&] { handledIn = QThread::currentThreadId(); }, Qt::DirectConnection);
        Qt::HANDLE loggedIn = nullptr;
        std::thread([&loggedIn] {
            loggedIn = QThread::currentThreadId();
            LogFormatter(LogLevel::Event) << "from a thread";
        }).join();
        QCOMPARE(handledIn, queued ? nullptr : loggedIn);
        m_manager->finalizeLogFiles(); // which loses none
        QCOMPARE(afterTime(readFile(eventsFile("zel_events.log"))),
                 QStringList(QStringLiteral("| NONE| from a thread")));
        QCOMPARE(handledIn, queued ? QThread::currentThreadId() : loggedIn);
        qunsetenv("LOG_FROM_MAIN_THREAD");
        m_manager->connectNode(LogNode::instance());
    }

    void truncatedContent()
    {
        const QString header = QStringLiteral("---- Log truncated ----\r\n");
        const auto content = [this](int characters) {
            m_manager->deleteGeneralFile();
            m_manager->writeLogFile(LogManager::General, QString(characters - 2, QLatin1Char('x')));
            return m_manager->logContent(true);
        };
        QCOMPARE(content(5000).size(), 5000); // with the feeds of the two files
        QCOMPARE(content(5001).size(), header.size() + 5001);
        QCOMPARE(content(70000).size(), header.size() + 50000);
        QVERIFY(content(70000).startsWith(header));
        QCOMPARE(m_manager->logContent().size(), 70000);
    }

    void kindsAndFilters()
    {
        using M = LogManager;
        QCOMPARE(M::eventModuleFilterToEventModule(M::AllEvent), LogEventModule::NoneEvent);
        QCOMPARE(M::eventModuleFilterToEventModule(M::WarningEventFilter),
                 LogEventModule::WarningEvent);
        QCOMPARE(int(M::eventModuleToEventModuleFilter(LogEventModule::WarningEvent)), 12);
        const auto none = M::eventModuleToEventModuleFilter(LogEventModule::AllEvents);
        QCOMPARE(int(none), 32);
        QCOMPARE(int(M::eventModuleFilterToEventModule(none)), 0);
        QCOMPARE(m_manager->eventModuleFilter().size(), 13);
        QCOMPARE(m_manager->eventModuleFilter().at(7), QStringLiteral("UpdateUpdateEvent"));
        m_manager->enableModuleEvent(LogEventModule::AllEvents);
        m_manager->disableModuleEvent(LogEventModule::MenuAccess);
        QCOMPARE(m_manager->enabledEvents(), 0xFFFCU);
        QSignalSpy started(m_manager, &LogManager::newLogEvent);
        m_manager->emitStartApplicationEvent();
        m_manager->emitStartApplicationEvent();
        QCOMPARE(started.size(), 1);
        QCOMPARE(started[0][1].toStringList(), QStringList(LogManager::APP_STARTED_MSG));
    }

    // As QML does it: by name, through the meta-object.
    void eventHistoryOfTheScreen()
    {
        for (int i = 0; i < 3; ++i) {
            QVERIFY(QMetaObject::invokeMethod(m_manager, "qmlEventLogParameter",
                                              Q_ARG(QString, QString::number(i))));
        }
        LogFormatter(LogLevel::Event).logEvent(LogEventModule::WasteLevel) << "full";
        QSignalSpy pages(m_manager, &LogManager::eventsPagesCountChanged);
        QSignalSpy texts(m_manager, &LogManager::eventsTextChanged);
        const auto update = [this](int page) {
            return QMetaObject::invokeMethod(
                m_manager, "updateEventsText",
                Q_ARG(LogManager::EventModuleFilter, LogManager::MenuParameterFilter),
                Q_ARG(QString, QString()), Q_ARG(QString, QString()), Q_ARG(int, page),
                Q_ARG(int, 2));
        };
        QVERIFY(update(0));
        QCOMPARE(m_manager->property("eventsPagesCount").toInt(), 2);
        const QStringList newest = m_manager->property("eventsTextList").toStringList();
        QCOMPARE(newest.size(), 2);
        QVERIFY(newest[1].endsWith(QStringLiteral("| MenuParameter| \"2\"")));
        QVERIFY(update(1));
        QCOMPARE(m_manager->eventsTextList().size(), 1);
        QCOMPARE(pages.size(), 1);
        QCOMPARE(texts.size(), 2);

        const QString today = QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
        const QString text =
            m_manager->exportEventsHistory(LogManager::AllEvent, today, today, 0, 9);
        QCOMPARE(text.count(QLatin1Char('\n')), 3);
        QCOMPARE(m_manager->eventsTextList().size(), 1);
        QString found;
        const QString file = eventsFile("zel_events.log");
        const auto numbers = m_manager->findEventsInFile(
            found, true, file, LogManager::WasteLevelFilter, {}, {}, {}, 0, 0);
        QCOMPARE(numbers, QVector<int>{3});
        m_manager->findEventsInFile(found, false, file, LogManager::AllEvent, {}, {}, numbers, 0,
                                    1);
        QVERIFY(found.endsWith(QStringLiteral("| WasteLevel| full")));
        m_manager->deleteEventFile();
        QVERIFY(update(0));
        QCOMPARE(m_manager->eventsPagesCount(), 0);
        QVERIFY(QFile::exists(eventsFile("zel_events_deleted.log")));
    }

    // What QML and string-based connections know.
    void metaObject()
    {
        QStringList found;
        const QMetaObject& meta = LogManager::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            const QMap<QMetaMethod::MethodType, QString> kinds{
                {QMetaMethod::Signal, QStringLiteral("S ")},
                {QMetaMethod::Slot, QStringLiteral("L ")},
                {QMetaMethod::Method, QStringLiteral("I ")}};
            found.append(kinds[method.methodType()] +
                         QString::fromLatin1(method.methodSignature()));
        }
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
            const QMetaProperty property = meta.property(i);
            found.append(QStringLiteral("P %1 %2 %3")
                             .arg(QLatin1String(property.typeName()),
                                  QLatin1String(property.name()),
                                  QString::fromLatin1(property.notifySignal().name())));
        }
        found.sort();
        QCOMPARE(
            found,
            QStringList(
                {QStringLiteral("I deleteEventFile()"),
                 QStringLiteral("I deleteGrinderFile()"),
                 QStringLiteral("I emitEventModuleFilterChangeTrad()"),
                 QStringLiteral("I logContent()"),
                 QStringLiteral("I logContent(bool)"),
                 QStringLiteral("I qmlEventLogParameter(QString)"),
                 QStringLiteral("I setEventUser(QString)"),
                 QStringLiteral(
                     "I updateEventsText(LogManager::EventModuleFilter,QString,QString,int,int)"),
                 QStringLiteral("L log(LogLevel::Level,Log::Modules,QString)"),
                 QStringLiteral("L syncLogs()"),
                 QStringLiteral("P QString eventsText eventsTextChanged"),
                 QStringLiteral("P QStringList eventModuleFilter eventModuleFilterChangeTrad"),
                 QStringLiteral("P QStringList eventsTextList eventsTextListChanged"),
                 QStringLiteral("P int eventsPagesCount eventsPagesCountChanged"),
                 QStringLiteral("S eventLogged(QString)"),
                 QStringLiteral("S eventModuleFilterChangeTrad()"),
                 QStringLiteral("S eventsPagesCountChanged()"),
                 QStringLiteral("S eventsTextChanged()"),
                 QStringLiteral("S eventsTextListChanged()"),
                 QStringLiteral("S failureLogged(QString)"),
                 QStringLiteral("S grinderLogged(QString)"),
                 QStringLiteral("S loggedFromThread(QString)"),
                 QStringLiteral("S newLogEvent(LogEventModule::EventModule,QStringList)"),
                 QStringLiteral("S qtLogged(QString)")}));
        QCOMPARE(LogEventModule::staticMetaObject.enumeratorCount(), 1);
        QCOMPARE(QMetaType::type("LogLevel") == 0 || QMetaType::type("LogLevel::Level") == 0 ||
                     QMetaType::type("Log::Modules") == 0 ||
                     QMetaType::type("LogEventModule::EventModule") == 0,
                 false);
    }

    void withoutThePathLayoutTheProcessEnds()
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--without-path")});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.readAllStandardOutput(),
                 QByteArray("LogManager::LogManager(): Fatal error, path is not defined, "
                            "initialize global path first\n"));
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        QCOMPARE(child.exitCode(), 1);
    }

    // Destructors and threads that nobody stopped.
    void linesAreLoggedToTheVeryEnd()
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--late-lines")});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitCode(), 0);
        const QByteArray printed = child.readAllStandardError();
        QCOMPARE(afterTime(printed), QStringList({QStringLiteral("| NONE| late"),
                                                  QStringLiteral("| Warning  | late")}));
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(QStringLiteral("--without-path"))) {
        static const struct Late
        {
            ~Late() { qWarning("from a destructor"); }
        } late;
        qInstallMessageHandler(LogManager::qtMessageHandler);
        LogFormatter(LogLevel::Event) << "too early";
        return 0;
    }
    if (application.arguments().contains(QStringLiteral("--late-lines"))) {
        static struct Late
        {
            ~Late()
            {
                LogFormatter(LogLevel::Event) << "late";
                qWarning("late");
            }
        } late;
        static support::TemporaryLayout layout;
        LogManager::initialize();
        qInstallMessageHandler(LogManager::qtMessageHandler);
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
