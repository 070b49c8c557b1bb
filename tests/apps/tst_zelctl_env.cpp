#include "shell.h"
#include "support.h"

#include <memory>

/// Runs the program in a shell, mostly on the file "env" in a folder of its own.
class TestZelctlEnv : public QObject
{
    Q_OBJECT

    QString run(const QString& command) const { return runInShell(command, m_dir->path()); }

    std::unique_ptr<QTemporaryDir> m_dir;

private Q_SLOTS:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void edits_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("words");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](auto name, const QByteArray& before, auto words, auto after) {
            QTest::newRow(name) << before << words << QByteArray(after);
        };
        row("all around stays", "# \xff\n\n \tA = x \r\nLAB_TEST=0\r\n#LAB_TEST=0\nLAB_TESTS=0",
            "set LAB_TEST 1", "# \xff\n\n \tA = x \r\nLAB_TEST=1\r\n#LAB_TEST=0\nLAB_TESTS=0");
        row("last of several", "A=1\nA=0\n", "set --force A 2", "A=1\nA=2\n");
        row("appended to half a line", "A=1\r\nB", "set --force C ''", "A=1\r\nB\r\nC=\r\n");
        row("there already", " LAB_TEST \n", "set LAB_TEST 1", " LAB_TEST \n");
        row("any text", "", "set --force C \"= '#$(printf '\\303\\251')\"", "C== '#\u00e9\n");
        row("unset all", "LAB_TEST=1\nA\n LAB_TEST\r\nB", "unset LAB_TEST", "A\nB");
    }
    void edits()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, words);
        support::writeFile(m_dir->filePath("env"), before);
        QCOMPARE(run("zelctl env env " + words), "");
        QTEST(support::readFile(m_dir->filePath("env")), "after");
        QCOMPARE(run("ls -A"), "env\n");
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        QTest::newRow("no Boolean, even forced")
            << "env set --force LAB_TEST 2" << 1 << "\"2\" is not";
        QTest::newRow("log switch") << "env set ZEL_DEBUG_PAYMENT yes" << 1 << "\"yes\" is not";
        QTest::newRow("typing error") << "env set LABTEST 1" << 1 << "LABTEST is not a switch";
        QTest::newRow("name of a comment") << "env set --force '#A' 1" << 1 << "the name \"#A\"";
        QTest::newRow("unset the blank lines") << "env unset ''" << 2 << "name is empty";
        QTest::newRow("blank at the end") << "env set EXE_MODEL 'a '" << 1 << "the value \"a \"";
        QTest::newRow("line feed, masked") << "env set EXE_MODEL 'a\nB=1'" << 1 << "\"a?B=1\"";
        QTest::newRow("half a character") << "env set EXE_MODEL $(printf '\\303')" << 2 << "UTF-8";
        QTest::newRow("other action") << "env get A --wide" << 2 << "with list, catalogue";
        QTest::newRow("no value") << "env get QML_SCREENSAVER" << 1 << "has no value";
        QTest::newRow("invalid in the file") << "env get LAB_TEST" << 1 << "\"yes\" is not";
        QTest::newRow("no file") << "other unset LAB_TEST" << 1 << "other: No such file";
        QTest::newRow("pipe") << "pipe list" << 1 << "pipe: it is not a file";
        QTest::newRow("folder") << ". set LAB_TEST 1" << 1 << ". is a folder; give the name of";
        QTest::newRow("link to nothing") << "link set LAB_TEST 1" << 1 << "points to nothing";
        QTest::newRow("set without a value") << "env set LAB_TEST" << 2 << "--help";
    }
    void refuses()
    {
        run("printf '\nLAB_TEST=yes' >env; mkfifo pipe; ln -s nothing link; touch output");
        const QString before = run("ls -A; cat env output");
        QFETCH(QString, words);
        QFETCH(QString, message);
        QFETCH(int, status);
        const QString error = run("zelctl env " + words + " >output");
        const auto pattern = QString("^zelctl: .*%1.*\nstatus %2\n$")
                                 .arg(QRegularExpression::escape(message))
                                 .arg(status);
        QVERIFY2(error.contains(QRegularExpression(pattern)), qPrintable(error));
        QCOMPARE(run("ls -A; cat env output"), before);
    }

    void tellsWhereAValueComesFrom()
    {
        support::writeFile(m_dir->filePath("env"),
                           "A=b=r\n\nLAB_TEST=yes\nQML_SCREENSAVER=1\nCANBUS_DUMP_TO_FILE\n");
        const QString machine =
            "export ENCRYPTED_MACHINE=0 CANBUS_DUMP_TO_FILE=no DISABLE_WATCHDOG=; ";
        QString list = run(machine + "zelctl env env list").replace(QRegularExpression(" +"), " ");
        // The rest of the defines depend on the build.
        QCOMPARE(list.remove(QRegularExpression("(?m)^(PLATFORM|OS|MODEL)_.*\n")),
                 "ENCRYPTED_CONFIG define 1\nENCRYPTED_MACHINE environment 0\n"
                 "LAB_TEST file, invalid yes\nCANBUS_DUMP_TO_FILE file 1\nDISABLE_WATCHDOG "
                 "environment, invalid \n"
                 "QML_SCREENSAVER file, not reached 1\n"
                 "A file, unknown b=r\n"
                 "zelctl: env: \"yes\" is not a value for LAB_TEST, which is 0 or 1\nstatus 1\n");
        QCOMPARE(run("zelctl env env get A"), "b=r\n");
        QVERIFY(run("zelctl env env list --json").contains(R"("source":"file","valid":false)"));
        QCOMPARE(
            run("printf 'CANBUS_SIMULATION=x\nLAB_TEST=1' >env; zelctl env env list >/dev/null"),
            "zelctl: env: \"x\" is not a value for CANBUS_SIMULATION, which is 0 or 1\n"
            "status 1\n");
        // It would end at its start, whatever the file has.
        QCOMPARE(run("echo LAB_TEST=0 >env; LAB_TEST=x zelctl env env list >/dev/null"),
                 "zelctl: the environment: \"x\" is not a value for LAB_TEST, which is 0 or 1\n"
                 "status 1\n");
    }

    void showsTheCatalogue()
    {
        QCOMPARE(run("zelctl env catalogue | wc -l"), "96\n"); // no description breaks a line
        // All texts, types and flags, in their order, but not the defaults of the build.
        QCOMPARE(run("zelctl env catalogue --json | sed 's/\"default\":[^,]*,//g' | sha1sum"),
                 "d1085d83bd3fc68813e77099023838b53946ecb1  -\n");
    }

    void keepsModeOwnerAndLink()
    {
        run("mkdir at; echo innocent >innocent; ln innocent at/.env.new; ln -s at/env env;"
            "echo LAB_TEST=0 >at/env; chown 12:34 at/env; chmod 4751 at/env");
        const QString owner = run("stat -c '%u %g' at/env");
        QCOMPARE(run("zelctl env env set LAB_TEST 1;"
                     "cat innocent at/env; ls -A at; stat -c '%a %u %g' at/env"),
                 "innocent\nLAB_TEST=1\nenv\n4751 " + owner);
    }

    void losesNoEditOfManyAtOnce()
    {
        run("umask 027; for i in $(seq 10 39); do zelctl env env set --force N$i x & done; wait");
        QCOMPARE(run("sort env; ls -A; stat -c %a env"),
                 run("seq -f N%g=x 10 39; echo env; echo 640"));
    }
};

QTEST_GUILESS_MAIN(TestZelctlEnv)
#include "tst_zelctl_env.moc"
