#include "logging/log.h"
#include "logging/logfileset_p.h"
#include "logging/logformatter.h"
#include "support.h"
#include "support/rows.h"

#include <QtTest>

#include <functional>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

using Change = std::function<void(const QString& folder)>;

const QString s_name = "/zel_logs.log";

void removeFolder(const QString& folder)
{
    QDir(folder).removeRecursively();
}

void restoreFolder(const QString& folder)
{
    QFile::remove(folder);
    QDir().mkpath(folder);
}

void replaceFolder(const QString& folder)
{
    removeFolder(folder);
    support::writeFile(folder, "");
}

// Whatever takes the place of the file can be removed like a file or like an empty folder.
Change replaceFile(const Change& create)
{
    return [create](const QString& folder) {
        QFile::remove(folder + s_name);
        create(folder + s_name);
    };
}

void removeFile(const QString& folder)
{
    QFile::remove(folder + s_name);
    QDir().rmdir(folder + s_name);
}

} // namespace

class TestLogFileHealth : public QObject
{
    Q_OBJECT

private:
    using Row = std::tuple<const char*, bool, Change, Change, QString>;

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
        const Change fifo =
            replaceFile([](const QString& name) { mkfifo(qPrintable(name), 0600); });
        const Change subfolder = replaceFile([](const QString& name) { QDir().mkpath(name); });
        const Change full =
            replaceFile([](const QString& name) { QFile::link("/dev/full", name); });
        const QString noFolder = "Opening failed: No such file or directory";
        support::addRows<Row>({
            {"no folder at start", true, removeFolder, restoreFolder, noFolder},
            {"a file in the place of the folder at start", true, replaceFolder, restoreFolder,
             "Opening failed: Not a directory"},
            {"a FIFO at start", true, fifo, removeFile,
             "Opening failed: Neither a regular file nor a character device"},
            {"a full disk at start", true, full, removeFile,
             "Writing failed: No space left on device"},
            {"the folder vanishes", false, removeFolder, restoreFolder, noFolder},
            {"a file takes the place of the folder", false, replaceFolder, restoreFolder,
             "Opening failed: Not a directory"},
            {"a FIFO takes the place of the file", false, fifo, removeFile,
             "Opening failed: No such device or address"},
            {"a folder takes the place of the file", false, subfolder, removeFile,
             "Opening failed: Is a directory"},
            {"the disk becomes full", false, full, removeFile,
             "Writing failed: No space left on device"},
        });
    }
    void aFileFailsAndHeals()
    {
        const auto& [name, isAtStart, breakIt, repair, reason] = support::currentRow<Row>();
        const QDateTime start = QDateTime::currentDateTime();
        const support::StandardErrorCapture captured;
        if (isAtStart)
            breakIt(m_folder);
        open();
        m_set->file(LogManager::General)->setSecondaryFilesCount(3);
        if (!isAtStart) {
            write("before\n");
            QVERIFY(health().isHealthy && m_set->isHealthy());
            breakIt(m_folder);
            QTest::qWait(150);
        }
        write("lost\n\n");
        write("lost\nlost\n");
        QVERIFY(!health().isHealthy && !m_set->isHealthy());
        QCOMPARE(health().reason, reason);
        QCOMPARE(health().linesNotWritten, qint64(3));
        QVERIFY(health().failingSince >= start);
        const int failing = m_changes;
        QVERIFY(failing > 0);

        repair(m_folder);
        QTest::qWait(150);
        write("after\n");
        write("last\n");
        QVERIFY(health().isHealthy && health().reason.isEmpty());
        QVERIFY(!health().failingSince.isValid());
        QCOMPARE(health().linesNotWritten, qint64(3));
        QCOMPARE(m_changes, failing + 1);
        const QRegularExpression content(
            R"(^\d\d/.{20}\| Warning  \| 3 lines are missing here since \d\d/.{20}\. )" +
            QRegularExpression::escape(reason) + "\nafter\nlast\n$");
        const QByteArray found = support::readFile(m_folder + s_name);
        QVERIFY2(content.match(found).hasMatch(), found);
        QCOMPARE(m_set->file(LogManager::General)->filenames(RotatingLogFile::NewestFirst).size(),
                 4);
        const QByteArray file = (m_folder + s_name).toUtf8();
        QCOMPARE(captured.text().count("Log file " + file + ": " + reason.toUtf8()), 1);
        QCOMPARE(captured.text().count(file), 2);
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
            m_set->file(LogManager::General)->setMaximumSizeMiB(0);
            write("lost\n");
            m_set->file(LogManager::General)->setMaximumSizeMiB(1);
            write("kept\n");
        }
        QCOMPARE(support::readFile(m_folder + s_name).count("| 1 lines are missing here"), 50);
        QCOMPARE(captured.text().count('\n'), 2);
        QCOMPARE(health().linesNotWritten, qint64(50));
    }

    void theReportHasTheFormOfTheFile_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("form");
        QTest::newRow("events") << int(LogManager::Events) << "| NONE| 1 lines";
        QTest::newRow("grinder") << int(LogManager::Grinder) << "|1 lines";
        QTest::newRow("capsule") << int(LogManager::Capsule) << "|1 lines";
        QTest::newRow("M4") << int(LogManager::M4ActuatorBoard) << "| Warning  | 1 lines";
    }
    void theReportHasTheFormOfTheFile()
    {
        QFETCH(int, id);
        QFETCH(QString, form);
        const support::StandardErrorCapture captured;
        removeFolder(m_folder);
        open();
        write("lost\n", LogManager::LogFileId(id));
        restoreFolder(m_folder);
        open(); // writes the report at once
        const QString content =
            m_set->file(LogManager::LogFileId(id))->totalContent(RotatingLogFile::OldestFirst);
        QCOMPARE(content.mid(23, form.size()), form);
    }

    // The manager's own thread announces what another thread has noticed. The history of a kind
    // does not show the report.
    void theManagerAnnouncesTheStateOfItsFiles()
    {
        const support::StandardErrorCapture captured;
        LogManager* manager = LogManager::instance();
        QSignalSpy spy(manager, &LogManager::logFilesHealthChanged);
        QVERIFY(manager->logFilesHealthy());
        removeFolder(Path::instance()->eventLogsDir);
        LogManager::initialize();
        const auto logEvents = [] {
            for (int i = 0; i < 5; ++i)
                LogFormatter(LogLevel::Event).logEvent(LogEventModule::MenuAccess) << i;
        };
        std::thread(logEvents).join();
        QVERIFY(!manager->property("logFilesHealthy").toBool());
        QCOMPARE(spy.count(), 0);
        QTRY_COMPARE(spy.count(), 1);
        QCOMPARE(manager->fileHealth(LogManager::Events).linesNotWritten, qint64(5));
        QVERIFY(manager->fileHealth(LogManager::General).isHealthy);

        restoreFolder(Path::instance()->eventLogsDir);
        QTest::qWait(150);
        logEvents();
        QVERIFY(manager->fileHealth(LogManager::Events).isHealthy);
        QVERIFY(!manager->logFilesHealthy()); // no line has come for the two other files
        QTRY_COMPARE(spy.count(), 2);
        QString text;
        QCOMPARE(manager->writeEventsText(text, LogManager::MenuAccessFilter, {}, {}, 0, 5), 1);
        QVERIFY(!text.contains("missing"));
        QCOMPARE(manager->writeEventsText(text, LogManager::AllEvent, {}, {}, 1, 5), 2);
        QVERIFY(text.contains("| NONE| 5 lines are missing here"));
        manager->finalizeLogFiles();
    }
};

QTEST_GUILESS_MAIN(TestLogFileHealth)
#include "tst_logfilehealth.moc"
