#include "logging/log.h"
#include "logging/logfileset_p.h"
#include "logging/logroute_p.h"
#include "support.h"

#include <QtTest>

#include <thread>

using support::readFile;

class TestLogFileSet : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    LogFileSet::Settings settings() const
    {
        return LogFileSet::settings(m_folder.path() + QLatin1Char('/'),
                                    m_folder.path() + QLatin1Char('/'));
    }

private Q_SLOTS:
    void theFiveFiles()
    {
        const auto files = settings();
        QCOMPARE(files[LogManager::M4ActuatorBoard].path,
                 m_folder.filePath(QStringLiteral("m4_ab.log")));
        LogFileSet set;
        QCOMPARE(set.file(LogManager::Grinder), nullptr);
        set.open(files);
        QCOMPARE(set.file(LogManager::Grinder)->maximumSize_B(), qint64(5 << 20));
        QCOMPARE(set.file(LogManager::Capsule)->filenames(RotatingLogFile::NewestFirst).size(), 2);
        set.write(LogManager::Events, "e\n", 2);
        set.file(LogManager::Events)->deleteFile();
        set.write(LogManager::General, "g\n", 2);
        set.file(LogManager::General)->deleteFile();
        QCOMPARE(readFile(m_folder.filePath(QStringLiteral("zel_events_deleted.log"))),
                 QByteArray("e\n"));
        QVERIFY(!QFile::exists(m_folder.filePath(QStringLiteral("zel_logs_deleted.log"))));
    }

    void openingAgainGoesOnInTheSameFiles()
    {
        const QString path = m_folder.filePath(QStringLiteral("zel_capsule.log"));
        LogFileSet set;
        set.open(settings());
        const RotatingLogFile* file = set.file(LogManager::Capsule);
        set.write(LogManager::Capsule, "half", 4);
        set.close();
        set.write(LogManager::Capsule, "dropped", 7);
        set.open(settings());
        set.open(settings());
        QCOMPARE(set.file(LogManager::Capsule), file);
        set.write(LogManager::Capsule, "new\n", 4);
        QCOMPARE(readFile(path), QByteArray("half\nnew\n"));
    }

    void threadsMayWriteWhileItCloses()
    {
        LogFileSet set;
        set.open(settings());
        std::atomic<bool> isOver{false};
        std::thread writer([&] {
            while (!isOver)
                set.write(LogManager::M4ActuatorBoard, "line\n", 5);
        });
        for (int i = 0; i < 200; ++i) {
            set.close();
            set.open(settings());
        }
        isOver = true;
        writer.join();
        const auto lines =
            RotatingLogFile::getLogLines(m_folder.filePath(QStringLiteral("m4_ab.log")));
        QVERIFY(lines.size() == lines.count(QStringLiteral("line")) ||
                lines == QStringList(QString()));
    }

    void routes_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<LogModules>("modules");
        QTest::addColumn<int>("route");
        QTest::newRow("exactly the failure module, whatever the level")
            << int(LogLevel::Event) << LogModules(Log::Failure) << int(LogRoute::Failure);
        QTest::newRow("a failure among others is none")
            << int(LogLevel::Error) << (Log::Failure | Log::Payment) << int(LogRoute::General);
        QTest::newRow("an event of several modules")
            << int(LogLevel::Event) << (Log::Failure | Log::Event) << int(LogRoute::Events);
        QTest::newRow("a level nobody knows") << 99 << LogModules() << int(LogRoute::General);
    }
    void routes()
    {
        QFETCH(int, level);
        QFETCH(LogModules, modules);
        QFETCH(int, route);
        QCOMPARE(int(logRoute(static_cast<LogLevel::Level>(level), modules)), route);
    }
};

QTEST_GUILESS_MAIN(TestLogFileSet)
#include "tst_logfileset.moc"
