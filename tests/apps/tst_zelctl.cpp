#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

/// Runs the program as a shell would, in a folder with event files: "." is that folder.
class TestZelctl : public QObject
{
    Q_OBJECT

    struct Outcome
    {
        int exitCode;
        QString output;
        QString error;
    };

    Outcome run(const QString& arguments, const QString& outputFile = QString())
    {
        QProcess process;
        process.setWorkingDirectory(m_dir.path());
        process.setStandardOutputFile(outputFile);
        process.start(ZELCTL_PATH, arguments.split(' '));
        const bool hasEnded = process.waitForFinished() && process.exitStatus() == 0;
        return {hasEnded ? process.exitCode() : -1, process.readAllStandardOutput(),
                process.readAllStandardError()};
    }

    void write(const QString& name, const QByteArray& content)
    {
        QFile file(m_dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    // Of both files. Power cuts left the fourth and the last half.
    const QByteArrayList m_lines{"28/02/2026 10:00:00:000| MenuAccess| one",
                                 "01/03/2026 10:00:00:000| UpdateUpdateEvent| two",
                                 "01/03/2026 11:00:00:000| EnergySavingEvent| bad \xff byte",
                                 "02/03/2026 09:00:00:000| MenuA",
                                 "02/03/2026 10:00:00:000| MenuAccess| \x1b[31mred | caf\xc3\xa9",
                                 "02/03/2026 11:0"};
    QTemporaryDir m_dir;

private Q_SLOTS:
    void initTestCase()
    {
        write("zel_events.log.1", m_lines.mid(0, 3).join('\n') + '\n');
        write("zel_events.log", m_lines[3] + QByteArray(9, '\0') + m_lines[4] + '\n' + m_lines[5]);
        const QDir dir(m_dir.path());
        QVERIFY(dir.mkpath("folder/zel_events.log") && dir.mkdir("empty"));
    }

    void answers_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("answer"); // the numbers of the lines, or a part of the message
        QTest::newRow("everything, oldest first") << "events ." << 0 << "012345";
        QTest::newRow("newest page, from both files") << "events . --per-page 4" << 0 << "2345";
        QTest::newRow("last page has the rest") << "events . --per-page 4 --page 1" << 0 << "01";
        QTest::newRow("beyond the last page") << "events . --page 2147483647" << 0 << "";
        QTest::newRow("kind by key, in any case") << "events . --kind updateevent" << 0 << "1";
        QTest::newRow("kind as in the file") << "events . --kind UpdateUpdateEvent" << 0 << "1";
        QTest::newRow("kind no screen has") << "events . --kind EnergySavingEvent" << 0 << "2";
        QTest::newRow("both days") << "events . --from 28/02/2026 --to 01/03/2026" << 0 << "012";
        QTest::newRow("unknown command") << "event" << 2 << "\"event\"";
        QTest::newRow("no folder") << "events" << 2 << "one folder";
        QTest::newRow("empty folder name") << "events " << 2 << "one folder";
        QTest::newRow("unknown option") << "events . --pages 1" << 2 << "pages";
        QTest::newRow("unknown kind") << "events . --kind Menu" << 2 << "MenuAccess, MenuParameter";
        QTest::newRow("empty kind") << "events . --kind " << 2 << "the kinds are";
        QTest::newRow("from alone") << "events . --from 01/01/2026" << 2 << "--to";
        QTest::newRow("no such day")
            << "events . --from 01/01/2026 --to 30/02/2026" << 2 << "30/02";
        QTest::newRow("wrong order")
            << "events . --from 02/01/2026 --to 01/01/2026" << 2 << "after";
        QTest::newRow("page below 0") << "events . --page -1" << 2 << "--page";
        QTest::newRow("per-page 0") << "events . --per-page 0" << 2 << "--per-page";
        QTest::newRow("per-page no number") << "events . --per-page 2x" << 2 << "--per-page";
        QTest::newRow("no such folder") << "events nowhere" << 1 << "no folder";
        QTest::newRow("folder without events") << "events empty" << 1 << "holds no";
        QTest::newRow("folder instead of file") << "events folder" << 1 << "not a file";
        QTest::newRow("file instead of folder") << "events zel_events.log" << 1 << "cannot read";
    }
    void answers()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, answer);
        const Outcome outcome = run(arguments);
        QTEST(outcome.exitCode, "exitCode");
        if (outcome.exitCode == 0) {
            QString expected;
            for (const QChar number : answer)
                expected += QString::fromUtf8(m_lines[number.digitValue()]) + '\n';
            QCOMPARE(outcome.output, expected);
            QCOMPARE(outcome.error, QString());
        } else {
            QCOMPARE(outcome.output, QString());
            QVERIFY2(outcome.error.contains(answer), qPrintable(outcome.error));
            QCOMPARE(outcome.error.count('\n'), 1);
        }
    }

    void writesJson()
    {
        const char* expected = "{'page': 0, 'pages': 3, 'events': ["
                               "{'time': '02/03/2026 10:00:00:000', 'kind': 'MenuAccess',"
                               " 'text': '\\u001b[31mred | café'},"
                               "{'line': '02/03/2026 11:0'}]}";
        QCOMPARE(QJsonDocument::fromJson(run("events . --json --per-page 2").output.toUtf8()),
                 QJsonDocument::fromJson(QByteArray(expected).replace('\'', '"')));
    }

    void sendsNoEscapesToATerminal()
    {
        const int master = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(grantpt(master) == 0 && unlockpt(master) == 0);
        // Kept open meanwhile: a terminal that nobody has open may forget what was printed.
        const int terminal = open(ptsname(master), O_RDWR | O_NOCTTY);
        QCOMPARE(run("events . --kind MenuAccess", ptsname(master)).error, "page 0 of 1\n");
        char text[256] = {};
        QVERIFY(read(master, text, sizeof text - 1) > 0);
        QVERIFY2(strstr(text, "| ?[31mred") != nullptr, text);
        close(terminal);
        close(master);
    }

    void failsOnAFullDisk() { QCOMPARE(run("events .", "/dev/full").exitCode, 1); }
};

QTEST_GUILESS_MAIN(TestZelctl)
#include "tst_zelctl.moc"
