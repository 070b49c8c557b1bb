#include "crashsimulator/crashsimulator.h"
#include "dmesg/dmesg.h"
#include "support.h"
#include "windowstools.h"
#include <zeltools/platform.h>

#include <QtTest>

#include <thread>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace dmesg;

class ImpatientProcess final : public DmesgProcess
{
public:
    ImpatientProcess()
        : DmesgProcess(std::chrono::milliseconds(500))
    {
    }
};

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
        space[depth % 1024] = 1; // anywhere, or the compiler leaves the rest out
        return depth < 0 ? 0 : overflow(depth + 1) + space[depth % 1024];
    }

public:
    /// What the test does as its own child, with a process of its own, which has to end too.
    Q_NEVER_INLINE static void end(const QByteArray& how)
    {
        Dmesg* const capture = Dmesg::instance();
        capture->setCommand(shell("echo $$; exec sleep 300"));
        connect(&capture->m_process, &DmesgProcess::newLines, [](const QStringList& lines) {
            if (!lines.isEmpty()) { // as they are when a piece of output completes none
                fprintf(stdout, "%s\n", qPrintable(lines.join("")));
                fflush(stdout);
            }
        });
        capture->m_process.start();
        getchar(); // until the parent has read the line
        WindowsTools::installSignalHandlers();
        if (how == "config")
            capture->setConfig({});
        if (how == "name")
            capture->logFileName(0);
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
        Dmesg capture;
        capture.setConfig({{1, 1, false}, false, 10});
        QString events;
        connect(&capture, &Dmesg::changed, [&] { events += '+'; });
        connect(&capture, &Dmesg::newLine, [&](const QString& line) { events += line; });
        connect(&capture, &Dmesg::tooLongLine, [&] { events += '!'; });
        const auto take = [&](const char* lines) {
            capture.onProcessNewLines(QString(lines).split('|'));
            const QString kept = capture.lines().join('|');
            return std::exchange(events, {}) + (capture.m_dataSize_B == 10 ? " full " : " ") + kept;
        };
        QCOMPARE(take("aaaa|bbbb|cccc"), QString("+aaaa+bbbb+cccc bbbb|cccc"));
        QCOMPARE(take("0123456789"), QString("+0123456789 full 0123456789"));
        QCOMPARE(take("€€€€€|€€€€€"), QString("+€€€€€+€€€€€ full €€€€€|€€€€€"));
        QCOMPARE(take("aaaa|0123456789a|bbbb"), QString("+aaaa!+bbbb aaaa|bbbb"));
        QCOMPARE(m_recorder.takeMessages(),
                 QStringList("Line length is bigger than max ram size, dropping it"));
        QCOMPARE(take("cc||"), QString("+cc++ full aaaa|bbbb|cc||"));
        QCOMPARE(capture.linesToString(4, Dmesg::NewerFirst), QString("\n\ncc\nbbbb"));
        QCOMPARE(capture.linesToString(0, Dmesg::OlderFirst), QString("aaaa\nbbbb\ncc\n\n"));
        QCOMPARE(capture.linesToString(9, Dmesg::NewerFirst), QString("\n\ncc\nbbbb\naaaa"));
        for (int i = 0; i < 1025; ++i) // empty lines count nothing, but do not come without end
            capture.onProcessNewLines(QVector<QString>(1024).toList());
        QCOMPARE(capture.lines().size(), 1024 * 1024);
    }

    void writesToTheFile()
    {
        Dmesg capture;
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

    void runs_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("events"); // what is handed on and logged, without "y"
        const auto row = [](const char* name, const char* script, const QString& events) {
            QTest::newRow(name) << script << "start: Starting dmesg process" + events;
        };
        row("ends: text", R"(printf '\v a b \t\r\n\n€\nlost')", "|a b||€|exit 0");
        row("ends: pieces", R"(printf a; sleep 0.1; printf 'b\nc'; sleep 0.1; echo d)",
            "|ab|cd|exit 0");
        row("ends: binary", R"(printf 'a\000b\n\377\n')", "|a0b|\uFFFD|exit 0");
        row("ends: errors", "echo ' b ' >&2; exit 7", "|Got error from dmesg process: b|exit 7");
        row("ends: no terminal", "echo $TERM", "|dumb|exit 0");
        row("ends: killed", "echo a; kill -9 $$", "|a|exit 9");
        row("ends: hardly", "head -c 18000000 /dev/zero | tr '\\0' x; echo; echo b",
            "|8 million|8 million|1 million|b|exit 0");
        const QString stop = "|stop: Stopping dmesg process";
        const QString kill = stop + "|stop: Process does not terminate, killing it|exit 9";
        const char* const silent = "echo a; exec sleep 300";
        row("destroyed", silent, "|a" + stop + "|exit 15");
        row("own thread", silent, "|a" + stop + "|exit 15");
        row("twice", silent,
            "|a|start: Process is already running" + stop +
                "|exit 15|stop: Process is not started");
        row("deaf", "trap '' TERM; echo a; exec sleep 300", "|a" + kill);
        row("deaf, floods", "trap '' TERM; exec yes", kill);
        row("deaf, floods errors", "trap '' TERM; echo a; exec yes >&2", "|a" + kill);
        row("missing", "", "|start: Failed starting process");
    }
    void runs()
    {
        QFETCH(QString, script);
        const QByteArray how = QTest::currentDataTag();
        QStringList events;
        const auto take = [&](QString text) {
            if (text == "y" || text.endsWith(": y"))
                return;
            text.replace(QRegularExpression(R"(^void dmesg.*::(\w+)Slot\(\))"), "\\1:");
            text.replace("Process exited with code ", "exit ").replace(QChar(0), '0');
            const int millions = text.size() / 1000000;
            events << (millions == 0 ? text : QString("%1 million").arg(millions));
        };
        QObject context; // everything comes in the thread of the process
        const auto takeLine = [&](auto, auto&, const QString& message) { take(message); };
        connect(LogNode::instance(), &LogNode::logged, &context, takeLine, Qt::DirectConnection);
        std::unique_ptr<DmesgProcess> process(new ImpatientProcess);
        std::atomic<int> lines = 0;
        connect(process.get(), &DmesgProcess::newLines, [&](const QStringList& some) {
            std::for_each(some.begin(), some.end(), take);
            if (how == "own thread")
                process->stop(); // before the count, upon which it is destroyed
            lines += some.size();
        });
        process->setCommand(how == "missing" ? System::Command{"/nowhere", {}} : shell(script));
        process->start();
        QTRY_VERIFY(lines > 0 || !process->isRunning());
        if (how == "twice")
            process->start();
        if (how.startsWith("ends"))
            QTRY_VERIFY(!process->isRunning());
        else if (how == "twice" || how.startsWith("deaf"))
            process->stop();
        if (how == "twice")
            process->stop();
        process.reset();
        QTEST(events.join('|'), "events");
    }

    void followsTheKernelLog()
    {
        Dmesg capture;
        capture.start();
        QCOMPARE(m_recorder.takeMessages().isEmpty(), !platform::isBoard); // it may have ended
        if (Dmesg::isDmesgRestricted() && ::geteuid() != 0)
            QSKIP("the kernel log is restricted", SkipSingle);
        QFile kernelLog("/dev/kmsg");
        if (!Dmesg::isKmsgWrittable() || !kernelLog.open(QIODevice::WriteOnly))
            QSKIP("/dev/kmsg cannot be written", SkipSingle);
        if (!platform::isBoard)
            capture.m_process.start();
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
        // By its state, which a program being started has as well; its command line is empty then
        // for as long as other processes keep the processors.
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

    void stallsThreads() // the last, since they stay
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
