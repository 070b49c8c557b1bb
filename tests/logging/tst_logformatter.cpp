#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "support.h"

#include <QtTest>

#include <cmath>
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
    if (expected.endsWith(' '))
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
        const auto row = [](const char* name, const QStringList& texts) {
            QTest::newRow(name) << texts;
        };
        const QString letters = "caff\u00e8 \u2615";
        row("literals, UTF-8 and null", bothTexts("a", "caff\xc3\xa8", none, array, "b "));
        row("plain text is quoted", bothTexts(QString("espresso"), QString()));
        row("others are escaped as usual", bothTexts(QString("a\"b\\c\n\x7f"), letters, 1));
        row("small integers", bothTexts(short(-1), ushort(2), uchar(3), qint8(-4), 'c', true));
        row("large integers", bothTexts(std::numeric_limits<qint64>::min(), ~quint64(0), -1L));
        row("reals",
            bothTexts(0.1, 3.75F, 1e-5, 1e300, 1234567.0, -0.0, 1e5, 1e6, qInf(), qQNaN()));
        row("reals in the middle between two texts",
            bothTexts(20.03125, -20.03125F, 1234565.0, 12345650.0, 1.000005e15, 1.000005e16,
                      std::nextafter(20.03125, 0), std::nextafter(1.000005e16, 0)));
        row("others",
            bothTexts(QStringList("a"), Qt::AlignLeft, QByteArray("x\0y", 3), QChar(232)));
        row("state that an item leaves is kept", bothTexts(10, Qt::hex, 255, true, letters, 0.5));
    }
    void textsAreThoseOfQDebug()
    {
        QFETCH(QStringList, texts);
        QCOMPARE(texts[0], texts[1]);
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
                LogFormatter copy(line);
                copy << "from a copy";
                LogFormatter other(LogLevel::Info);
                other << "dropped for the copy";
                other = copy;
            }
            LogFormatter(LogLevel::Info) << "inner";
            QCOMPARE(recorder.takeMessages(), QStringList({"dropped for the copy", "inner"}));
            line.log(Log::Payment | Log::CanBus) << 1;
        }
        const auto lines = recorder.take();
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines[0].message, "from a copy 1");
        QCOMPARE(lines[0].level, LogLevel::Error);
        QVERIFY(lines[0].modules.contains(Log::CanBus) && !lines[0].modules.contains(Log::None));
    }

    void anEventIsAnnouncedWithItsKind()
    {
        LineRecorder recorder;
        QSignalSpy announced(LogManager::instance(), &LogManager::newLogEvent);
        LogFormatter(LogLevel::Event).logEvent(LogEventModule::MenuAccess) << "opened" << 3;
        const QString expected = " MenuAccess| opened 3";
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
            QCOMPARE(recorder.takeMessages(), QStringList("probe 1"));
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
        child.start(QCoreApplication::applicationFilePath(), {"--early-line"});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.readAll(), QByteArray("LogNode node installed | early 100%s\n"));
        QCOMPARE(child.exitCode(), 0);
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
    TestLogFormatter test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_logformatter.moc"
