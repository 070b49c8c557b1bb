#include "interpose.h"
#include "logging/logfileset_p.h"
#include "support.h"

#include <QtTest>

#include <sys/stat.h>
#include <sys/wait.h>

namespace
{

QMutex s_mutex;
QVector<ino_t> s_synced;
std::atomic<bool> s_isFrozen{false};

} // namespace

INTERPOSED int fdatasync(int descriptor)
{
    while (s_isFrozen)
        QThread::msleep(1);
    struct stat file;
    if (fstat(descriptor, &file) == 0) {
        const QMutexLocker locker(&s_mutex);
        s_synced.append(file.st_ino);
    }
    return original<int(int)>("fdatasync")(descriptor);
}

class TestLogSync : public QObject
{
    Q_OBJECT

private:
    using Urgency = LogFileSet::Urgency;

    support::TemporaryLayout m_layout;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<LogFileSet> m_set;

    bool isSynced(const char* name) const
    {
        struct stat file;
        const QMutexLocker locker(&s_mutex);
        return stat(qPrintable(m_folder->filePath(name)), &file) == 0 &&
               s_synced.contains(file.st_ino);
    }
    void write(const QByteArray& line, Urgency urgency = Urgency::Normal)
    {
        m_set->write(LogManager::General, line.constData(), line.size(), urgency);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_set = std::make_unique<LogFileSet>();
        m_set->setSyncDelays(std::chrono::hours(1), std::chrono::milliseconds(100));
        m_set->open(LogFileSet::settings(m_folder->path() + '/', m_folder->path() + '/'));
        s_synced.clear();
    }
    void cleanup()
    {
        s_isFrozen = false;
        m_set.reset();
    }

    void onlyAnUrgentLineIsForcedToTheStorageAtOnce()
    {
        write("line\n", LogFileSet::urgencyOf(LogLevel::Warning));
        QTest::qWait(300);
        QVERIFY(s_synced.isEmpty());
        write("line\n", LogFileSet::urgencyOf(LogLevel::Error));
        QTRY_VERIFY(isSynced("zel_logs.log"));
        m_set->write(LogManager::Events, "event\n", 6);
        QTRY_VERIFY(isSynced("zel_events.log"));
        m_set->write(LogManager::Capsule, "line\n", 5);
        m_set->close();
        QVERIFY(isSynced("zel_capsule.log"));
    }

    // The lines of a rotated file are as important as before. A deleted file occupies no space.
    void aRotatedFileIsForcedToTheStorage()
    {
        m_set->file(LogManager::General)->setMaximumSizeMiB(5.0 / 1024 / 1024);
        for (const char* line : {"one\n", "two\n", "three\n"})
            write(line);
        for (const QFileInfo& descriptor : QDir("/proc/self/fd").entryInfoList(QDir::System))
            QVERIFY(!descriptor.symLinkTarget().contains("zel_logs.log.1 (deleted)"));
        write("four\n", Urgency::Urgent);
        QTRY_VERIFY(isSynced("zel_logs.log") && isSynced("zel_logs.log.1"));
        QCOMPARE(s_synced.size(), 2);
    }

    void nobodyWaitsForAFrozenStorage()
    {
        s_isFrozen = true;
        m_set->file(LogManager::General)->setMaximumSizeMiB(100.0 / 1024 / 1024);
        for (int i = 0; i < 100; ++i) {
            write("line\n", Urgency::Urgent);
            QTest::qWait(2);
        }
        QVERIFY(s_synced.isEmpty());
        // Another object may write the file as soon as the set has closed it.
        m_set->file(LogManager::General)->file.close();
        PrimaryFile other(m_folder->filePath("zel_logs.log"));
        QVERIFY(other.open(QIODevice::Append) && other.lock());
    }

    void aForkedChildNeitherWaitsNorCrashes()
    {
        write("parent\n");
        const pid_t child = fork();
        if (child == 0) {
            write("child\n", Urgency::Urgent);
            m_set->close();
            _exit(0);
        }
        int status = -1;
        QTRY_VERIFY(status >= 0 || waitpid(child, &status, WNOHANG) == child);
        QCOMPARE(status, 0);
        QVERIFY(m_set->file(LogManager::General)->file.isLocked());
        PrimaryFile other(m_folder->filePath("zel_logs.log"));
        QVERIFY(other.open(QIODevice::Append) && !other.lock());
    }
};

QTEST_GUILESS_MAIN(TestLogSync)
#include "tst_logsync.moc"
