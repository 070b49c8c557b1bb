#include "machinelogs.h"
#include "shell.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>

namespace
{

void row(const char* command, const QByteArray& answer)
{
    QTest::newRow(command) << QString(answer);
}

void addFailures()
{
    row("zelctl log nowhere", "zelctl: no folder nowhere\nstatus 1\n");
    row("zelctl log /proc", "zelctl: /proc holds no log files\nstatus 1\n");
    row("zelctl log . >/dev/full 2>&1 || echo $?", "1\n");
    row("zelctl log . --module Payment 2>&1 | cut -c 1-40",
        "zelctl: lines do not name their module; \n");
    row("zelctl log . --grep '('",
        "zelctl: \"(\" is not a regular expression: missing closing parenthesis; "
        "see \"zelctl log --help\"\nstatus 2\n");
    row("for o in --level=x --from=1/1/2026 --last=-1 --color=x; do zelctl log . $o "
        "2>/dev/null; "
        "echo $?; done",
        "2\n2\n2\n2\n");
}

} // namespace

/// `zelctl log`, and `zelctl events --follow`.
class TestZelctlLog : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    const QByteArray m_losses = "15/11/2026 10:00:05:000| Warning  | 12 lines were lost (30 since "
                                "the start of process 4711): Debug 12 (CanBus 12)\n";
    // The lines in the order of their times.
    const QByteArrayList m_lines{
        "15/11/2026 10:00:00:000| Info     | packed\n",
        "15/11/2026 10:00:01:000| Warning  | one\n",
        "  continues\n",
        "15/11/2026 10:00:02:000| MenuAccess| opened\n",
        "15/11/2026 10:00:03:000| Error    | \x1b[31mred \xff caf\xc3\xa9\n",
        "15/11/2026 10:00:04:000|7.2 g\n",
        m_losses,
        "15/11/2026 09:00:00:000| Debug    | after a clock step\n",
        "15/11/2026 10:00:07:000| M4 | pump on"};

private Q_SLOTS:
    void initTestCase()
    {
        const QDir logs(m_dir.path());
        QVERIFY(logs.mkpath("logs/debug") && logs.mkpath("logs/events") && logs.mkpath("bad"));
        const auto write = [&logs](const char* name, const QByteArray& content) {
            support::writeFile(logs.filePath(name), content);
        };
        write("logs/debug/zel_logs.log.2", m_lines[0]);
        runInShell("cd logs/debug; tar -zcf zel_logs.log.2.tar.gz zel_logs.log.2; rm *.2",
                   m_dir.path());
        write("logs/debug/zel_logs.log.1",
              m_lines[1] + m_lines[2] + '\n' + QByteArray(99999, '\0') + m_lines[4]);
        // The archive of a file that is still there, since the machine has just packed it.
        runInShell("cd logs/debug; tar -zcf zel_logs.log.1.tar.gz zel_logs.log.1", m_dir.path());
        write("logs/debug/zel_logs.log", m_lines[6] + m_lines[7]);
        write("logs/events/zel_events.log", m_lines[3]);
        write("logs/events/zel_grinder.log", m_lines[5]);
        write("logs/debug/m4_ab.log", m_lines[8]);
        write("bad/zel_logs.log.1.tar.gz", "no archive");
        write("bad/zel_logs.log", m_lines[0]);
    }

    void answers_data()
    {
        QTest::addColumn<QString>("answer"); // also of stderr, and the exit status unless it is 0
        const QByteArray lost = "zelctl: the machine lost 12 lines in this period\n";
        const auto lines = [this](std::initializer_list<int> numbers) {
            QByteArray all;
            for (const int number : numbers)
                all += m_lines[number];
            return all;
        };
        const QByteArray all = m_lines.join() + '\n';
        row("zelctl log .", all + lost);
        row("zelctl log logs/events", lines({3, 5}));
        row("zelctl log . --level warning", lines({1, 2, 4, 6}) + lost);
        row("zelctl log . --level Event --to '15/11/2026 10:00:02'", lines({1, 2, 3}));
        row("zelctl log . --module grinder 2>/dev/null", lines({5}));
        row("zelctl log . --from '15/11/2026 10:00:03' --to '15/11/2026 10:00:04'", lines({4, 5}));
        row("zelctl log . --to '15/11/2026 09:59'", lines({7}));
        row("zelctl log . --last 3", m_lines[6] + m_lines[7] + m_lines[8] + '\n' + lost);
        row("zelctl log . --grep 'caf.$' --color always 2>/dev/null",
            "\x1b[31m15/11/2026 10:00:03:000| Error    | ?[31mred \xef\xbf\xbd "
            "caf\xc3\xa9\x1b[0m\n");
        row("zelctl log . --color always 2>/dev/null | cat -v | grep -c '^..\\[1;97;45m.*12 lines'",
            "1\n");
        row("zelctl log . --json 2>/dev/null | sed -n '1p;3,4p;6,7p;9p'",
            "{\"file\":\"zel_logs.log.2.tar.gz\",\"level\":\"Info\",\"text\":\"packed\","
            "\"time\":\"2026-11-15T10:00:00.000\"}\n"
            "{\"file\":\"zel_logs.log.1\",\"level\":\"Warning\",\"text\":\"  continues\","
            "\"time\":\"2026-11-15T10:00:01.000\"}\n"
            "{\"file\":\"zel_events.log\",\"kind\":\"MenuAccess\",\"level\":\"Event\","
            "\"text\":\"opened\",\"time\":\"2026-11-15T10:00:02.000\"}\n"
            "{\"file\":\"zel_grinder.log\",\"level\":\"Grinder\",\"text\":\"7.2 g\","
            "\"time\":\"2026-11-15T10:00:04.000\"}\n"
            "{\"file\":\"zel_logs.log\",\"level\":\"Warning\",\"lost\":12,\"text\":\"12 lines were "
            "lost (30 since the start of process 4711): Debug 12 (CanBus 12)\","
            "\"time\":\"2026-11-15T10:00:05.000\"}\n"
            "{\"file\":\"m4_ab.log\",\"level\":\"M4\",\"text\":\"pump on\","
            "\"time\":\"2026-11-15T10:00:07.000\"}\n");
        row("zelctl log . --follow 2>/dev/null | head -n 1", m_lines[0]);
        row("zelctl log bad", m_lines[0] +
                                  "zelctl: cannot read bad/zel_logs.log.1.tar.gz: tar finds "
                                  "it damaged; lines are missing\nstatus 1\n");
        row("mkdir odd; for t in 29/02/2026-10:00:00 01/13/2026-10:00:00 00/01/2026-10:00:00 "
            "01/01/0000-10:00:00 01/01/2026-24:00:00 01/01/2026-10:60:00 01/01/2026-10:00:60 "
            "29/02/2024-23:59:59; do echo \"$t:999| x\" | tr - ' '; done >odd/zel_logs.log; "
            "zelctl log odd --json | grep time",
            "{\"file\":\"zel_logs.log\",\"level\":\"Info\",\"text\":\" x\","
            "\"time\":\"2024-02-29T23:59:59.999\"}\n");
        row("mkdir part; cp logs/debug/zel_logs.log part; >part/zel_logs.log.1; chmod 0 part/*.1; "
            "[ $(id -u) != 0 ] || drop='setpriv --bounding-set -all'; $drop zelctl log part",
            lines({6, 7}) + lost +
                "zelctl: cannot read part/zel_logs.log.1: Permission denied; lines are missing\n"
                "status 1\n");
        addFailures();
    }
    void answers() { QTEST(runInShell(QTest::currentDataTag(), m_dir.path()), "answer"); }

    void setsADamagedRingAside()
    {
        const QTemporaryDir folder;
        support::writeFile(folder.filePath("zeltools-log-1-1.ring"), QByteArray(99, '\0'));
        QCOMPARE(
            runInShell("zelctl log recover . && ls; zelctl log recover . && ls", folder.path()),
            QString("0 lines recovered\nzelctl: ./zeltools-log-1-1.ring: The ring is damaged or of "
                    "another version and kept as zeltools-log-1-1.ring.unreadable\n"
                    "0 lines recovered\nzeltools-log-1-1.ring.unreadable\n"));
    }

    // The lines are searched in blocks; the result is that of each line alone.
    void findsWhatEachLineAloneMatches_data()
    {
        QTest::addColumn<QString>("text");
        for (const char* pattern :
             {"foo 1", "foo\\s+bar", "^\\d+/.*foo", "caf. x", "x$", "(foo |bar){3}", "[^a]*bar$",
              "x++1", "(?<=x)bar", "foo (?!bar)", "\\bfoo\\b", "(foo).*\\1", "\\A1.*foo$",
              "(?i)FOO"}) {
            QTest::addRow("%s in ASCII", pattern) << "foo|bar|x|cafe|1|23 ";
            QTest::addRow("%s in any text", pattern) << "foo|bar|x|cafè|\U0001F600 |1|23 ";
        }
    }
    void findsWhatEachLineAloneMatches()
    {
        QFETCH(const QString, text);
        const QString pattern = QString(QTest::currentDataTag()).section(" in ", 0, 0);
        const QRegularExpression expression(pattern);
        const QStringList words = text.split('|');
        QRandomGenerator random(1);
        QByteArray all, expected;
        for (int i = 0; i < 3000; ++i) {
            QString line = "15/11/2026 10:00:00:000| Info     | ";
            for (int count = random.bounded(9); count > 0; --count)
                line += words[random.bounded(int(words.size()))] + QString(random.bounded(2), ' ');
            all += line.toUtf8() + '\n';
            if (line.contains(expression))
                expected += line.toUtf8() + '\n';
        }
        QTemporaryDir folder;
        support::writeFile(folder.filePath("zel_logs.log"), all);
        const QString command = QString("zelctl log . --grep '%1'").arg(pattern);
        QVERIFY(!expected.isEmpty() && expected != all);
        QCOMPARE(runInShell(command, folder.path()), QString(expected));
    }

    void readsALongLineInPieces()
    {
        QTemporaryDir folder;
        support::writeFile(folder.filePath("zel_logs.log"), QByteArray(128 << 20, 'x') + "\nend\n");
        QProcess zelctl;
        zelctl.start(ZELCTL_PATH, {"log", folder.path(), "--follow"});
        QByteArray end;
        qint64 size_B = 0;
        for (; !end.endsWith("end\n") && zelctl.waitForReadyRead(); size_B += end.size())
            end = zelctl.readAll();
        QVERIFY(size_B > 128 << 20 && size_B < (128 << 20) + 200); // a line feed for each MiB
        const QRegularExpression peak("VmHWM:\\s*(\\d+) kB");
        const QString status =
            support::readFile(QString("/proc/%1/status").arg(zelctl.processId()));
        const int peak_KiB = peak.match(status).captured(1).toInt();
        QVERIFY2(peak_KiB > 0 && peak_KiB < 100000, qPrintable(status));
        zelctl.terminate();
        QVERIFY(zelctl.waitForFinished());
    }

    void followsAcrossRotations()
    {
        const MachineLogs logs;
        LogManager::instance()->setAppLogFileMaximumSizeMiB(500. / (1 << 20));
        LogManager::instance()->setAppLogFileSecondaryFilesCount(5);
        MachineLogs::write(LogLevel::Info, "old");
        MachineLogs::write(LogLevel::Event, "old");
        QProcess lines, events;
        for (QProcess* process : {&lines, &events})
            process->setWorkingDirectory(MachineLogs::folder());
        lines.start(ZELCTL_PATH, {"log", ".", "--follow", "--last", "0"});
        events.start(ZELCTL_PATH, {"events", "events", "--follow", "--kind", "MenuAccess"});
        QByteArray printed;
        QTRY_VERIFY((printed += events.readAll()).endsWith("| MenuAccess| old\n"));
        // The other one prints nothing that tells when it has begun.
        QByteArray probe;
        for (int i = 0; !lines.waitForReadyRead(50) && i < 400; ++i)
            MachineLogs::write(LogLevel::Info, probe = QByteArray::number(i) + " probes");
        printed.clear();
        QTRY_VERIFY((printed += lines.readAll()).endsWith(probe + '\n'));
        printed.clear();
        QByteArray expected, expectedEvents;
        for (int i = 0; i < 60; ++i) {
            const bool isEvent = i % 10 == 9; // three of them fill a file
            const QByteArray text = QByteArray::number(i) + QByteArray(isEvent ? 400000 : 9, '.');
            MachineLogs::write(isEvent ? LogLevel::Event : LogLevel::Info, text);
            expected += (isEvent ? "MenuAccess| " : "Info     | ") + text + '\n';
            expectedEvents += isEvent ? "MenuAccess| " + text + '\n' : QByteArray();
            QTest::qWait(20);
        }
        const auto withoutTimes = [](const QByteArray& text) {
            return QString(text)
                .remove(QRegularExpression("^.{25}", QRegularExpression::MultilineOption))
                .toUtf8();
        };
        LogFormatter(LogLevel::Event).log(Log::Global).logEvent(LogEventModule::WasteLevel);
        QTRY_COMPARE(withoutTimes(printed += lines.readAll()), expected + "WasteLevel| \n");
        printed.clear();
        QTRY_COMPARE(withoutTimes(printed += events.readAll()), expectedEvents);
        for (QProcess* process : {&lines, &events}) {
            kill(static_cast<pid_t>(process->processId()), SIGINT);
            QVERIFY(process->waitForFinished() && process->exitStatus() == QProcess::NormalExit);
            QCOMPARE(process->readAllStandardError() + process->readAll(), QByteArray());
            QCOMPARE(process->exitCode(), 0);
        }
    }

    void coloursAndMasksOnATerminal_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("TERM=xterm PAGER= zelctl log .")
            << QByteArray("\x1b[31m15/11/2026 10:00:03:000| Error    | ?[31mred");
        QTest::newRow("TERM=xterm PAGER=cat NO_COLOR=1 zelctl log .")
            << QByteArray("\n15/11/2026 10:00:03:000| Error    | ?[31mred");
        QTest::newRow("PAGER='sed s/^/page/' zelctl log . --color never")
            << QByteArray("page15/11/2026 10:00:03:000| Error    | ?[31mred");
    }
    void coloursAndMasksOnATerminal()
    {
        QFETCH(const QByteArray, line);
        const int master = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(grantpt(master) == 0 && unlockpt(master) == 0);
        QVERIFY(open(ptsname(master), O_RDWR | O_NOCTTY) >= 0); // which keeps what was printed
        const QString command =
            QString("%1 >%2 2>/dev/null").arg(QTest::currentDataTag(), ptsname(master));
        QCOMPARE(runInShell(command, m_dir.path()), "");
        char text[4096] = {};
        QVERIFY2(read(master, text, sizeof text - 1) > 0 && strstr(text, line), text);
    }
};

QTEST_GUILESS_MAIN(TestZelctlLog)
#include "tst_zelctl_log.moc"
