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

public:
    /// Runs in a child process of the test. It starts a process itself, which must end too.
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
    }

private Q_SLOTS:
    void init() { m_threads = threads(); }
    void cleanup()
    {
        // A thread remains in the list briefly after the wait for it.
        QTRY_COMPARE(threads(), m_threads);
        QVERIFY(::waitpid(-1, nullptr, WNOHANG) <= 0); // no zombie
        m_recorder.take();
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
            return std::exchange(events, {}) + ' ' + capture.lines().join('|');
        };
        QCOMPARE(take("aaaa|bbbb|cccc"), QString("+aaaa+bbbb+cccc bbbb|cccc"));
        QCOMPARE(take("€€€€€|€€€€€"), QString("+€€€€€+€€€€€ €€€€€|€€€€€"));
        QCOMPARE(take("aaaa|0123456789a|bbbb"), QString("+aaaa!+bbbb aaaa|bbbb"));
        QCOMPARE(m_recorder.takeMessages(),
                 QStringList("Line length is bigger than max ram size, dropping it"));
        QCOMPARE(take("cc||"), QString("+cc++ aaaa|bbbb|cc||"));
        QCOMPARE(capture.linesToString(4, Dmesg::NewerFirst), QString("\n\ncc\nbbbb"));
        QCOMPARE(capture.linesToString(0, Dmesg::OlderFirst), QString("aaaa\nbbbb\ncc\n\n"));
        QCOMPARE(capture.linesToString(9, Dmesg::NewerFirst), QString("\n\ncc\nbbbb\naaaa"));
        // Empty lines count no characters, but their number is bounded.
        for (int i = 0; i < 1025; ++i)
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
        PrimaryFile other(path); // the file of the capture warns of it
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
        QCOMPARE(cutter.cut(QByteArray("y\0z\nb", 5)),
                 QStringList(QString::fromLatin1("xy\0z", 4)));
        const QByteArray rest(LineCutter::longestLine_B - 2, 'b');
        QVERIFY(cutter.cut(rest).isEmpty());
        QCOMPARE(cutter.cut("b"), QStringList(QString('b' + rest + 'b')));
    }

    void runs_data()
    {
        QTest::addColumn<QString>("script"); // empty for a program that does not exist
        QTest::addColumn<QString>("calls");  // s starts, o stops, e waits for the end
        QTest::addColumn<QString>("events"); // log lines, and lines other than "y" after ">"
        const auto row = [](const char* script, const QString& calls, const QString& events) {
            QTest::newRow(script) << script << calls << "start: Starting dmesg process" + events;
        };
        const QString stop = "|stop: Stopping dmesg process";
        const QString kill = stop + "|stop: Process does not terminate, killing it|exit 9";
        row(R"(printf a; sleep 0.1; printf 'b\nc'; sleep 0.1; echo d; printf x)", "e",
            "|>ab|>cd|exit 0");
        row("echo ' b ' >&2; exit 7", "e", "|Got error from dmesg process: b|exit 7");
        row("echo $TERM; kill -9 $$", "e", "|>dumb|exit 9");
        row("echo a; exec sleep 300", "", "|>a" + stop + "|exit 15");
        row("echo own thread; exec sleep 300", "", "|>own thread" + stop + "|exit 15");
        row("echo a; exec sleep 301", "soo",
            "|>a|start: Process is already running" + stop +
                "|exit 15|stop: Process is not started");
        row("trap '' TERM; echo a; exec sleep 300", "o", "|>a" + kill);
        row("trap '' TERM; exec yes", "o", kill);
        row("trap '' TERM; echo a; exec yes >&2", "o", "|>a" + kill);
        row("", "", "|start: Failed starting process");
    }
    void runs()
    {
        QFETCH(QString, script);
        QFETCH(QString, calls);
        auto process = std::make_unique<support::Opened<DmesgProcess>>(500ms);
        std::atomic<int> count = 0;
        connect(process.get(), &DmesgProcess::newLines, [&](const QStringList& lines) {
            for (const QString& line : lines)
                LogFormatter(LogLevel::Info).log(Log::Global).noquote() << '>' + line;
            if (lines.contains("own thread"))
                process->stop(); // before the count, which lets the process be destroyed
            count += lines.size();
        });
        process->setCommand(script.isEmpty() ? System::Command{"/nowhere", {}} : shell(script));
        process->start();
        QTRY_VERIFY(count > 0 || !process->isRunning());
        for (const QChar call : calls) {
            if (call == 'e')
                QTRY_VERIFY(!process->isRunning());
            else
                call == 's' ? process->start() : process->stop();
        }
        process.reset();
        QString events = m_recorder.takeMessages().filter(QRegularExpression("[^y]$")).join('|');
        events.replace(QRegularExpression(R"(void dmesg::DmesgProcess::(\w+)Slot\(\))"), "\\1:");
        QTEST(events.replace("Process exited with code ", "exit "), "events");
    }

    void runsDmesgOnTheBoard()
    {
        Capture(machine(false)).start();
        QVERIFY(m_recorder.takeMessages().isEmpty());
        const QTemporaryDir dir;
        support::writeFile(dir.filePath("script"), "#!/bin/sh\necho $*\n");
        QFile::setPermissions(dir.filePath("script"), QFile::ReadUser | QFile::ExeUser);
        const support::EnvironmentGuard path("PATH", dir.path().toUtf8());
        Capture capture(machine(true));
        capture.start();
        QTRY_COMPARE(capture.lines(),
                     QStringList("--quiet --command dmesg --follow --ctime /dev/null"));
    }

    void ends_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("reported"); // a pattern
        QTest::newRow("config") << 1 << "Can't set config while running .*m_process.isRunning";
        QTest::newRow("name") << 1 << "Can't query logFileName if logging is not.*m_logFile";
        QTest::newRow("read") << SIGSEGV << "SIGSEGV\n.*simulateApplicationCrash.*end.*main";
        QTest::newRow("abort") << SIGABRT << "SIGABRT\n.*abort.*end.*main";
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
        // The state is also valid while the process starts, when its command line is still empty.
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
        WindowsTools::printCallStack();
        const QString lines = m_recorder.takeMessages().join('|');
        const QRegularExpression here(
            R"(^#0 TestDiagnostics::printsTheCallStack\(\)\+0x\w+ \(tst_diagnostics\+0x\w+\)\|.*\|#\d+ main\+0x)");
        QVERIFY2(lines.contains(here), qPrintable(lines));
    }

    void stallsThreads() // the last test, since the threads stay
    {
        using crash_simulator::CrashSimulator;
        ++m_threads;
        CrashSimulator(nullptr).simulateStallSecondaryThread(); // gone before its thread runs
        QString messages;
        QTRY_COMPARE((messages += m_recorder.takeMessages().join("")),
                     QString("Sleeping forever in secondary thread !"));
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
