// The files of crash reports, without a crash; tests/faults/crashfaults.py has the crashes.
#include "crashreports/crashreports.h"
#include "crashreports/crashreportwriter.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "logging/logtail.h"
#include "support.h"
#include "support/rows.h"
#include "support/threads.h"

#include <QRegularExpression>
#include <QTest>

#include <atomic>

#include <sys/file.h>
#include <sys/wait.h>

using support::readFile;
using support::writeFile;
using zeltools::CrashReports;
using zeltools::CrashReportWriter;

namespace
{

QByteArray bootId()
{
    return readFile("/proc/sys/kernel/random/boot_id").trimmed();
}

// A file that a run has left behind.
QByteArray leftBehind(const QByteArray& boot, const QByteArray& rest)
{
    return "ZelTools crash report 1\n[process]\npid 77\nprogram /opt/machine\nboot " + boot +
           "\nstarted 1732262400123\n" + rest;
}

const QByteArray s_crash =
    "[crash]\nsignal 11 SIGSEGV\ntime 1732262500456\nreason no milk\n[log]\nreason no water\n";

using Run = std::tuple<const char*, QByteArray, QString, QString>;

QStringList tailLines()
{
    QStringList lines;
    LogTail::read(
        [](void* argument, const char* line, int size) {
            static_cast<QStringList*>(argument)->append(QString::fromUtf8(line, size));
        },
        &lines);
    return lines;
}

} // namespace

class TestCrashReports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LogManager::initialize(); }
    void init() { QVERIFY(m_folder.isValid()); }
    void cleanup()
    {
        CrashReports::uninstall();
        QVERIFY(QDir(m_folder.path()).removeRecursively() && QDir().mkpath(m_folder.path()));
    }

    // The line that tells about a run, and the name of the report that is kept.
    void collects_data()
    {
        const QString time =
            QDateTime::fromMSecsSinceEpoch(1732262500456).toString("yyyyMMdd-hhmmss");
        support::addRows<Run>({
            {"a crash is told once and its report is kept", leftBehind(bootId(), s_crash),
             "The program crashed at * (signal 11 SIGSEGV, no milk); report: *",
             "crash-" + time + "-77.report"},
            {"a crash is one although the power was cut later", leftBehind("other", s_crash),
             "The program crashed at *", "crash-" + time + "-77.report"},
            {"a run without a report in this boot was killed", leftBehind(bootId(), ""),
             "The run of process 77,*without a crash report: it was killed", ""},
            {"a run without a report in an earlier boot lost its power", leftBehind("other", ""),
             "The run of process 77,*: the power was cut or the system was restarted", ""},
            {"an empty file comes from a power cut", "",
             "The run of process 77,*: the power was cut or *", ""},
            {"zeros come from a power cut", QByteArray(5000, '\0'), "*: the power was cut or *",
             ""},
        });
    }
    void collects()
    {
        const auto& [name, content, expectedLine, expectedReport] = support::currentRow<Run>();
        const QString path = m_folder.filePath("crash-77-1732262400123.open");
        writeFile(path, content);
        support::LineRecorder lines;
        QVERIFY(CrashReports::install(m_folder.path()));
        const auto told = lines.take();
        QVERIFY(!QFile::exists(path));
        const QRegularExpression pattern(
            QRegularExpression::wildcardToRegularExpression(expectedLine).replace("[^/]", "."));
        QVERIFY2(pattern.match(told.value(0).message).hasMatch(),
                 qPrintable(told.value(0).message));
        const bool isCrash = !expectedReport.isEmpty();
        QCOMPARE(told.size(), isCrash ? 2 : 1);
        QCOMPARE(told[0].level, isCrash ? LogLevel::Critical : LogLevel::Warning);
        const QStringList reports = CrashReports::reports(m_folder.path());
        QCOMPARE(reports.size(), isCrash ? 1 : 0);
        if (isCrash) {
            QCOMPARE(told[1].level, LogLevel::Event);
            QCOMPARE(reports[0], m_folder.filePath(expectedReport));
            QCOMPARE(readFile(reports[0]), content);
        }
    }

    void leavesFilesOfOthersAlone()
    {
        const QString running = m_folder.filePath("crash-78-1.open");
        writeFile(running, leftBehind(bootId(), ""));
        QFile locked(running);
        QVERIFY(locked.open(QIODevice::ReadOnly));
        QVERIFY(flock(locked.handle(), LOCK_EX) == 0);
        writeFile(m_folder.filePath("notes.txt"), "text");
        QVERIFY(QFile::link("/etc/passwd", m_folder.filePath("crash-79-1.open")));
        support::LineRecorder lines;
        QVERIFY(CrashReports::install(m_folder.path()));
        const QStringList told = lines.takeMessages();
        QCOMPARE(told.size(), 1);
        QVERIFY(told[0].startsWith("Cannot collect " + m_folder.filePath("crash-79-1.open")));
        QVERIFY(QFile::exists(running) && QFile::exists(m_folder.filePath("notes.txt")));
    }

    // Two crashes may fall into the same second of a process with the same number.
    void keepsBothReportsOfOneName()
    {
        for (const char* name : {"crash-77-1.open", "crash-77-2.open"})
            writeFile(m_folder.filePath(name), leftBehind(bootId(), s_crash));
        QVERIFY(CrashReports::install(m_folder.path()));
        const QStringList reports = CrashReports::reports(m_folder.path());
        QCOMPARE(reports.size(), 2);
        QVERIFY(reports[0].endsWith("-77-2.report"));
    }

    void keepsTheNewestWithinTheLimits()
    {
        for (int i = 10; i < 20; ++i)
            writeFile(m_folder.filePath(QString("crash-202611%1-120000-5.report").arg(i)),
                      QByteArray(1000, 'x'));
        const auto count = [this](CrashReports::Limits limits) {
            return CrashReports::install(m_folder.path(), limits)
                       ? CrashReports::reports(m_folder.path()).size()
                       : -1;
        };
        QCOMPARE(count({7, 1000000}), 7);
        QCOMPARE(count({7, 3500}), 3);
        QCOMPARE(count({0, 10}), 1);
        QCOMPARE(CrashReports::reports(m_folder.path()),
                 QStringList(m_folder.filePath("crash-20261119-120000-5.report")));
        writeFile(m_folder.filePath("crash-77-1.open"), "[process]\n[crash]\ntime 1\n");
        QCOMPARE(count({1, 1000000}), 1); // The clock was wrong at that crash.
        QVERIFY(CrashReports::reports(m_folder.path())[0].contains("crash-19"));
    }

    void preparesAndRemovesItsFile()
    {
        support::LineRecorder lines;
        QVERIFY(!CrashReports::install("/proc/none"));
        QVERIFY(lines.takeMessages().value(0).startsWith("There will be no crash report; "));
        QVERIFY(CrashReports::install(m_folder.filePath("new")));
        QCOMPARE(CrashReports::folder(), m_folder.filePath("new"));
        const QDir folder(m_folder.filePath("new"));
        const QStringList names = folder.entryList(QDir::Files);
        QCOMPARE(names.size(), 1);
        const QByteArray header = readFile(folder.filePath(names[0]));
        const QByteArray pid = QByteArray::number(QCoreApplication::applicationPid());
        QVERIFY(header.startsWith("ZelTools crash report 1\n[process]\npid " + pid + "\nprogram "));
        QVERIFY(header.contains("\nboot " + bootId() + "\nstarted "));

        const pid_t child = fork(); // It has no file to remove.
        if (child == 0) {
            CrashReports::uninstall();
            std::_Exit(0);
        }
        QVERIFY(waitpid(child, nullptr, 0) == child);
        QCOMPARE(folder.entryList(QDir::Files), names);
        CrashReports::uninstall();
        QVERIFY(folder.entryList(QDir::Files).isEmpty() && CrashReports::folder().isEmpty());
    }

    void writerKeepsLinesApart()
    {
        QFile file(m_folder.filePath("lines"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        {
            CrashReportWriter writer(file.handle());
            writer.text("[end]").endLine();
            writer.text("a\n[b").text("[c\x7f").text(nullptr).endLine();
            writer.number(std::numeric_limits<qint64>::min()).text(" ").number(0).endLine();
            writer.hex(0).text(" ").hex(~quint64(0)).beginHeading().text("log").endHeading();
            writer.text(QByteArray(5000, 'x').constData()).endLine();
        }
        QCOMPARE(readFile(file.fileName()),
                 " [end]\na?[b[c?\n-9223372036854775808 0\n0x0 0xffffffffffffffff\n[log]\n" +
                     QByteArray(5000, 'x') + '\n');
    }

    void tailKeepsTheLastLines()
    {
        for (int i = 0; i < 1000; ++i)
            LogTail::add("x\n\n", 3);
        const QByteArray cut = QByteArray(499, 'a') + "\xc3\xa4";
        LogTail::add(cut.constData(), cut.size());
        LogTail::add("\n", 1);
        const QStringList lines = tailLines();
        QCOMPARE(lines.size(), 200);
        QCOMPARE(lines.mid(197), QStringList({"x", QString(499, 'a'), ""}));
        for (int i = 0; i < 300; ++i)
            LogTail::add("x", 1);

        std::atomic<int> running{2};
        const support::Threads writers(2, [&running](int thread) {
            const QByteArray line(500 - thread, char('a' + thread));
            for (int i = 0; i < 60000; ++i)
                LogTail::add(line.constData(), line.size());
            --running;
        });
        while (running > 0) {
            LogTail::read(
                [](void*, const char* read, int size) {
                    if (size > 1 && std::count(read, read + size, 'a' + 500 - size) != size)
                        qFatal("a torn line of %d bytes", size);
                },
                nullptr);
        }
    }

    void tailGetsEachLineOfTheLogOnce()
    {
        CrashReports::install(m_folder.path());
        LogFormatter(LogLevel::Warning) << "general";
        LogFormatter(LogLevel::Event).logEvent(LogEventModule::CleaningEvent) << "event";
        LogFormatter(LogLevel::Error).log(Log::Failure) << "failure";
        CrashReports::uninstall();
        LogFormatter(LogLevel::Warning) << "later";
        const QStringList lines = tailLines();
        QVERIFY(lines.value(197).endsWith("| general") && lines.value(198).endsWith("| event"));
        QVERIFY(lines.value(199).contains("failure"));
    }

private:
    support::TemporaryLayout m_layout;
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestCrashReports)
#include "tst_crashreports.moc"
