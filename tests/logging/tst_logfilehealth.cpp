#include "logging/logfileset_p.h"
#include "logging/logformatter.h"
#include "support.h"
#include "support/rows.h"

#include <QtTest>

#include <functional>
#include <thread>

#include <sys/stat.h>

namespace
{

const QString s_name = "/zel_logs.log";

void restore(const QString& folder)
{
    QFile::remove(folder);
    QDir().mkpath(folder);
    QFile::remove(folder + s_name);
    QDir().rmdir(folder + s_name);
}

} // namespace

class TestLogFileHealth : public QObject
{
    Q_OBJECT

private:
    using Fault = std::function<void(const QString& folder)>;
    using Row = std::tuple<const char*, bool, Fault, QString>;

    support::TemporaryLayout m_layout;
    std::unique_ptr<QTemporaryDir> m_root;
    QString m_folder;
    int m_changes = 0;
    std::unique_ptr<LogFileSet> m_set;

    void open() { m_set->open(LogFileSet::settings(m_folder + '/', m_folder + '/')); }
    void write(const QByteArray& line, LogManager::LogFileId id = LogManager::General)
    {
        m_set->write(id, line.constData(), line.size());
    }
    LogFileHealth health() const { return m_set->health(LogManager::General); }

private Q_SLOTS:
    void init()
    {
        m_root = std::make_unique<QTemporaryDir>();
        m_folder = m_root->filePath("logs");
        QDir().mkpath(m_folder);
        m_changes = 0;
        m_set = std::make_unique<LogFileSet>([this] { ++m_changes; });
    }

    void aFileFailsAndHeals_data()
    {
        const auto removed = [](const QString& folder) { QDir(folder).removeRecursively(); };
        const auto replaced = [](const QString& folder) {
            QDir(folder).removeRecursively();
            support::writeFile(folder, "");
        };
        const auto fifo = [](const QString& folder) {
            QFile::remove(folder + s_name);
            mkfifo(qPrintable(folder + s_name), 0600);
        };
        const auto full = [](const QString& folder) {
            QFile::remove(folder + s_name);
            QFile::link("/dev/full", folder + s_name);
        };
        support::addRows<Row>({
            {"no folder at start", true, removed, "Opening failed: No such file or directory"},
            {"a file in its place at start", true, replaced, "Opening failed: Not a directory"},
            {"the folder vanishes", false, removed, "Opening failed: No such file or directory"},
            {"a FIFO takes the place", false, fifo, "Opening failed: No such device or address"},
            {"the disk is full", false, full, "Writing failed: No space left on device"},
        });
    }
    void aFileFailsAndHeals()
    {
        const auto& [name, isAtStart, breakIt, reason] = support::currentRow<Row>();
        const QDateTime start = QDateTime::currentDateTime();
        const support::StandardErrorCapture captured;
        if (isAtStart)
            breakIt(m_folder);
        open();
        m_set->file(LogManager::General)->setMaximumSizeMiB(3);
        if (!isAtStart) {
            QVERIFY(health().isHealthy && m_set->isHealthy());
            breakIt(m_folder);
            m_set->totalContent(LogManager::General); // must not wait for the writer of a FIFO
            QTest::qWait(150);
        }
        write("lost\n\n");
        write("lost\nlost\n");
        QVERIFY(!health().isHealthy && !m_set->isHealthy());
        QCOMPARE(health().reason, reason);
        QVERIFY(health().failingSince >= start);
        const int failing = m_changes;
        QVERIFY(failing > 0);

        restore(m_folder);
        QTest::qWait(150);
        write("after\n");
        write("last\n");
        QVERIFY(health().isHealthy && health().reason.isEmpty());
        QVERIFY(!health().failingSince.isValid());
        QCOMPARE(health().linesNotWritten, qint64(3));
        QVERIFY(m_changes > failing);
        const QRegularExpression content(
            R"(^\d\d/.{20}\| Warning  \| 3 lines are missing here since \d\d/.{20}\. )" +
            QRegularExpression::escape(reason) + "\nafter\nlast\n$");
        const QByteArray found = support::readFile(m_folder + s_name);
        QVERIFY2(content.match(found).hasMatch(), found);
        QCOMPARE(m_set->file(LogManager::General)->maximumSize_B(), qint64(3 << 20));
        QCOMPARE(captured.text().count("zel_logs.log: " + reason.toUtf8()), 1);
        QCOMPARE(captured.text().count("zel_logs.log: "), 2);
    }

    // The lines stay in the live file, so none is missing.
    void aRotationFailsAndSucceedsLater()
    {
        const support::StandardErrorCapture captured;
        open();
        QDir().mkpath(m_folder + s_name + ".1/full");
        m_set->file(LogManager::General)->setMaximumSizeMiB(5.0 / 1024 / 1024);
        write("one\n");
        write("two\n");
        QCOMPARE(health().reason, QString("Rotation failed: Is a directory"));
        QCOMPARE(health().linesNotWritten, qint64(0));
        QDir(m_folder + s_name + ".1").removeRecursively();
        write("three\n");
        QVERIFY(health().isHealthy);
        QCOMPARE(support::readFile(m_folder + s_name + ".1"), "one\ntwo\n");
        QCOMPARE(support::readFile(m_folder + s_name), "three\n");
    }

    // A fault that comes and goes is told in the file each time, but not on standard error.
    void aFaultThatComesAndGoesDoesNotFloodStandardError()
    {
        const support::StandardErrorCapture captured;
        open();
        for (int i = 0; i < 50; ++i) {
            m_set->file(LogManager::Grinder)->setMaximumSizeMiB(0);
            write("lost\n", LogManager::Grinder);
            m_set->file(LogManager::Grinder)->setMaximumSizeMiB(1);
            write("kept\n", LogManager::Grinder);
        }
        QCOMPARE(m_set->totalContent(LogManager::Grinder).count("|1 lines are missing here"), 50);
        QCOMPARE(captured.text().count('\n'), 2);
    }

    // The manager's own thread announces what another thread has noticed.
    void theManagerAnnouncesTheStateOfItsFiles()
    {
        const support::StandardErrorCapture captured;
        LogManager* manager = LogManager::instance();
        const QSignalSpy spy(manager, &LogManager::logFilesHealthChanged);
        QDir(Path::instance()->eventLogsDir).removeRecursively();
        LogManager::initialize();
        std::thread([] { LogFormatter(LogLevel::Event) << "lost"; }).join();
        QVERIFY(!manager->property("logFilesHealthy").toBool());
        QCOMPARE(spy.count(), 0);
        QTRY_COMPARE(spy.count(), 1);
        manager->finalizeLogFiles();
    }
};

QTEST_GUILESS_MAIN(TestLogFileHealth)
#include "tst_logfilehealth.moc"
