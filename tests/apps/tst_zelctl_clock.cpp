#include "shell.h"
#include "system/simulateddatetimemanager.h"

using namespace zeltools::system;

/// The test plays the machine, and the program its simulator.
class TestZelctlClock : public QObject
{
    Q_OBJECT

    /// "@" in the command stands for a free address, and "demo" for that program.
    QString run(QString command) const
    {
        return runInShell(command.replace('@', m_place).replace("demo ", DEMO_PATH " "));
    }
    void follow(QProcess& simulator, const QString& type) const
    {
        simulator.start(ZELCTL_PATH,
                        {"clock", type + m_place, "--follow", "--set", "2024/03/01 08:30:00"});
    }

    const QString m_place = QString("/127.0.0.1/%1").arg(20000 + qApp->applicationPid() % 10000);

private Q_SLOTS:
    void initTestCase() { qputenv("LC_ALL", "fa_IR"); } // a locale with digits of its own

    void refuses()
    {
        QCOMPARE(run("zelctl clock tcpclient@ --timeout 1; zelctl clock tcpserver/192.0.2.1/81"),
                 "zelctl: no machine has connected in 1 s\n"
                 "zelctl: cannot listen on tcpserver/192.0.2.1/81: The address is not available\n"
                 "status 1\n");
        QCOMPARE(run("zelctl clock a/b"), "zelctl: \"a/b\" is not the address of a link; see "
                                          "\"zelctl clock --help\"\nstatus 2\n");
        // The folder of the socket can only be removed without it.
        QCOMPARE(run("d=$(mktemp -d); for f in --follow ''; do zelctl clock unixserver/$d/s $f & "
                     "until [ -e $d/s ]; do sleep 0.1; done; kill $!; wait $!; echo $?; done; "
                     "rmdir $d"),
                 "0\nzelctl: the command was interrupted\n1\n");
        QVERIFY(
            run("zelctl clock tcpclient@ --set '2024/02/30 08:30:00'").endsWith("\nstatus 2\n"));
        QCOMPARE(run("zelctl clock tcpclient@ --zone Europe/Rome --set '2024/03/31 02:30:00'"),
                 "zelctl: Europe/Rome skips 2024/03/31 02:30:00; see \"zelctl clock --help\"\n"
                 "status 2\n");
    }

    void setsAndFollows()
    {
        SimulatedDateTimeManager machine("tcpserver" + m_place);
        QCOMPARE(run("TZ=Europe/Rome zelctl clock tcpclient@ --zone America/New_York --json "
                     "--set '2030/03/31 02:30:00'"), // which Rome skips
                 "{\"set\":\"2030-03-31T02:30:00\"}\n");
        QCOMPARE(machine.currentDateTime().date(), QDate(2030, 3, 31));
        QProcess simulator;
        follow(simulator, "tcpclient");
        QTRY_COMPARE(machine.currentDateTime().date(), QDate(2024, 3, 1));
        const QString refusal =
            "zelctl: the machine has closed the link, it may have another simulator";
        QCOMPARE(run("zelctl clock tcpclient@ --set '2028/03/01 08:30:00'; zelctl clock tcpclient@ "
                     "--timeout 1; timeout 5 zelctl clock tcpclient@ --follow"),
                 refusal + '\n' + refusal + '\n' + refusal + "; waiting for it\nstatus 124\n");
        machine.setDateTime(QDateTime({2026, 1, 2}, {3, 4, 5}, Qt::UTC), true);
        QTRY_COMPARE(simulator.bytesAvailable(), 20);
        QCOMPARE(simulator.readAll(), "2026/01/02 03:04:05\n");
        simulator.close();
    }

    void aMalformedEnvironmentEndsTheDemo()
    {
        const QString output = run("CUPSENSOR_SIMULATION=yes demo ");
        QVERIFY(output.contains("Invalid value yes for variable CUPSENSOR_SIMULATION\n") &&
                output.endsWith("status 134\n"));
    }

    void drivesTheDemo()
    {
        QProcess simulator;
        follow(simulator, "tcpserver");
        const QString found = run("demo --clock tcpclient@ 2>/dev/null");
        QVERIFY2(found.contains("The simulated boiler has 92.5 degrees.\n") &&
                     found.contains("It shows 2024-03-01T08:30:0") && !found.contains("status"),
                 qPrintable(found));
        QTRY_COMPARE(simulator.bytesAvailable(), 20);
        QVERIFY(simulator.readAll().startsWith("2024/03/0"));
        simulator.close();
    }
};

QTEST_GUILESS_MAIN(TestZelctlClock)
#include "tst_zelctl_clock.moc"
