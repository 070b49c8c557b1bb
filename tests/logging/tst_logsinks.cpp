#include "logging/journalentry_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "logging/logsink.h"
#include "logging/repeatfolding_p.h"
#include "support.h"
#include "support/threads.h"

#include <QtTest>

#include <atomic>
#include <functional>

#include <unistd.h>

namespace
{

class Recorder : public LogSink
{
public:
    void write(const LogRecord& record) override
    {
        texts.append(QStringLiteral("%1 %2 %3")
                         .arg(record.level)
                         .arg(record.modules.bits())
                         .arg(QString::fromLocal8Bit(record.text)));
        last = record;
        if (action)
            action();
    }

    QStringList texts;
    LogRecord last = {};
    std::function<void()> action;
};

} // namespace

class TestLogSinks : public QObject
{
    Q_OBJECT

private:
    support::TemporaryLayout m_layout;
    QTemporaryDir m_rings;
    LogManager* m_manager = nullptr;
    Recorder m_sinks[2];

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("isBuffered");
        QTest::newRow("immediate") << false;
        QTest::newRow("buffered") << true;
    }
    void init()
    {
        LogManager::initialize();
        m_manager = LogManager::instance();
        QFETCH_GLOBAL(bool, isBuffered);
        LogDelivery delivery;
        delivery.mode = isBuffered ? LogDelivery::Buffered : LogDelivery::Immediate;
        delivery.ringFolder = m_rings.path();
        QVERIFY(m_manager->setDelivery(delivery));
        for (Recorder& sink : m_sinks) {
            sink.texts.clear();
            sink.action = {};
            m_manager->addSink(&sink);
        }
    }
    void cleanup()
    {
        m_manager->finalizeLogFiles();
        for (Recorder& sink : m_sinks)
            m_manager->removeSink(&sink);
    }

    void linesOfEachKind()
    {
        m_manager->enableModuleDebugging(Log::GrinderRegulation);
        qint32 thread = 0;
        std::thread([&] {
            thread = gettid();
            LogFormatter(LogLevel::Warning).log(Log::Configuration | Log::Beverage) << 1;
            LogFormatter(LogLevel::Event).logEvent(LogEventModule::MenuAccess) << 2;
            LogFormatter(LogLevel::Info).log(Log::Failure) << 3;
            LogManager::messageHandler(QtInfoMsg, {}, QStringLiteral("4 ü\nand more"));
            m_manager->log(QStringLiteral("a finished line"));
            for (const LogLevel::Level level : {LogLevel::Grinder, LogLevel::Capsule, LogLevel::M4})
                LogFormatter(level).log(Log::None) << int(level);
        }).join();
        m_manager->disableModuleDebugging(Log::GrinderRegulation);
        QVERIFY(m_manager->flush());
        QCOMPARE(m_sinks[0].texts,
                 QStringList({"3 6 1", "2 1  MenuAccess| 2", "1 128 3", "1 0 4 ü\nand more",
                              "1 0 a finished line", "6 1 6", "7 1 7", "8 1 8"}));
        QCOMPARE(m_sinks[1].texts, m_sinks[0].texts);
        QCOMPARE(m_sinks[0].last.thread, thread);
        QVERIFY(qAbs(m_sinks[0].last.time_ms - QDateTime::currentMSecsSinceEpoch()) < 60000);
    }

    void sinksThatLogAndRemoveThemselves()
    {
        const support::StandardErrorCapture capture;
        m_sinks[0].action = [this] { m_manager->removeSink(&m_sinks[0]); };
        m_sinks[1].action = [] { LogFormatter(LogLevel::Info).log(Log::None) << "from a sink"; };
        for (int line = 1; line <= 3; ++line)
            LogFormatter(LogLevel::Info).log(Log::None) << line;
        for (int turn = 0; turn < 2; ++turn) // the lines of the sinks come behind the first flush
            QVERIFY(m_manager->flush());
        QCOMPARE(m_sinks[0].texts, QStringList("1 1 1"));
        QCOMPARE(m_sinks[1].texts, QStringList({"1 1 1", "1 1 2", "1 1 3"}));
        QCOMPARE(capture.text().count("from a sink"), 3);
    }

    void repeatedLinesOfTheManager()
    {
        m_manager->setRepeatFolding(true);
        for (const LogLevel::Level level : {LogLevel::Info, LogLevel::Critical, LogLevel::Event}) {
            for (int i = 0; i < 3; ++i)
                std::thread([level] { LogFormatter(level).log(Log::None) << "x"; }).join();
        }
        LogFormatter(LogLevel::Info).log(Log::Failure) << "x";
        LogFormatter(LogLevel::Info).log(Log::Failure) << "x";
        LogFormatter(LogLevel::Info).log(Log::None) << "y";
        LogFormatter(LogLevel::Info).log(Log::None) << "y";
        m_manager->finalizeLogFiles();
        m_manager->setRepeatFolding(false);
        QCOMPARE(m_sinks[0].texts,
                 QStringList({"1 1 x", "5 1 x", "5 1 x", "5 1 x", "2 1  NONE| x", "2 1  NONE| x",
                              "2 1  NONE| x", "1 128 x", "1 128 x", "1 1 repeated 2 times: x",
                              "1 1 y", "1 1 repeated 1 times: y"}));
    }

    void folding()
    {
        QStringList lines;
        const auto write = [&](LogLevel::Level level, const QString& text, const LogModules&) {
            lines.append(QString::number(level) + text);
        };
        RepeatFolding folding(write, std::chrono::milliseconds(200));
        for (const bool isEnabled : {true, true, false, true}) {
            folding.setEnabled(isEnabled);
            folding.write(LogLevel::Debug, "", {});
        }
        QCOMPARE(lines, QStringList({"0", "0repeated 1 times: ", "0", "0"}));
        lines.clear();
        folding.write(LogLevel::Info, "", {});
        folding.write(LogLevel::Info, "", Log::None);
        folding.write(LogLevel::Info, "", Log::None);
        QCOMPARE(lines, QStringList({"1", "1"}));
        QTRY_COMPARE(lines.mid(2), QStringList("1repeated 1 times: "));

        RepeatFolding hasty(write, std::chrono::milliseconds(0));
        lines.clear();
        for (int i = 0; i < 3; ++i)
            hasty.write(LogLevel::Error, "x", Log::None);
        QCOMPARE(lines, QStringList({"4x", "4repeated 1 times: x", "4repeated 1 times: x"}));
    }

    void linesOfManyThreadsAreAllCounted()
    {
        std::atomic<int> told = 0;
        RepeatFolding folding([&](LogLevel::Level, const QString& text, const LogModules&) {
            told += text.startsWith("repeated") ? text.section(' ', 1, 1).toInt() : 1;
        });
        support::runInThreads(4, [&](int) {
            for (int line = 0; line < 2000; ++line)
                folding.write(LogLevel::Info, line % 100 == 0 ? "x" : "y", {});
        });
        folding.writeCount();
        QCOMPARE(told.load(), 8000);
    }

    void anEntryOfTheJournal()
    {
        const LogRecord event = {LogLevel::Event, Log::Payment | Log::Database, 1700000000123, 42,
                                 " MenuAccess| ü | more\ny"};
        QCOMPARE(journalEntry(event, "test").toList().join('|'),
                 QByteArray("MESSAGE= MenuAccess| ü | more\ny|PRIORITY=5|ZEL_LEVEL=Event|"
                            "ZEL_TIME=2023-11-14T22:13:20.123Z|TID=42|ZEL_MODULE=DataBase|"
                            "ZEL_MODULE=Payment|ZEL_EVENT=MenuAccess|SYSLOG_IDENTIFIER=test"));
    }
};

QTEST_GUILESS_MAIN(TestLogSinks)

#include "tst_logsinks.moc"
