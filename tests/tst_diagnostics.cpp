#include "crashsimulator/crashsimulator.h"
#include "dmesg/dmesg.h"
#include "dmesg/linecutter_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "support.h"
#include "support/machines.h"
#include "windowstools.h"

#include <QtTest>

#include <thread>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace dmesg;
using namespace std::chrono_literals;

using support::machine;
using Capture = support::Opened<Dmesg>;

class TestDiagnostics : public QObject
{
    Q_OBJECT

    support::TemporaryLayout m_layout;
    support::LineRecorder m_recorder;
    int m_threads = 0;

    static int threads() { return QDir("/proc/self/task").entryList(QDir::Dirs).size(); }
    static System::Command shell(const QString& script) { return {"/bin/sh", {"-c", script}}; }
    Q_NEVER_INLINE static int overflow(int depth)
    {
        volatile char space[1024];
        space[depth % 1024] = 1; // at any place, or the compiler leaves the array out
        return depth < 0 ? 0 : overflow(depth + 1) + space[depth % 1024];
    }

public:
    /// What the test does as its own child. It has a child of its own, which must end too.
    Q_NEVER_INLINE static void end(const QByteArray& how)
    {
        static Capture capture(machine(true)); // destroyed at exit, as Dmesg::instance() is
        capture.setCommand(shell("echo $$; exec sleep 300"));
        const auto print = [](const QString& line) {
            fprintf(stdout, "%s\n", qPrintable(line));
            fflush(stdout);
        };
        connect(&capture, &Dmesg::newLine, &capture, print, Qt::DirectConnection);
        capture.start();
        getchar(); // until the parent has read the line
        WindowsTools::installSignalHandlers();
        if (how == "config")
            capture.setConfig({});
        if (how == "name")
            Dmesg::instance()->logFileName(0);
        if (how == "read")
            crash_simulator::CrashSimulator(nullptr).simulateApplicationCrash();
        if (how == "abort")
            std::abort();
        if (how == "overflow")
            overflow(0);
    }
    Q_NEVER_INLINE QStringList printHere()
    {
        WindowsTools::printCallStack();
        return m_recorder.takeMessages();
    }

private Q_SLOTS:
    void init()
    {
        m_recorder.take();
        m_threads = threads();
    }
    void cleanup()
    {
        QTRY_COMPARE(threads(), m_threads); // one is there a little longer than the wait for it
        QVERIFY(::waitpid(-1, nullptr, WNOHANG) <= 0); // no zombie
    }

    void keepsTheLastCharacters()
    {
        Capture capture(machine(true));
        capture.setConfig({{1, 1, false}, false, 10});
        QString events;
        connect(&capture, &Dmesg::changed, [&] { events += '+'; });
        connect(&capture, &Dmesg::newLine, [&](const QString& line) { events += line; });
        connect(&capture, &Dmesg::tooLongLine, [&] { events += '!'; });
        const auto take = [&](const char* lines) {
            capture.onProcessNewLines(QString(lines).split('|'));
            const QString kept = capture.lines().join('|');
            return std::exchange(events, {}) + ' ' + kept;
        };
        QCOMPARE(take("aaaa|bbbb|cccc"), QString("+aaaa+bbbb+cccc bbbb|cccc"));
        QCOMPARE(take("0123456789"), QString("+0123456789 0123456789"));
        QCOMPARE(take("€€€€€|€€€€€"), QString("+€€€€€+€€€€€ €€€€€|€€€€€"));
        QCOMPARE(take("aaaa|0123456789a|bbbb"), QString("+aaaa!+bbbb aaaa|bbbb"));
        QCOMPARE(m_recorder.takeMessages(),
                 QStringList("Line length is bigger than max ram size, dropping it"));
        QCOMPARE(take("cc||"), QString("+cc++ aaaa|bbbb|cc||"));
        QCOMPARE(capture.linesToString(4, Dmesg::NewerFirst), QString("\n\ncc\nbbbb"));
        QCOMPARE(capture.linesToString(0, Dmesg::OlderFirst), QString("aaaa\nbbbb\ncc\n\n"));
        QCOMPARE(capture.linesToString(9, Dmesg::NewerFirst), QString("\n\ncc\nbbbb\naaaa"));
        for (int i = 0; i < 1025; ++i) // empty lines count nothing, but do not come without end
            capture.onProcessNewLines(QVector<QString>(1024).toList());
        QCOMPARE(capture.lines().size(), 1024 * 1024);
    }

    void writesToTheFile()
    {
        Capture capture(machine(true));
        connect(
            LogNode::instance(), &LogNode::logged, &capture, [&] { capture.lines(); },
            Qt::DirectConnection); // no line is logged with the lock held
        const QString path = Path::instance()->debugLogsDir + "dmesg.log";
        PrimaryFile other(path); // of which the file of the capture warns
        QVERIFY(other.open(QIODevice::Append) && other.lock());
        for (const bool isOn : {false, true, false, true}) {
            capture.setConfig({Dmesg::makeLogFileConfig(1, 2, false), isOn, 10});
            capture.onProcessNewLines({isOn ? "on" : "off", "longer than the buffer"});
        }
        QCOMPARE(capture.logFileName(2), path + ".2");
        QCOMPARE(support::readFile(path), QByteArray("on\nlonger than the buffer\n").repeated(2));
        QVERIFY(QFile::remove(path) && QDir().mkdir(path));
        m_recorder.take();
        capture.setConfig({{1, 2, false}, true, 10});
        capture.onProcessNewLines({"lost"});
        QVERIFY(QDir().rmdir(path));
        QCOMPARE(m_recorder.takeMessages(), QStringList("Failed opening log file"));
    }

    void cutsLines()
    {
        LineCutter cutter;
        QVERIFY(cutter.cut("lost").isEmpty());
        cutter.clear();
        QCOMPARE(cutter.cut("\v a b \t\r\n\n\xE2\x82\xAC\n\xFF\nx").join('|'),
                 QString("a b||€|\uFFFD"));
        QCOMPARE(cutter.cut(QByteArray("y\0z\nb", 5)), QStringList(QString::fromLatin1("xy\0z", 4)));
        const QByteArray rest(LineCutter::longestLine_B - 2, 'b');
        QVERIFY(cutter.cut(rest).isEmpty());
        QCOMPARE(cutter.cut("b"), QStringList(QString('b' + rest + 'b')));
        QCOMPARE(cutter.cut("c\n"), QStringList("c"));
    }

    void runs_data()
    {
        QTest::addColumn<QString>("script"); // empty for a program that does not exist
        QTest::addColumn<QString>(
            "events"); // log lines, and emitted lines other than "y" after ">"
        const auto row = [](const char* name, const char* script, const QString& events) {
            QTest::newRow(name) << script << "start: Starting dmesg process" + events;
        };
        row("ends: pieces", R"(printf a; sleep 0.1; printf 'b\nc'; sleep 0.1; echo d; printf x)",
            "|>ab|>cd|exit 0");
        row("ends: errors", "echo ' b ' >&2; exit 7", "|Got error from dmesg process: b|exit 7");
        row("ends: no terminal, killed", "echo $TERM; kill -9 $$", "|>dumb|exit 9");
        const QString stop = "|stop: Stopping dmesg process";
        const QString kill = stop + "|stop: Process does not terminate, killing it|exit 9";
        const char* const silent = "echo a; exec sleep 300";
        row("destroyed", silent, "|>a" + stop + "|exit 15");
        row("own thread", silent, "|>a" + stop + "|exit 15");
        row("twice", silent,
            "|>a|start: Process is already running" + stop +
                "|exit 15|stop: Process is not started");
        row("deaf", "trap '' TERM; echo a; exec sleep 300", "|>a" + kill);
        row("deaf, floods", "trap '' TERM; exec yes", kill);
        row("deaf, floods errors", "trap '' TERM; echo a; exec yes >&2", "|>a" + kill);
        row("missing", "", "|start: Failed starting process");
    }
    void runs()
    {
        QFETCH(QString, script);
        const QByteArray how = QTest::currentDataTag();
        auto process = std::make_unique<support::Opened<DmesgProcess>>(500ms);
        std::atomic<int> count = 0;
        connect(process.get(), &DmesgProcess::newLines, [&](const QStringList& lines) {
            for (const QString& line : lines)
                LogFormatter(LogLevel::Info).log(Log::Global).noquote() << '>' + line;
            if (how == "own thread")
                process->stop(); // before the count, which lets the process be destroyed
            count += lines.size();
        });
        process->setCommand(script.isEmpty() ? System::Command{"/nowhere", {}} : shell(script));
        process->start();
        QTRY_VERIFY(count > 0 || !process->isRunning());
        if (how == "twice")
            process->start();
        if (how.startsWith("ends"))
            QTRY_VERIFY(!process->isRunning());
        else if (how == "twice" || how.startsWith("deaf"))
            process->stop();
        if (how == "twice")
            process->stop();
        process.reset();
        QString events = m_recorder.takeMessages().filter(QRegularExpression("[^y]$")).join('|');
        events.replace(QRegularExpression(R"(void dmesg::DmesgProcess::(\w+)Slot\(\))"), "\\1:");
        QTEST(events.replace("Process exited with code ", "exit "), "events");
    }

    void followsTheKernelLog()
    {
        Capture(machine(false)).start();
        QVERIFY(m_recorder.takeMessages().isEmpty());
        if (Dmesg::isDmesgRestricted() && ::geteuid() != 0)
            QSKIP("the kernel log is restricted", SkipSingle);
        QFile kernelLog("/dev/kmsg");
        if (!Dmesg::isKmsgWrittable() || !kernelLog.open(QIODevice::WriteOnly))
            QSKIP("/dev/kmsg cannot be written", SkipSingle);
        Capture capture(machine(true));
        capture.start();
        const QString text = "tst_diagnostics " + QUuid::createUuid().toString();
        QVERIFY(kernelLog.write(text.toUtf8() + '\n') > 0 && kernelLog.flush());
        QTRY_COMPARE(capture.lines().filter(text).size(), 1);
        const QString line = capture.lines().filter(text)[0];
        QVERIFY2(line.contains(QRegularExpression(R"(^\[[\w :]+\] tst)")), qPrintable(line));
    }

    void ends_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("reported"); // a pattern
        QTest::newRow("config") << 1 << "Can't set config while running .*m_process.isRunning";
        QTest::newRow("name") << 1 << "Can't query logFileName if logging is not.*m_logFile";
        QTest::newRow("read") << SIGSEGV << "SIGSEGV\n.*simulateApplicationCrash.*end.*main";
        QTest::newRow("abort") << SIGABRT << "SIGABRT\n.*abort.*end.*main";
        QTest::newRow("overflow") << SIGSEGV << "SIGSEGV\n.*(\n[^\n]*tst_diagnostics[^\n]*){9}";
        QTest::newRow("shutdown") << 0 << "Stopping dmesg process";
    }
    void ends()
    {
        QFETCH(QString, reported);
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {"--end", QTest::currentDataTag()});
        QByteArray line;
        while (!line.endsWith('\n') && child.waitForReadyRead())
            line += child.readLine();
        // Its state tells also while it is being started, when its command line is still empty.
        const auto isFollowing = [&] {
            const QString stat = support::readFile(QString("/proc/%1/stat").arg(line.toInt()));
            return stat.contains(QRegularExpression("\\) [RSD] "));
        };
        QVERIFY2(isFollowing(), line);
        child.write("\n");
        QVERIFY(child.waitForFinished());
        QTEST(child.exitCode(), "status");
        const QString errors = child.readAllStandardError();
        const QRegularExpression pattern(reported, QRegularExpression::DotMatchesEverythingOption);
        QVERIFY2(errors.contains(pattern), qPrintable(errors));
        QTRY_VERIFY_WITH_TIMEOUT(!isFollowing(), 30000);
    }

    void printsTheCallStack()
    {
        const QStringList lines = printHere();
        const QRegularExpression here(
            R"(^#0 TestDiagnostics::printHere\(\)\+0x\w+ \(tst_diagnostics\+0x\w+\)\n.*#\d+ main\+0x)",
            QRegularExpression::DotMatchesEverythingOption);
        QVERIFY2(lines.join('\n').contains(here), qPrintable(lines.join('\n')));
    }

    void stallsThreads() // the last test, since the threads stay
    {
        using crash_simulator::CrashSimulator;
        m_threads += 50;
        for (int i = 0; i < 50; ++i) // each is gone before its thread runs
            CrashSimulator(nullptr).simulateStallSecondaryThread();
        QStringList messages;
        QTRY_COMPARE((messages += m_recorder.takeMessages()),
                     QVector<QString>(50, "Sleeping forever in secondary thread !").toList());
        std::thread([] { CrashSimulator(nullptr).simulateStallMainThread(); }).join();
        QCOMPARE(m_recorder.takeMessages().join('|'),
                 "void crash_simulator::CrashSimulator::simulateStallMainThread() Not in main "
                 "thread, aborting");
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--end") == 0) {
        TestDiagnostics::end(argv[2]);
        return 0;
    }
    TestDiagnostics test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_diagnostics.moc"
