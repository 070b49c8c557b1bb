#include "windowstools.h"

#include "shellcommand_p.h"
#include "support.h"

#include <QtTest>

#include <sys/prctl.h>
#include <sys/wait.h>

class TestWindowsTools : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runs_data()
    {
        QTest::addColumn<QString>("command"); // may write the id of a process to the file "pid"
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("output"); // a pattern for all lines, each after its level
        const auto row = [](const char* name, const char* command, int code, const char* output) {
            QTest::newRow(name) << command << code << output;
        };
        row("the exit code is handed out, standard input is empty", "cat; exit 7", 7, "");
        row("killed by a signal", "kill -9 $$", -1, "4bool WindowsTools::.*killed by signal 9\"");
        row("in its folder, both outputs logged", "touch a; echo; ls; printf b >&2", 0, "0a0b");
        row("a long line is cut, not its characters", "printf %04095d€", 0, "00{4095}0€");
        row("printing blank lines in the background", "yes '' & echo $! >pid", 0, "");
        row("overdue, deaf, with a child", "trap '' TERM; sleep 300 & echo $! >pid; wait", -1,
            ".*");
        row("overdue, always printing", "echo $$ >pid; exec yes", -1, ".*4bool.*after 1000 ms\"");
        row("overdue, outputs closed", "echo $$ >pid; exec sleep 300 >&- 2>&-", -1, "4.*");
    }
    void runs()
    {
        QFETCH(QString, command);
        QFETCH(int, exitCode);
        QFETCH(QString, output);
        QVERIFY(::prctl(PR_SET_CHILD_SUBREAPER, 1) == 0); // orphans become children of the test
        const QTemporaryDir dir;
        support::LineRecorder recorder;
        int code = 99;
        const std::chrono::milliseconds limit(exitCode == -1 ? 1000 : 20000);
        QCOMPARE(zeltools::runInShell(command, dir.path(), &code, limit), exitCode == 0);
        QCOMPARE(code, exitCode);
        QString logged;
        for (const auto& line : recorder.take())
            logged += QString::number(line.level) + line.message;
        QVERIFY2(logged.contains(QRegularExpression('^' + output + '$')), qPrintable(logged));
        if (!command.contains("pid"))
            return;
        const int process = support::readFile(dir.filePath("pid")).toInt();
        QVERIFY(process > 0 && (exitCode == -1 || ::kill(process, SIGKILL) == 0));
        QTRY_VERIFY(::waitpid(process, nullptr, WNOHANG) != 0); // 0 means that it still runs
    }

    void replacesTheShell()
    {
        QString calls;
        WindowsTools::setCommandRunner([&](const QString& command, const QString& folder, int*) {
            calls += folder + command;
            return command != "bad";
        });
        QVERIFY(!WindowsTools::runCommands({"good", "bad", "never"}, "/in/"));
        QCOMPARE(calls, QString("/in/good/in/bad"));
        // The shell is back, and there is no such folder.
        QVERIFY(WindowsTools::setCommandRunner({}) && !WindowsTools::runCommand("true", "/in/"));
    }
};

QTEST_GUILESS_MAIN(TestWindowsTools)
#include "tst_windowstools.moc"
