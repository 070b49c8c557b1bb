#include "shell.h"
#include "support.h"

#include <fcntl.h>
#include <stdlib.h>

namespace
{

void row(const char* command, const QString& answer)
{
    QTest::newRow(command) << answer;
}

void refused(const char* command, const char* message, int status)
{
    row(command, QString("zelctl: %1\nstatus %2\n").arg(message).arg(status));
}

void misused(const char* words, const QString& message)
{
    const QString command = QString(words).section(' ', 0, 0);
    refused(qPrintable(QString("zelctl ") + words),
            qPrintable(QString("%1; see \"zelctl %2 --help\"").arg(message, command)), 2);
}

void addMisuses()
{
    misused("events . --page 0 --page 1", "--page is given more than once");
    misused("events ''", "DIR is empty");
    misused("events . --page x", "--page needs a number from 0 on");
    misused("env x.env set A -path", "Unknown option 'path'");
    misused("env . list --force", "--force is only valid with set");
    misused("crypt info a --plain", "--plain is only valid with encrypt");
    misused("log --json recover .",
            "unexpected argument \"recover\"; usage: zelctl log recover DIR");
    row("zelctl log -h | sed -n 2p", "       zelctl log recover [options] DIR\n");
    misused("crash show", "FILE is missing in \"zelctl crash show FILE\"");
    misused("crash list a b", "unexpected argument \"b\"; usage: zelctl crash list DIR");
    misused("crash shw a", "unknown action \"shw\"; the actions are: list DIR, show FILE");
    refused("zelctl help log --man .", "unexpected argument \"log\"; usage: zelctl help --man DIR",
            2);
    misused("sim serve", "SCRIPT is missing in \"zelctl sim serve SCRIPT [ADDRESS]\"");
    misused("kmsg x", "unexpected argument \"x\"; usage: zelctl kmsg");
    row("zelctl sim record tcpclient/127.0.0.1/1 rec >&-; grep -c listening rec",
        "zelctl: cannot write the output: Bad file descriptor\n0\nstatus 1\n");
}

void addValues()
{
    row("zelctl hex 0xde:ad-BEEF --prefix 0x", "0xDE-AD-BE-EF\n");
    row("printf 'aa:bb\\r\\n\\n0xcc' | zelctl hex - --separator ''", "AABB\n\nCC\n");
    row("printf 'aa\\nbb\\n' | zelctl hex - --to-bytes | od -An -tx1", " aa bb\n");
    row("printf 'a\\n\\377' | zelctl hex - --from-bytes", "61-0A-FF\n");
    refused("printf 'aa\\nz\\033z' | zelctl hex -", "line 2: Wrong format: \"z?z\" -> \"Z?Z\"", 1);
    refused("head -c 70M /dev/zero | zelctl hex -",
            "cannot read the standard input: it is too large", 1);

    row("zelctl kmsg --level warnin 2>&1 | cut -c 1-40",
        "zelctl: unknown level \"warnin\"; the leve\n");
    row("zelctl kmsg --facility kern,x 2>/dev/null; echo $?; zelctl kmsg x 2>/dev/null; echo "
        "$?",
        "2\n2\n");

    row("zelctl version ' 1.2' +1.02", "=\n");
    row("zelctl version 1.2 1.2.0 --json 2>/dev/null",
        "{\"a\":\"1.2\",\"b\":\"1.2.0\",\"comparison\":\"!=\",\"sameSize\":false}\n");
    row("zelctl version 1 2 3 2>/dev/null; echo $?; zelctl hex 2>/dev/null; echo $?", "2\n2\n");
    refused("zelctl version 1.2a 1.2", "\"2a\" in \"1.2a\" is not a number of a version", 1);
    row("[ \"$(zelctl help log recover)\" = \"$(zelctl log recover --help)\" ]", "");
    row("[ \"$(zelctl help)\" = \"$(zelctl --help)\" ]", "");
    refused("zelctl help nix", "there is no command \"nix\"; \"zelctl help\" lists the commands",
            2);
    row("mkdir man; (ulimit -f 1; zelctl help --man man 2>/dev/null); echo $?; ls -A man", "1\n");
    row("[ \"zelctl $(zelctl version)\" = \"$(zelctl --version)\" ]", "");
}

void addLanguages()
{
    refused("LC_ALL=de_AT.UTF-8 zelctl events nowhere", "den Ordner nowhere gibt es nicht", 1);
    refused("LC_ALL= LC_MESSAGES=it_IT zelctl events . --page 1",
            "non c'\u00e8 la pagina 1; l'ultima \u00e8 0", 1);
    refused("LC_ALL= LANG=ar zelctl", "ينقص أمر؛ \"zelctl --help\" يسرد الأوامر", 2);
    refused("LC_ALL=de zelctl hex --nix", "Unbekannte Option „nix“; siehe „zelctl hex --help“", 2);
    refused("echo x >x.report; LC_ALL=de zelctl crash show x.report",
            "x.report kann nicht gelesen werden: es ist kein Absturzbericht", 1);
    refused("LC_ALL=fr_FR zelctl events nowhere", "no folder nowhere", 1);
    row("for l in C de ar; do LC_ALL=$l zelctl log recover .; done",
        "0 lines recovered\n0 Zeilen gerettet\nلم يُستعد أي سطر\n");
    row("for l in C it; do LC_ALL=$l zelctl help hex; done | grep ^U",
        "Usage: zelctl hex [options] TEXT\nUso: zelctl hex [options] TEXT\n");
    row("mkdir json; echo x > json/crash-1.report; "
        "LC_ALL=de zelctl crash list json --json 2>/dev/null",
        "{\"reports\":[{\"error\":\"cannot read json/crash-1.report: it is not a crash report\","
        "\"file\":\"crash-1.report\"}]}\nstatus 1\n");
}

} // namespace

/// `zelctl events`, `hex`, `kmsg` and `version`, in a folder with event files.
class TestZelctl : public QObject
{
    Q_OBJECT

    // The lines of both files. Power cuts left the second and the last half.
    const QByteArrayList m_lines{"01/03/2026 10:00:00:000| UpdateUpdateEvent| bad \xff byte",
                                 "02/03/2026 09:00:00:000| MenuA",
                                 "02/03/2026 10:00:00:000| MenuAccess| \x1b[31mred | caf\xc3\xa9",
                                 "02/03/2026 11:0"};
    QTemporaryDir m_dir;

private Q_SLOTS:
    void initTestCase()
    {
        const QString live = m_dir.filePath("zel_events.log");
        support::writeFile(live + ".1", m_lines[0] + '\n');
        support::writeFile(live, m_lines[1] + QByteArray(9, '\0') + m_lines[2] + '\n' + m_lines[3]);
        runInShell(
            "mkdir bad; ln -s /proc/self/mem bad/zel_events.log; mkdir -p machine/logs/events "
            "two/debug two/events; for d in machine/logs/events two/debug two/events; do "
            "cp zel_events.log.1 $d/zel_events.log; done",
            m_dir.path());
    }

    void answers_data()
    {
        QTest::addColumn<QString>("answer"); // also of stderr, and the exit status unless it is 0
        const QString all = m_lines.join('\n') + '\n', first = m_lines[0] + '\n';
        row("zelctl events .", all);
        row("zelctl events . --per-page 3 --page 1", first);
        row("zelctl events . --kind updateevent", first);
        row("zelctl events . --from 01/03/2026 --to 01/03/2026", first);
        row("zelctl events . --to 01/03/2026", first);
        row("zelctl events . --from 02/03/2026 --kind WasteLevel,MenuAccess --kind UpdateEvent",
            m_lines[2] + '\n');
        row("zelctl events . --kind UpdateEvent --kind MenuAccess --per-page 1 --page 1", first);
        refused("zelctl events . --page 1", "there is no page 1; the last one is 0", 1);
        row("zelctl events . --page 1 --json",
            "{\"events\":[],\"page\":1,\"pages\":1}\n"
            "zelctl: there is no page 1; the last one is 0\nstatus 1\n");
        row("zelctl events machine && zelctl events machine/logs", first + first);
        refused("zelctl events two",
                "there are event files in two/debug and in two/events; give "
                "one of these folders",
                1);
        refused("zelctl events zel_events.log",
                "zel_events.log is a file; give its folder, which "
                "is .",
                1);
        row("zelctl events . --kind Menu 2>&1 | cut -c 1-40",
            "zelctl: unknown kind \"Menu\"; the kinds a\n");
        misused("events . --from 30/02/2026 --to 01/03/2026",
                "\"30/02/2026\" is not a date of the form dd/MM/yyyy");
        refused("zelctl events nowhere", "no folder nowhere", 1);
        refused("zelctl events bad",
                "cannot read bad/zel_events.log: Input/output error; events are missing", 1);
        row("mkdir part; cp zel_events.log.1 part; >part/zel_events.log; chmod 0 part/*.log; "
            "[ $(id -u) != 0 ] || drop='setpriv --bounding-set -all'; "
            "for f in '' --follow; do $drop zelctl events part $f; done",
            QString("%1%2%1%2status 1\n")
                .arg(first,
                     "zelctl: cannot read part/zel_events.log: Permission denied; events are "
                     "missing\n"));
        refused("zelctl events . >/dev/full", "cannot write the output: No space left on device",
                1);
        row("zelctl events . --json --per-page 2",
            "{\"events\":[{\"kind\":\"MenuAccess\",\"text\":\"\\u001b[31mred | caf\u00e9\","
            "\"time\":\"2026-03-02T10:00:00.000\"},{\"line\":\"02/03/2026 11:0\"}],\"page\":0,"
            "\"pages\":2}\n");
        row("mkdir odd; echo '45/13/2026 10:00:00:000| MenuAccess| x' >odd/zel_events.log; "
            "zelctl events odd --json",
            "{\"events\":[{\"line\":\"45/13/2026 10:00:00:000| MenuAccess| x\"}],\"page\":0,"
            "\"pages\":1}\n");
        addMisuses();
        addValues();
        addLanguages();
    }
    void answers() { QTEST(runInShell(QTest::currentDataTag(), m_dir.path()), "answer"); }

    // The test adds a line to the log of this kernel.
    void printsTheKernelLog_data()
    {
        QTest::addColumn<QString>("answer");
        const auto row = [](const char* command, const char* answer) {
            QTest::newRow(command) << answer;
        };
        row("zelctl kmsg --level ERROR --facility user,kern | grep -c '[0-9]| err    | user   | "
            "'$m$",
            "1\n");
        row("zelctl kmsg --level crit | grep -c $m", "0\nstatus 1\n");
        row("zelctl kmsg --facility kern | grep -c $m", "0\nstatus 1\n");
        row("zelctl kmsg --json --follow | grep -m 1 $m | sed 's/,\"seq.*T/T/; s/T.*/T/; "
            "s/zel.*//'",
            "{\"facility\":\"user\",\"level\":\"err\"T\n");
        row("setpriv --bounding-set -all zelctl kmsg",
            "zelctl: cannot read /dev/kmsg: Operation not permitted; this kernel shows its log to "
            "privileged processes only\nstatus 1\n");
    }
    void printsTheKernelLog()
    {
        if (runInShell("zelctl kmsg | head -n 1; test -w /dev/kmsg").contains("status"))
            QSKIP("The kernel log is not open to this process", SkipSingle);
        const QString restricted = support::readFile("/proc/sys/kernel/dmesg_restrict");
        if (QByteArray(QTest::currentDataTag()).contains("setpriv") && !restricted.startsWith('1'))
            QSKIP("This kernel shows its log to everybody", SkipSingle);
        const QString write = "m=zeltools_test_$$; echo \"<11>$m\" >/dev/kmsg; ";
        QTEST(runInShell(write + QTest::currentDataTag()), "answer");
    }

    void sendsNoEscapesToATerminal()
    {
        const int master = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(grantpt(master) == 0 && unlockpt(master) == 0);
        // Kept open: a terminal that no process has open may forget what was printed.
        QVERIFY(open(ptsname(master), O_RDWR | O_NOCTTY) >= 0);
        const QString command = QString("zelctl events . --kind MenuAccess >") + ptsname(master);
        QCOMPARE(runInShell(command, m_dir.path()), "page 0 of 1\n");
        char text[256] = {};
        QVERIFY2(read(master, text, sizeof text - 1) > 0 && strstr(text, "| ?[31mred"), text);
    }
};

QTEST_GUILESS_MAIN(TestZelctl)
#include "tst_zelctl.moc"
