#include "shell.h"
#include "support.h"
#include "support/rows.h"

/// Runs `zelctl bundle` in a folder with the logs of a machine.
class TestZelctlBundle : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString run(const char* command) const { return runInShell(command, m_dir.path()); }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir(m_dir.path()).mkpath("logs/debug"));
        support::writeFile(m_dir.filePath("logs/debug/zel_logs.log"),
                           "15/11/2026 03:37:40:123| Warning  | 12 lines were lost (30 since the "
                           "start of process 4711): x\n");
        support::writeFile(m_dir.filePath("env"), "WIFI_KEY=steam\nA=1\n");
        support::writeFile(m_dir.filePath("key"), "0123456789abcdef");
    }
    void showsAndChecks()
    {
        QVERIFY(run("zelctl bundle . out.tar.zst --environment env --level 1")
                    .contains("in out.tar.zst"));
        QVERIFY(run("zelctl bundle verify out.tar.zst").startsWith("complete: "));
        QVERIFY(run("zelctl bundle list out.tar.zst").contains("  logs/debug/zel_logs.log\n"));
        QVERIFY(run("zelctl bundle list out.tar.zst --json").contains("\"version\": 1"));
        QVERIFY(run("tar -xOf out.tar.zst losses.json").contains("\"total\": 12"));
        QCOMPARE(run("tar -xOf out.tar.zst environment"), QString("WIFI_KEY=***\nA=1\n"));
        QCOMPARE(run("mkdir e; cp logs/debug/* e; echo x >e/zel_logs.log.1.tar.gz; mkfifo pipe; "
                     "zelctl bundle e e.tar.gz --environment pipe 2>&1 | grep ^z; "
                     "zelctl bundle e f.tar.gz --environment /proc/self/mem 2>&1 | grep env; "
                     "tar -xOf e.tar.gz losses.json | grep -c 'incomplete.: true\\|total.: 12'"),
                 QString("zelctl: losses.json is incomplete: cannot read e/zel_logs.log.1.tar.gz: "
                         "tar finds it damaged\n"
                         "zelctl: not in the bundle: environment: it is not a plain file\n"
                         "zelctl: not in the bundle: environment: Input/output error\n2\n"));
        QVERIFY(run("zelctl bundle logs b.tar.gz.crypt --key-file key").contains("in b.tar.gz"));
        QVERIFY(run("ZEL_KEY=0123456789abcdef zelctl bundle verify b.tar.gz.crypt")
                    .startsWith("complete: "));
        QCOMPARE(run("mkdir -p p/logs; cp logs/debug/* env p/logs; zelctl bundle p p.tar.gz 2>&- "
                     ">&-; tar -tzf p.tar.gz | grep logs"),
                 QString("logs/zel_logs.log\n"));
        QVERIFY(run("zelctl crypt decrypt b.tar.gz.crypt - --key-file key 2>&- | tar -tz")
                    .endsWith("manifest.json\nmanifest.sha256\n"));
    }

    void refusesInOneLine_data()
    {
        support::addRows<std::tuple<const char*, const char*, int>>({
            {"zelctl bundle", "--help", 2},
            {"zelctl bundle . out.zip", ".tar.zst", 2},
            {"zelctl bundle . a.tar.gz --level 10", "1 to 9", 2},
            {"zelctl bundle . a.tar.gz --level 0", "above 0", 2},
            {"zelctl bundle . a.tar.gz --json", "only valid with", 2},
            {"zelctl bundle . a.tar.gz --key-file key", ".crypt", 2},
            {"zelctl bundle verify env --level 1", "only valid with DIR OUT", 2},
            {"zelctl bundle missing a.tar.gz", "no folder", 1},
            {"mkdir d; cp env d; zelctl bundle d a.tar.gz", "holds no log files", 1},
            {"zelctl bundle . missing/a.tar.gz", "No such file", 1},
            {"zelctl bundle . a.tar.gz.crypt", "key is missing", 1},
            {"zelctl bundle verify missing", "No such file", 1},
            {"zelctl bundle verify .", "not a file", 1},
            {"zelctl bundle verify env", "not a complete support bundle", 1},
            {"ln key k.tar.gz.crypt; zelctl bundle . k.tar.gz.crypt --key-file key", "lose", 1},
            {"cp key c.crypt; zelctl bundle verify c.crypt --key-file key", "complete", 1},
            {"zelctl crypt encrypt env z.crypt --compression forced --key-file key; "
             "zelctl bundle verify z.crypt --key-file key",
             "not encrypted as", 1},
        });
    }
    void refusesInOneLine()
    {
        const auto& [command, message, status] =
            support::currentRow<std::tuple<const char*, const char*, int>>();
        const QString found = run(command);
        QVERIFY2(found.contains(message) && found.startsWith("zelctl: ") &&
                     found.endsWith(QString("\nstatus %1\n").arg(status)) && found.count('\n') == 2,
                 qPrintable(found));
    }
};

QTEST_GUILESS_MAIN(TestZelctlBundle)
#include "tst_zelctl_bundle.moc"
