#include "windowstools.h"

#include "logging/lognode.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include <sys/wait.h>

using namespace std::chrono_literals;

namespace
{

/// Nothing is left, or a zombie of another parent.
bool isGone(const QString& process)
{
    QFile status("/proc/" + process + "/stat");
    if (!status.open(QIODevice::ReadOnly))
        return true;
    const QByteArray content = status.readAll();
    const QByteArray state = content.mid(content.lastIndexOf(')') + 2, 1);
    return state.isEmpty() || state == "Z" || state == "X";
}

} // namespace

class TestWindowsTools : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void runs_data();
    void runs();
    void runsInTheWorkingDirectory();
    void boundsTheWait_data();
    void boundsTheWait();
    void runsInThreadsWithoutEventLoop();
    void replacesTheShell();
    void changesTheEnvironment();

private:
    std::mutex m_mutex;
    QStringList m_output;
    QStringList m_errors;
};

void TestWindowsTools::initTestCase()
{
    const auto note = [this](LogLevel::Level level, const LogModules&, const QString& message) {
        const std::lock_guard locker(m_mutex);
        if (level == LogLevel::Error)
            m_errors << message;
        else if (message != "y") // of which "yes" makes millions
            m_output << message;
    };
    connect(LogNode::instance(), &LogNode::logged, this, note, Qt::DirectConnection);
}

void TestWindowsTools::init()
{
    m_output.clear();
    m_errors.clear();
}

void TestWindowsTools::runs_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QStringList>("output");

    const QString filler(4095, 'x');
    const QString printFiller("head -c 4095 /dev/zero | tr '\\0' x; ");
    QTest::newRow("the exit code is handed out") << "echo a; exit 7" << 7 << QStringList("a");
    QTest::newRow("killed by a signal") << "kill -9 $$" << -1 << QStringList();
    QTest::newRow("standard input is empty") << "cat" << 0 << QStringList();
    QTest::newRow("both outputs are logged, blank lines are not")
        << "echo out; echo; echo err >&2" << 0 << QStringList({"out", "err"});
    QTest::newRow("a last line needs no end") << "printf 'a\\n b'" << 0 << QStringList({"a", " b"});
    QTest::newRow("a long line is cut into pieces, its characters stay whole")
        << printFiller + "echo €" << 0 << QStringList({filler, "€"});
    QTest::newRow("a line as long as a piece")
        << printFiller + "echo y; echo a" << 0 << QStringList({filler + "y", "a"});
}

void TestWindowsTools::runs()
{
    QFETCH(QString, command);
    QFETCH(int, exitCode);
    int code = 99;
    QCOMPARE(WindowsTools::runCommand(command, QString(), &code), exitCode == 0);
    QCOMPARE(code, exitCode);
    QTEST(m_output, "output");
    QCOMPARE(m_errors.size(), exitCode == -1 ? 1 : 0);
}

void TestWindowsTools::runsInTheWorkingDirectory()
{
    const QTemporaryDir dir;
    QVERIFY(WindowsTools::runCommands({"echo text > file", "grep -q text file"}, dir.path()));
    QVERIFY(QFile::exists(dir.filePath("file")));

    int code = 99;
    QVERIFY(!WindowsTools::runCommand("true", dir.filePath("absent"), &code));
    QCOMPARE(code, -1);
    QCOMPARE(m_errors.size(), 1);
}

void TestWindowsTools::boundsTheWait_data()
{
    QTest::addColumn<bool>("isOverdue");
    QTest::addColumn<QString>("command"); // prints the process that remains

    QTest::newRow("a silent process in the background") << false << "sleep 30 & echo $!";
    QTest::newRow("one that never stops printing") << false << "yes & echo $!";
    QTest::newRow("overdue, silent, with a child") << true << "sleep 30 & echo $!; wait";
    QTest::newRow("overdue, always printing") << true << "echo $$; exec yes";
    QTest::newRow("overdue, deaf") << true << "echo $$; trap '' TERM HUP; while :; do :; done";
    QTest::newRow("overdue, outputs closed") << true << "echo $$; exec sleep 30 >&- 2>&-";
}

void TestWindowsTools::boundsTheWait()
{
    QFETCH(bool, isOverdue);
    QFETCH(QString, command);
    const auto limit = isOverdue ? 200ms : 20000ms;
    QElapsedTimer timer;
    timer.start();
    int code = 99;
    QCOMPARE(WindowsTools::runInShell(command, QString(), &code, limit), !isOverdue);
    QVERIFY(timer.elapsed() < 10000);
    QCOMPARE(code, isOverdue ? -1 : 0);
    QCOMPARE(m_errors.size(), isOverdue ? 1 : 0);

    const QString process = m_output.filter(QRegularExpression("^\\d+$")).value(0);
    QVERIFY(process.toInt() > 0);
    if (!isOverdue)
        ::kill(process.toInt(), SIGKILL);
    QTRY_VERIFY(isGone(process));
}

void TestWindowsTools::runsInThreadsWithoutEventLoop()
{
    std::atomic<int> doneCount{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&doneCount] {
            for (int run = 0; run < 10; ++run)
                doneCount += WindowsTools::runCommand("echo a; echo b") ? 1 : 0;
        });
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(doneCount.load(), 40);
    QCOMPARE(m_output.size(), 80);
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1); // no child is left, not even a zombie
}

void TestWindowsTools::replacesTheShell()
{
    QStringList calls;
    QVERIFY(!WindowsTools::setCommandRunner(
        [&](const QString& command, const QString& folder, int* code) {
            calls << folder + command;
            *code = command == "bad" ? 3 : 0;
            return *code == 0;
        }));
    QVERIFY(!WindowsTools::runCommands({"good", "bad", "never"}, "/folder/"));
    QVERIFY(WindowsTools::setCommandRunner({}));
    QVERIFY(WindowsTools::runCommand("true"));
    QCOMPARE(calls, QStringList({"/folder/good", "/folder/bad"}));
}

void TestWindowsTools::changesTheEnvironment()
{
    QVERIFY(WindowsTools::setEnv("CAFFÈ", "a=b"));
    QVERIFY(WindowsTools::setEnv("CAFFÈ", "€"));
    QCOMPARE(qgetenv("CAFFÈ"), QByteArray("€"));
    QVERIFY(WindowsTools::setEnv("CAFFÈ", ""));
    QVERIFY(qEnvironmentVariableIsSet("CAFFÈ"));
    QVERIFY(WindowsTools::unsetEnv("CAFFÈ"));
    QVERIFY(!qEnvironmentVariableIsSet("CAFFÈ"));
    QVERIFY(!WindowsTools::setEnv("", "1") && !WindowsTools::setEnv("A=B", "1"));
}

QTEST_GUILESS_MAIN(TestWindowsTools)
#include "tst_windowstools.moc"
