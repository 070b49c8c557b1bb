#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "support.h"

#include <QtTest>

#include <limits>

using support::LineRecorder;

namespace
{

/// Counts how often it is put into text.
struct Probe
{
    static int printed;
};
int Probe::printed = 0;

QDebug operator<<(QDebug debug, const Probe&)
{
    ++Probe::printed;
    return debug << "probe";
}

// Streams the same items into a line and into a QDebug.
template <typename... Items>
QStringList bothTexts(const Items&... items)
{
    LineRecorder recorder;
    {
        LogFormatter line(LogLevel::Info);
        (line << ... << items);
    }
    QString expected;
    {
        QDebug debug(&expected);
        (debug << ... << items);
    }
    if (expected.endsWith(QLatin1Char(' ')))
        expected.chop(1);
    return {recorder.takeMessages().value(0), expected};
}

} // namespace

class TestLogFormatter : public QObject
{
    Q_OBJECT

private:
    support::TemporaryLayout m_layout;

private Q_SLOTS:
    void initTestCase() { LogManager::initialize(); }
    void cleanupTestCase() { LogManager::instance()->finalizeLogFiles(); }

    void textsAreThoseOfQDebug_data()
    {
        QTest::addColumn<QStringList>("texts");
        const char* const none = nullptr;
        char array[] = "array";
        QTest::newRow("literals, UTF-8 and null")
            << bothTexts("a", "caff\xc3\xa8", none, array, "b ");
        QTest::newRow("plain text is quoted") << bothTexts(QStringLiteral("espresso"), QString());
        QTest::newRow("quotes, controls and letters are escaped as usual")
            << bothTexts(QStringLiteral("a\"b\\c\n\x7f"), QStringLiteral("caff\u00e8 \u2615"), 1);
        QTest::newRow("small integers")
            << bothTexts(short(-1), ushort(2), uchar(3), qint8(-4), 'c');
        QTest::newRow("large integers") << bothTexts(std::numeric_limits<qint64>::min(),
                                                     std::numeric_limits<quint64>::max(), 0U, -1L);
        QTest::newRow("truth") << bothTexts(true, false);
        QTest::newRow("reals") << bothTexts(0.1, 3.75F, 1e-5, 1e300, 1234567.0, -0.0, 100000.0,
                                            1e6);
        QTest::newRow("no numbers") << bothTexts(qInf(), -qInf(), qQNaN(), 1);
        QTest::newRow("containers and enumerations")
            << bothTexts(QStringList{QStringLiteral("a"), QStringLiteral("b")}, Qt::AlignLeft,
                         QByteArray("x\0y", 3), QChar(u'\u00e8'), QLatin1String("l"));
        QTest::newRow("state that an item leaves behind is kept")
            << bothTexts(10, Qt::hex, 255, true, QStringLiteral("x"), "y", 0.5);
    }
    void textsAreThoseOfQDebug()
    {
        QFETCH(QStringList, texts);
        QCOMPARE(texts[0], texts[1]);
    }

    void blanksAndQuotes()
    {
        LineRecorder recorder;
        const QString text = QStringLiteral("text");
        LogFormatter(LogLevel::Info).noquote() << text << 1;
        LogFormatter(LogLevel::Info).nospace() << "a" << text << 1 << 0.5 << "b ";
        LogFormatter(LogLevel::Info).noquote().nospace() << text << Qt::AlignLeft << text;
        LogFormatter(LogLevel::Info).nospace().space() << 1 << 2;
        LogFormatter(LogLevel::Info).log("first").log(QStringLiteral("second")) << "third";
        LogFormatter(LogLevel::Info).log(static_cast<const char*>(nullptr));
        QCOMPARE(recorder.takeMessages(),
                 QStringList({QStringLiteral("text 1"), QStringLiteral("a\"text\"10.5b "),
                              QStringLiteral("textQt::AlignLefttext"), QStringLiteral(" 1 2"),
                              QStringLiteral("first : second third"), QString()}));
    }

    void theLastCopyHandsTheLineOn()
    {
        LineRecorder recorder;
        {
            LogFormatter line(LogLevel::Error);
            {
                LogFormatter copy(line);
                copy << "from a copy";
                LogFormatter other(LogLevel::Info);
                other << "dropped for the copy";
                other = copy;
            }
            LogFormatter(LogLevel::Info) << "inner";
            QCOMPARE(recorder.takeMessages(), QStringList({QStringLiteral("dropped for the copy"),
                                                           QStringLiteral("inner")}));
            line.log(Log::Payment | Log::CanBus) << 1;
        }
        const auto lines = recorder.take();
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines[0].message, QStringLiteral("from a copy 1"));
        QCOMPARE(lines[0].level, LogLevel::Error);
        QVERIFY(lines[0].modules.contains(Log::CanBus) && !lines[0].modules.contains(Log::None));
    }

    void aKeptTextStaysAsItWas()
    {
        LineRecorder recorder;
        LogFormatter(LogLevel::Info) << "one";
        LogFormatter(LogLevel::Info) << "two";
        QCOMPARE(recorder.takeMessages(),
                 QStringList({QStringLiteral("one"), QStringLiteral("two")}));
    }

    void anEventIsAnnouncedWithItsKind()
    {
        LineRecorder recorder;
        QSignalSpy announced(LogManager::instance(), &LogManager::newLogEvent);
        LogFormatter(LogLevel::Event).logEvent(LogEventModule::MenuAccess) << "opened" << 3;
        const QString expected = QStringLiteral(" MenuAccess| opened 3");
        QCOMPARE(recorder.takeMessages(), QStringList(expected));
        QCOMPARE(announced.size(), 1);
        QCOMPARE(announced[0][0].value<LogEventModule::EventModule>(), LogEventModule::MenuAccess);
        QCOMPARE(announced[0][1].toStringList(), QStringList(expected));
    }

    void aDebugLineThatNobodyHearsCollectsNoText()
    {
        const auto log = [] { LogFormatter(LogLevel::Debug).log(Log::Recipe) << Probe() << 1; };
        const auto printed = [&log] {
            Probe::printed = 0;
            log();
            return Probe::printed;
        };
        QCOMPARE(printed(), 0);
        {
            LineRecorder recorder;
            QCOMPARE(printed(), 1);
            QCOMPARE(recorder.takeMessages(), QStringList(QStringLiteral("probe 1")));
        }
        QCOMPARE(printed(), 0);
        LogManager::instance()->enableModuleDebugging(Log::Recipe);
        QCOMPARE(printed(), 1);
        LogManager::instance()->disableModuleDebugging(Log::Recipe);
        QCOMPARE(printed(), 0);
        auto* receiver = new QObject;
        connect(LogNode::instance(), &LogNode::logged, receiver, [] {});
        QCOMPARE(printed(), 1);
        delete receiver;
        QCOMPARE(printed(), 0);
        // Somebody else in place of the manager hears everything.
        disconnect(LogNode::instance(), nullptr, LogManager::instance(), nullptr);
        LineRecorder recorder;
        QCOMPARE(printed(), 1);
        LogManager::instance()->connectNode(LogNode::instance());
    }

    void linesBeforeTheNodeGoToQtsWarnings()
    {
        QProcess child;
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--early-line")});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.readAll(), QByteArray("LogNode node installed | early 100%s\n"));
        QCOMPARE(child.exitCode(), 0);
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(QStringLiteral("--early-line"))) {
        LogFormatter(LogLevel::Debug).log(Log::Global) << "early"
                                                       << "100%s";
        return 0;
    }
    TestLogFormatter test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_logformatter.moc"
