#include <QProcess>
#include <QtTest>

/// `zelctl hex` and `zelctl version`.
class TestZelctlValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("answer"); // also of stderr, and the exit status unless it is 0
        const auto row = [](const char* command, const QString& answer) {
            QTest::newRow(command) << QString(command) << answer;
        };
        row("hex 0xde:ad-BEEF --prefix 0x", "0xDE-AD-BE-EF\n");
        row("printf 'aa:bb\\r\\n\\n0xcc' | zelctl hex - --separator ''", "AABB\n\nCC\n");
        row("printf 'aa\\nbb\\n' | zelctl hex - --to-bytes | od -An -tx1", " aa bb\n");
        row("printf 'a\\n\\377' | zelctl hex - --from-bytes", "61-0A-FF\n");
        row("printf 'aa\\nz\\033z' | zelctl hex -",
            "zelctl: line 2: Wrong format: \"z?z\" -> \"Z?Z\"\nstatus 1\n");
        row("hex abc", "zelctl: Odd number of hex characters\nstatus 1\n");
        row("hex aa --to-bytes --from-bytes",
            "zelctl: --to-bytes goes with no other option\nstatus 2\n");
        row("head -c 70M /dev/zero | zelctl hex -",
            "zelctl: cannot read the standard input: it is too large\nstatus 1\n");
        row("version 2.9 2.10", "<\n");
        row("version ' 1.2' +1.02", "=\n");
        row("version 1.2 1.2.0 --json 2>/dev/null",
            "{\"a\":\"1.2\",\"b\":\"1.2.0\",\"comparison\":\"!=\",\"sameSize\":false}\n");
        row("version 1.3 1.2.7", "zelctl: 1.3 and 1.2.7 have different numbers of parts, which the "
                                 "machine warns of; only those that both have decide between < and "
                                 ">\n>\n");
        row("version 1.2a 1.2", "zelctl: \"2a\" in \"1.2a\" is no number of a version\nstatus 1\n");
        row("[ \"zelctl $(zelctl version)\" = \"$(zelctl --version)\" ]", "");
    }
    void answers()
    {
        QFETCH(QString, command);
        if (!command.contains("zelctl "))
            command.prepend("zelctl ");
        QProcess shell;
        shell.setProcessChannelMode(QProcess::MergedChannels);
        shell.start("/bin/sh",
                    {"-c", "zelctl() { \"$0\" \"$@\"; }; (" + command + ") || echo status $?",
                     ZELCTL_PATH});
        QVERIFY(shell.waitForFinished());
        QTEST(QString(shell.readAll()), "answer");
    }
};

QTEST_GUILESS_MAIN(TestZelctlValues)
#include "tst_zelctl_values.moc"
