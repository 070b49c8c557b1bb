#include "logging/log.h"
#include "logging/logbuffer_p.h"
#include "logging/logfileset_p.h"
#include "logging/loginfile.h"
#include "logging/sinklist_p.h"
#include "logging/tracequeue_p.h"
#include "support.h"
#include "support/threads.h"

#include <QtTest>

#include <array>
#include <atomic>

using namespace std::chrono_literals;

class TestLogFiles : public QObject
{
    Q_OBJECT

private:
    support::TemporaryLayout m_layout;
    QTemporaryDir m_folder;
    const LogFileSet::Settings m_settings =
        LogFileSet::settings(m_folder.path() + '/', m_folder.path() + '/');
    const RotatingLogFileConfiguration m_configuration{1.0F, 1, false};

    static QString tracePath() { return Path::instance()->debugLogsDir + "trace.log"; }

private Q_SLOTS:
    void cleanup() { QFile::remove(tracePath()); }

    void aReopenedSetContinuesItsFiles()
    {
        LogFileSet set;
        QCOMPARE(set.file(LogManager::Capsule), nullptr);
        set.open(m_settings);
        const RotatingLogFile* file = set.file(LogManager::Capsule);
        set.write(LogManager::Capsule, "half", 4);
        set.close();
        set.write(LogManager::Capsule, "dropped", 7);
        set.open(m_settings);
        set.open(m_settings);
        QCOMPARE(set.file(LogManager::Capsule), file);
        set.write(LogManager::Capsule, "new\n", 4);
        QCOMPARE(support::readFile(m_folder.filePath("zel_capsule.log")), "half\nnew\n");
        QCOMPARE(set.file(LogManager::Grinder)->maximumSize_B(), qint64(5 << 20));
        set.file(LogManager::Events)->deleteFile();
        QVERIFY(QFile::exists(m_folder.filePath("zel_events_deleted.log")));
    }

    void threadsMayWriteToASetThatCloses()
    {
        LogFileSet set;
        set.open(m_settings);
        std::atomic<bool> isOver{false};
        std::thread writer([&] {
            while (!isOver)
                set.write(LogManager::M4ActuatorBoard, "line\n", 5);
        });
        for (int i = 0; i < 200; ++i) {
            set.close();
            set.open(m_settings);
        }
        isOver = true;
        writer.join();
        for (const QString& line : RotatingLogFile::getLogLines(m_folder.filePath("m4_ab.log")))
            QVERIFY(line == "line" || line.isEmpty());
    }

    void aTraceLineIsCopiedToTheLogFirst()
    {
        support::LineRecorder recorder;
        LogInFile trace(nullptr, "some/folder/trace.log", Log::Payment, m_configuration);
        QCOMPARE(trace.filename(), tracePath());
        trace.logString("coin");
        trace.setLogInDebug(false);
        trace.logString("silent");
        const auto lines = recorder.take();
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines[0].message, "\"coin\"");
        QVERIFY(lines[0].level == LogLevel::Info && lines[0].modules == Log::Payment);
        QVERIFY(!QFile::exists(tracePath()));
    }

    // The idle writer thread is slower than switching off and than the end of the object.
    void everyTraceLineIsInTheFile()
    {
        constexpr int count = 10000;
        {
            LogInFile trace(nullptr, "trace.log", Log::Payment, m_configuration);
            trace.setLogInDebug(false);
            trace.setLogInFile(true);
            for (int i = 0; i < count; ++i) {
                if (i == count / 2) {
                    trace.setLogInFile(false);
                    trace.logString("not wanted");
                    trace.setLogInFile(true);
                }
                trace.logString(QString("caff\u00e8 %1").arg(i));
            }
        }
        const QStringList lines = RotatingLogFile::getLogLines(tracePath());
        QCOMPARE(lines.size(), count);
        for (int i = 0; i < count; ++i)
            QCOMPARE(lines[i].mid(23), QString("|caff\u00e8 %1").arg(i));
    }

    // Four threads log a trace while the delivery of the log lines changes again and again.
    void aTraceKeepsItsOrderWhenTheDeliveryChanges()
    {
        if (sizeof(void*) == 4)
            QSKIP("The rings of so many deliveries, which stay in memory, have more than 4 GiB",
                  SkipSingle);
        constexpr int count = 40000;
        LogFileSet files;
        SinkList sinks;
        files.open(m_settings);
        std::atomic<int> running = 4;
        {
            LogInFile trace(nullptr, "trace.log", Log::Payment, {10, 1, false});
            trace.setLogInDebug(false);
            trace.setLogInFile(true);
            const support::Threads threads(4, [&](int thread) {
                for (int i = 0; i < count; ++i)
                    trace.logString(QString("%1 %2").arg(thread).arg(i));
                --running;
            });
            QString error;
            while (running > 0) {
                QVERIFY2(LogBuffer::start({}, {m_folder.path()}, files, sinks, error),
                         qPrintable(error));
                std::this_thread::sleep_for(1ms);
                QCOMPARE(LogBuffer::current()->losses().total, quint64(0));
                QVERIFY(LogBuffer::stop(10s));
            }
        }
        std::array<int, 4> next = {};
        const QStringList lines = RotatingLogFile::getLogLines(tracePath());
        for (const QString& line : lines) {
            const QStringList words = line.mid(24).split(' ');
            QCOMPARE(words.at(1).toInt(), next.at(words.at(0).toUInt())++);
        }
        QCOMPARE(lines.size(), 4 * count);
    }

    // No writer empties this queue.
    void aFullQueueCountsTheLinesThatItDrops()
    {
        TraceQueue queue;
        const QByteArray line(1024 * 1024, 'x');
        for (int i = 0; i < 100; ++i)
            queue.add(line);
        auto takeUntil = [&, taken = 0](int count) mutable {
            while (taken < count && queue.next()->size == line.size())
                ++taken;
            return taken == count;
        };
        QVERIFY(takeUntil(20));
        queue.add(line); // more than half of the queue is still full
        QVERIFY(takeUntil(40));
        queue.add("last");
        QVERIFY(takeUntil(63));
        const auto last = queue.next();
        QCOMPARE(QByteArray(last->bytes(), int(last->size)), "last");
        QCOMPARE(last->droppedBefore, qint64(38));
        queue.end();
        QVERIFY(!queue.next());
    }

    void theFileTellsHowManyLinesWereDropped()
    {
        RotatingLogFile file(m_configuration);
        file.setPrimaryFilename(tracePath());
        file.file.open(QIODevice::Append);
        {
            LogInFile::WriterThread writer(&file);
            for (int i = 0; i < 70; ++i)
                writer.onWriteStringToFile(QString(1024 * 1024, 'x'));
            writer.start();
        }
        QVERIFY(support::readFile(tracePath()).contains("|7 lines were dropped here"));
    }
};

QTEST_GUILESS_MAIN(TestLogFiles)
#include "tst_logfiles.moc"
