#include "logging/logfileset_p.h"
#include "support.h"

#include <QtTest>

#include <thread>

class TestLogFileSet : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    const LogFileSet::Settings m_settings =
        LogFileSet::settings(m_folder.path() + '/', m_folder.path() + '/');

private Q_SLOTS:
    void openingAgainGoesOnInTheSameFiles()
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
        QCOMPARE(support::readFile(m_folder.filePath("zel_capsule.log")),
                 QByteArray("half\nnew\n"));
        QCOMPARE(set.file(LogManager::Grinder)->maximumSize_B(), qint64(5 << 20));
        set.file(LogManager::Events)->deleteFile();
        QVERIFY(QFile::exists(m_folder.filePath("zel_events_deleted.log")));
    }

    void threadsMayWriteWhileItCloses()
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
};

QTEST_GUILESS_MAIN(TestLogFileSet)
#include "tst_logfileset.moc"
