#include "logging/lasterrortracker.h"
#include "logging/log.h"
#include "logging/zelassert.h"
#include "support.h"

#include <QtTest>

namespace
{

support::LineRecorder* s_recorder = nullptr;
QStringList s_calls;

// Notes its arguments and the line that came before it.
void recordCall(const char* where, const char* what, const char* file, int line)
{
    s_calls += s_recorder->takeMessages();
    s_calls += QStringList({where, what, file, QString::number(line)}).join('/');
}

} // namespace

class TestZelAssert : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reports()
    {
        support::LineRecorder recorder;
        s_recorder = &recorder;
        printAssertMsg("a == b", "not equal", "x.cpp", 1); // the default handler returns
        const auto line = recorder.take().value(0);
        QCOMPARE(line.message, "ASSERT failure: not equal ( a == b ), file x.cpp , line 1");
        QVERIFY(line.level == LogLevel::Error && line.modules == Log::Global);

        installZelAssertionHandler(recordCall);
        printAssertMsg(nullptr, QString("caff\u00e8"), "x.cpp", 2);
        printReleaseAssertMsg("c", "what", "x.cpp", 3);
        printWarningMsg("careful", "x.cpp", 4);
        installZelAssertionHandler(defaultZelAssertionHandler);
        QCOMPARE(s_calls, QStringList({"ASSERT failure: caff\u00e8 (  ), file x.cpp , line 2",
                                       "/caff\u00e8/x.cpp/2",
                                       "RELEASE ASSERT failure: what ( c ), file x.cpp , line 3",
                                       "c/what/x.cpp/3"}));
        QCOMPARE(recorder.takeMessages(), QStringList("careful , file x.cpp , line 4"));
    }

    void lastError()
    {
        support::LineRecorder recorder;
        zeltools::LastErrorTracker tracker(Log::Network);
        tracker.setError("no \"link\"");
        QVERIFY(tracker.hasError());
        QCOMPARE(tracker.error(), "no \"link\"");
        tracker.setError("");
        QVERIFY(!tracker.hasError());
        QCOMPARE(recorder.takeMessages(),
                 QStringList("Last error message updated into: no \"link\""));
    }
};

QTEST_GUILESS_MAIN(TestZelAssert)
#include "tst_zelassert.moc"
