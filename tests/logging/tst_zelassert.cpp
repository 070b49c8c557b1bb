#include "logging/lasterrortracker.h"
#include "logging/log.h"
#include "logging/zelassert.h"
#include "support.h"

#include <QtTest>

namespace
{

QStringList s_calls;

void recordCall(const char* where, const char* what, const char* file, int line)
{
    s_calls.append(
        QStringLiteral("%1/%2/%3/%4")
            .arg(QString::fromUtf8(where), QString::fromUtf8(what), QString::fromUtf8(file))
            .arg(line));
}

} // namespace

class TestZelAssert : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reports()
    {
        support::LineRecorder recorder;
        printAssertMsg("a == b", "not equal", "x.cpp", 1); // the default handler returns
        installZelAssertionHandler(recordCall);
        // The handler comes after the line.
        connect(
            LogNode::instance(), &LogNode::logged, this,
            [](LogLevel::Level, const LogModules&, const QString& message) {
                s_calls.append(message);
            },
            Qt::DirectConnection);
        printAssertMsg(nullptr, QStringLiteral("caff\u00e8"), "x.cpp", 2);
        printReleaseAssertMsg("c", QStringLiteral("what"), "x.cpp", 3);
        printWarningMsg("careful", "x.cpp", 4);
        installZelAssertionHandler(defaultZelAssertionHandler);

        const auto lines = recorder.take();
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines[0].message,
                 QStringLiteral("ASSERT failure: not equal ( a == b ), file x.cpp , line 1"));
        QCOMPARE(lines[0].level, LogLevel::Error);
        QVERIFY(lines[0].modules == Log::Global);
        QCOMPARE(lines[3].level, LogLevel::Warning);
        QCOMPARE(
            s_calls,
            QStringList({QStringLiteral("ASSERT failure: caff\u00e8 (  ), file x.cpp , line 2"),
                         QStringLiteral("/caff\u00e8/x.cpp/2"),
                         QStringLiteral("RELEASE ASSERT failure: what ( c ), file x.cpp , line 3"),
                         QStringLiteral("c/what/x.cpp/3"),
                         QStringLiteral("careful , file x.cpp , line 4")}));
    }

    void lastError()
    {
        support::LineRecorder recorder;
        zeltools::LastErrorTracker tracker(Log::Network);
        QVERIFY(!tracker.hasError());
        tracker.setError(QStringLiteral("no \"link\""));
        QVERIFY(tracker.hasError());
        QCOMPARE(tracker.error(), QStringLiteral("no \"link\""));
        tracker.setError(QString());
        QVERIFY(!tracker.hasError());
        const auto lines = recorder.take();
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines[0].message, QStringLiteral("Last error message updated into: no \"link\""));
        QVERIFY(lines[0].modules == Log::Network);
    }
};

QTEST_GUILESS_MAIN(TestZelAssert)
#include "tst_zelassert.moc"
