#include "logging/lasterrortracker.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "logging/logrenderer.h"
#include "logging/logtimestamp.h"
#include "logging/zelassert.h"
#include "support.h"
#include "support/threads.h"

#include <QtTest>

#include <atomic>
#include <cmath>
#include <limits>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

using support::LineRecorder;

namespace
{

/// Counts how often it is formatted.
struct Probe
{
    static inline int formatted = 0;
};

QDebug operator<<(QDebug debug, const Probe&)
{
    ++Probe::formatted;
    return debug << "probe";
}

LineRecorder* s_recorder = nullptr;
QStringList s_assertions;

void recordAssertion(const char* where, const char* what, const char* file, int line)
{
    s_assertions += s_recorder->takeMessages(); // the line that was logged before the call
    s_assertions += QStringList({where, what, file, QString::number(line)}).join('/');
}

QStringList printedMessages(const support::StandardErrorCapture& capture)
{
    QStringList messages;
    for (const QByteArray& line : capture.text().trimmed().split('\n'))
        messages += line.mid(36);
    return messages;
}

// Compares the line of these items with the text of a QDebug.
template <typename... Items>
void compareTexts(const Items&... items)
{
    LineRecorder recorder;
    (LogFormatter(LogLevel::Info) << ... << items);
    QString expected;
    (QDebug(&expected) << ... << items);
    if (expected.endsWith(' '))
        expected.chop(1);
    QCOMPARE(recorder.takeMessages(), QStringList(expected));
}

} // namespace

class TestLogLines : public QObject
{
    Q_OBJECT

private:
    support::TemporaryLayout m_layout;

private Q_SLOTS:
    void initTestCase() { LogManager::initialize(); }
    void cleanupTestCase() { LogManager::instance()->finalizeLogFiles(); }

    void textsAreThoseOfQDebug()
    {
        const char* const none = nullptr;
        char array[] = "array";
        const QString letters = "caff\u00e8 \u2615";
        compareTexts("a", "caff\xc3\xa8", none, array, "b ");
        compareTexts(QString("quoted"), QString(), QString("a\"b\\c\n\x7f"), letters, 1);
        compareTexts(short(-1), ushort(2), uchar(3), qint8(-4), 'c', true);
        compareTexts(std::numeric_limits<qint64>::min(), ~quint64(0), -1L);
        compareTexts(0.1, 3.75F, 1e-5, 1e300, 1234567.0, -0.0, 1e5, 1e6, qInf(), qQNaN());
        // QDebug rounds the middle between two texts away from zero.
        compareTexts(20.03125, -20.03125F, 1234565.0, 12345650.0, 1.000005e15, 1.000005e16,
                     std::nextafter(20.03125, 0), std::nextafter(1.000005e16, 0));
        compareTexts(QStringList("a"), Qt::AlignLeft, QByteArray("x\0y", 3), QChar(232));
        // A QDebug continues a line that has become too long for the formatter itself.
        for (int size = 500; size < 516; ++size) {
            compareTexts(QString(size, 'x'), 12345, letters, "b");
            compareTexts(QByteArray(size, 'x').constData(), QString("quoted"), 0.5);
        }
        compareTexts(10, Qt::hex, 255, true, letters, 0.5); // an item may change the state
    }

    void blanksAndQuotes()
    {
        LineRecorder recorder;
        const QString text = "text";
        LogFormatter(LogLevel::Info).noquote() << text << 1;
        LogFormatter(LogLevel::Info).nospace() << "a" << text << 1 << 0.5 << "b ";
        LogFormatter(LogLevel::Info).noquote().nospace() << text << Qt::AlignLeft << text;
        LogFormatter(LogLevel::Info).nospace().space() << 1 << 2;
        LogFormatter(LogLevel::Info).log("first").log("second") << "third";
        LogFormatter(LogLevel::Info).log(static_cast<const char*>(nullptr));
        QCOMPARE(recorder.takeMessages(),
                 QStringList({"text 1", QStringLiteral("a\"text\"10.5b "), "textQt::AlignLefttext",
                              " 1 2", "first : second third", QString()}));
    }

    void theLastCopyHandsTheLineOn()
    {
        LineRecorder recorder;
        {
            LogFormatter line(LogLevel::Error);
            {
                LogFormatter other(LogLevel::Info);
                other << "replaced";
                other = line;
                other << "by a copy";
            }
            QCOMPARE(recorder.takeMessages(), QStringList("replaced"));
            line.log(Log::Payment | Log::CanBus) << 1;
        }
        const auto lines = recorder.take();
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines[0].message, "by a copy 1");
        QCOMPARE(lines[0].level, LogLevel::Error);
        QVERIFY(lines[0].modules.contains(Log::CanBus) && !lines[0].modules.contains(Log::None));
    }

    void aDebugLineThatNobodyHearsCollectsNoText()
    {
        const auto isFormatted = [] {
            Probe::formatted = 0;
            LogFormatter(LogLevel::Debug).log(Log::Recipe) << Probe();
            return Probe::formatted == 1;
        };
        QVERIFY(!isFormatted());
        LogManager::instance()->enableModuleDebugging(Log::Recipe);
        QVERIFY(isFormatted());
        LogManager::instance()->disableModuleDebugging(Log::Recipe);
        QVERIFY(!isFormatted());
        for (int i = 0; i < 2; ++i) {
            const LineRecorder recorder;
            QVERIFY(isFormatted());
        }
        QVERIFY(!isFormatted());
        // The only receiver is another one than the manager.
        disconnect(LogNode::instance(), nullptr, LogManager::instance(), nullptr);
        const LineRecorder recorder;
        QVERIFY(isFormatted());
        LogManager::instance()->connectNode(LogNode::instance());
    }

    // A line that is off takes no memory, and it must not lose its state when it is heard later.
    void aDebugLineMayBeHeardLater()
    {
        std::vector<std::unique_ptr<LogModule>> own;
        while (own.empty() || own.back()->id() < 64)
            own.push_back(std::make_unique<LogModule>("Own", false));
        LogManager::instance()->enableModuleDebugging(Log::Recipe);
        const support::StandardErrorCapture capture;
        {
            LogFormatter line(LogLevel::Debug);
            line.log(Log::Payment).noquote() << "lost";
            LogFormatter copy(line);
            copy.log(Log::Recipe) << QString("copied");
            line << 1;
            copy.log(*own.back()) << "lost";
            line.log(Log::Recipe | *own.back()).nospace() << QString("on") << 2;
        }
        {
            LogFormatter line(LogLevel::Debug);
            LogFormatter(LogLevel::Debug).log(Log::Payment) = line;
            line << "before";
            line.log(Log::Payment).log("lost").log(Log::Recipe).log("after");
        }
        LogManager::instance()->disableModuleDebugging(Log::Recipe);
        QCOMPARE(printedMessages(capture), QStringList({"copied 1 on2", "before : after"}));
    }

    // While only the manager listens, the node calls it without a signal.
    void theNodeObeysItsConnections()
    {
        LogNode* node = LogNode::instance();
        const support::StandardErrorCapture capture;
        LogFormatter(LogLevel::Info) << "direct";
        node->blockSignals(true);
        LogFormatter(LogLevel::Info) << "blocked";
        node->blockSignals(false);
        disconnect(node, nullptr, LogManager::instance(), nullptr);
        LogFormatter(LogLevel::Info) << "disconnected";
        LogManager::instance()->connectNode(node);
        LogFormatter(LogLevel::Info) << "connected";
        QCOMPARE(printedMessages(capture), QStringList({"direct", "connected"}));
    }

    void linesBeforeTheNodeGoToQtsWarnings()
    {
        QProcess child;
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(), {"--early-line"});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.readAll(), QByteArray("LogNode node installed | early 100%s\n"));
        QCOMPARE(child.exitCode(), 0);
    }

    void renderedTexts()
    {
        QCOMPARE(LogRenderer::pattern(LogLevel::Capsule).mid(23), "|");
        QCOMPARE(LogRenderer::levelToString(LogLevel::Capsule), "Capsule");
        using E = LogEventModule;
        QCOMPARE(LogRenderer::eventToString(E::AllEvents), "ALL");
        QCOMPARE(LogRenderer::eventToString(static_cast<E::EventModule>(3)), "Undefined");
        QCOMPARE(LogRenderer::eventToString(E::WasteLevel | E::NoneEvent), "NONE,WasteLevel");
    }

    // The moments are around changes of the second, the day and summer time, in both directions.
    // The zone changes between two calls for the same moment.
    void timestamps()
    {
        for (const char* text :
             {"1970-01-02T00:00:00Z", "2024-02-29T00:00:00Z", "2026-03-29T01:00:00Z",
              "2026-10-25T01:00:00Z", "2026-04-04T15:00:00Z", "2011-12-30T10:00:00Z"}) {
            const qint64 change = QDateTime::fromString(text, Qt::ISODate).toMSecsSinceEpoch();
            for (const int offset : {-3600000, -1000, -1, 0, 1, 999, 1000, 3600000, 0, -1}) {
                for (const char* zone : {"UTC", "Europe/Rome", "Asia/Kathmandu", "America/St_Johns",
                                         "Australia/Lord_Howe", ""}) {
                    const support::EnvironmentGuard guard("TZ", zone);
                    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(change + offset);
                    QCOMPARE(QString(logTimestamp(change + offset)),
                             moment.toString("dd/MM/yyyy hh:mm:ss:zzz"));
                }
            }
        }
    }

    // The C library formats the time under a lock, which must be free in the child.
    void aForkedChildFormatsTheTime()
    {
        std::atomic<bool> isOver{false};
        const support::Threads threads(2, [&isOver](int) {
            for (qint64 moment = 0; !isOver; moment += 1000)
                logTimestamp(moment);
        });
        int failed = 0;
        for (int i = 0; i < 200 && failed == 0; ++i) {
            const pid_t child = fork();
            if (child == 0) {
                alarm(10); // ends a child that hangs
                for (int line = 0; line < 10; ++line)
                    logTimestamp(qint64(line) * 1000);
                _exit(0);
            }
            waitpid(child, &failed, 0);
        }
        isOver = true;
        QCOMPARE(failed, 0);
    }

    void assertions()
    {
        LineRecorder recorder;
        s_recorder = &recorder;
        installZelAssertionHandler(recordAssertion);
        printAssertMsg(nullptr, QString("caff\u00e8"), "x.cpp", 2);
        printReleaseAssertMsg("c", "what", "x.cpp", 3);
        printWarningMsg("careful", "x.cpp", 4);
        const auto warning = recorder.take().value(0);
        QCOMPARE(warning.message, "careful , file x.cpp , line 4");
        QVERIFY(warning.level == LogLevel::Warning && warning.modules == Log::Global);
        installZelAssertionHandler(defaultZelAssertionHandler);
        printAssertMsg("a == b", "not equal", "x.cpp", 5);
        QCOMPARE(s_assertions,
                 QStringList({"ASSERT failure: caff\u00e8 (  ), file x.cpp , line 2",
                              "/caff\u00e8/x.cpp/2",
                              "RELEASE ASSERT failure: what ( c ), file x.cpp , line 3",
                              "c/what/x.cpp/3"}));
        QCOMPARE(recorder.take().value(0).level, LogLevel::Error);
    }

    void lastError()
    {
        LineRecorder recorder;
        zeltools::LastErrorTracker tracker(Log::Network);
        tracker.setError("no \"link\"");
        QVERIFY(tracker.hasError() && tracker.error() == "no \"link\"");
        tracker.setError("");
        QVERIFY(!tracker.hasError());
        QCOMPARE(recorder.takeMessages(),
                 QStringList("Last error message updated into: no \"link\""));
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains("--early-line")) {
        LogFormatter(LogLevel::Debug).log(Log::Global) << "early"
                                                       << "100%s";
        return 0;
    }
    TestLogLines test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_loglines.moc"
