#include "logging/log.h"
#include "logging/loginfile.h"
#include "logging/tracequeue_p.h"
#include "support.h"

#include <QtTest>

class TestLogInFile : public QObject
{
    Q_OBJECT

private:
    support::TemporaryLayout m_layout;
    const RotatingLogFileConfiguration m_configuration{1.0F, 1, false};

    static QString path() { return Path::instance()->debugLogsDir + "trace.log"; }

private Q_SLOTS:
    void cleanup() { QFile::remove(path()); }

    void atFirstLinesGoToTheLogOnly()
    {
        support::LineRecorder recorder;
        LogInFile trace(nullptr, "some/folder/trace.log", Log::Payment, m_configuration);
        QCOMPARE(trace.filename(), path());
        trace.logString("coin");
        trace.setLogInDebug(false);
        trace.logString("silent");
        const auto lines = recorder.take();
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines[0].message, QStringLiteral("\"coin\""));
        QCOMPARE(lines[0].level, LogLevel::Info);
        QVERIFY(lines[0].modules == Log::Payment);
        QVERIFY(!QFile::exists(path()));
    }

    // The writer is an idle thread; neither switching off nor the end may overtake it.
    void everyLineLoggedIsInTheFile_data()
    {
        QTest::addColumn<bool>("switchedOff");
        QTest::newRow("destroyed at once") << false;
        QTest::newRow("switched off at once") << true;
    }
    void everyLineLoggedIsInTheFile()
    {
        QFETCH(bool, switchedOff);
        constexpr int count = 5000;
        {
            LogInFile trace(nullptr, "trace.log", Log::Payment, m_configuration);
            trace.setLogInDebug(false);
            trace.setLogInFile(true);
            for (int i = 0; i < count; ++i)
                trace.logString(QString("caff\u00e8 %1").arg(i));
            if (switchedOff) {
                trace.setLogInFile(false);
                trace.logString("not wanted");
            }
        }
        const QStringList lines = RotatingLogFile::getLogLines(path());
        QCOMPARE(lines.size(), count);
        for (int i = 0; i < count; ++i)
            QCOMPARE(lines[i].mid(23), QString("|caff\u00e8 %1").arg(i));
    }

    // The writer of this queue does not run.
    void whatFindsNoRoomIsCounted()
    {
        TraceQueue queue;
        const QByteArray line(1024 * 1024, 'x');
        for (int i = 0; i < 100; ++i)
            queue.add(line);
        int written = 0;
        for (; written < 20; ++written)
            QCOMPARE(queue.next()->droppedBefore, qint64(0));
        queue.add(line); // still more than half
        for (; written < 40; ++written)
            QCOMPARE(queue.next()->size, qint64(line.size()));
        queue.add("last");
        for (; written < 63; ++written)
            QCOMPARE(queue.next()->size, qint64(line.size()));
        const auto last = queue.next();
        QCOMPARE(QByteArray(last->bytes(), int(last->size)), QByteArray("last"));
        QCOMPARE(last->droppedBefore, qint64(38));
        queue.end();
        QVERIFY(!queue.next());
    }

    void openingAndClosing()
    {
        LogInFile trace(nullptr, "trace.log", Log::Payment, m_configuration);
        support::LineRecorder recorder;
        trace.setLogInFile(true);
        trace.setLogInFile(true);
        QVERIFY(!trace.openFile());
        QVERIFY(trace.closeFile());
        QVERIFY(!trace.closeFile());
        trace.setLogInFile(false); // silently
        QVERIFY(trace.openFile());
        QVERIFY(trace.closeFile());
        QVERIFY(QFile::remove(path()) && QDir().mkdir(path()));
        QVERIFY(!trace.openFile());
        QVERIFY(QDir().rmdir(path()));
        QCOMPARE(recorder.takeMessages(),
                 QStringList({"bool LogInFile::openFile() Log file is already opened !",
                              "bool LogInFile::closeFile() Log file is not opened",
                              "bool LogInFile::openFile() Failed opening log file"}));
    }
};

QTEST_GUILESS_MAIN(TestLogInFile)
#include "tst_loginfile.moc"
