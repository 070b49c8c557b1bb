#include "support.h"

#include <QProcess>
#include <QtTest>

#include <fcntl.h>
#include <stdlib.h>

/// Runs the program in a folder with event files: "." is that folder.
class TestZelctl : public QObject
{
    Q_OBJECT

    /// What the command prints and its exit status.
    QString run(const QString& arguments)
    {
        QProcess shell;
        shell.setWorkingDirectory(m_dir.path());
        shell.setProcessChannelMode(QProcess::MergedChannels);
        shell.start("/bin/sh", {"-c", "\"$0\" events " + arguments + "; echo $?", ZELCTL_PATH});
        return shell.waitForFinished() ? QString(shell.readAll()) : "hangs";
    }

    // Of both files. Power cuts left the second and the last half.
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
        QVERIFY(QDir(m_dir.path()).mkpath("folder/zel_events.log"));
        QVERIFY(QDir(m_dir.path()).mkpath("bad"));
        QVERIFY(QFile::link("/proc/self/mem", m_dir.filePath("bad/zel_events.log")));
    }

    void answers_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("answer"); // the numbers of the lines, or a part of the message
        QTest::newRow("everything, oldest first") << "." << 0 << "0123";
        QTest::newRow("last page has the rest") << ". --per-page 3 --page 1" << 0 << "0";
        QTest::newRow("beyond the last page") << ". --page 2147483647" << 0 << "";
        QTest::newRow("kind by key, in any case") << ". --kind updateevent" << 0 << "0";
        QTest::newRow("one day") << ". --from 01/03/2026 --to 01/03/2026" << 0 << "0";
        QTest::newRow("unknown kind") << ". --kind Menu" << 2 << "MenuAccess, MenuParameter";
        QTest::newRow("no such day") << ". --from 30/02/2026 --to 01/03/2026" << 2 << "30/02";
        QTest::newRow("per-page 0") << ". --per-page 0" << 2 << "--per-page";
        QTest::newRow("no such folder") << "nowhere" << 1 << "no folder nowhere";
        QTest::newRow("folder instead of file") << "folder" << 1 << "not a file";
        QTest::newRow("read error") << "bad" << 1 << "Input/output error; events are missing";
        QTest::newRow("full disk") << ". >/dev/full" << 1 << "No space left on device";
    }
    void answers()
    {
        QFETCH(QString, arguments);
        QFETCH(int, status);
        QFETCH(QString, answer);
        QString pattern = status == 0 ? "" : "zelctl: .*" + answer + ".*\n";
        for (int i = 0; status == 0 && i < answer.size(); ++i)
            pattern += QRegularExpression::escape(m_lines[answer[i].digitValue()]) + '\n';
        pattern = QRegularExpression::anchoredPattern(pattern + QString::number(status) + '\n');
        const QString output = run(arguments);
        QVERIFY2(output.contains(QRegularExpression(pattern)), qPrintable(output));
    }

    void writesJson()
    {
        QCOMPARE(run(". --json --per-page 2").replace('"', '\''),
                 "{'events':[{'kind':'MenuAccess','text':'\\u001b[31mred | café','time':"
                 "'02/03/2026 10:00:00:000'},{'line':'02/03/2026 11:0'}],'page':0,'pages':2}\n0\n");
    }

    void sendsNoEscapesToATerminal()
    {
        const int master = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(grantpt(master) == 0 && unlockpt(master) == 0);
        // Kept open: a terminal that nobody has open may forget what was printed.
        QVERIFY(open(ptsname(master), O_RDWR | O_NOCTTY) >= 0);
        QCOMPARE(run(QString(". --kind MenuAccess >") + ptsname(master)), "page 0 of 1\n0\n");
        char text[256] = {};
        QVERIFY2(read(master, text, sizeof text - 1) > 0 && strstr(text, "| ?[31mred"), text);
    }
};

QTEST_GUILESS_MAIN(TestZelctl)
#include "tst_zelctl.moc"
