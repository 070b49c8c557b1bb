#include "support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

#include <memory>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

/// Runs the program on the file "env" in a folder of its own.
class TestZelctlEnv : public QObject
{
    Q_OBJECT

    struct Outcome
    {
        int exitCode;
        QString output;
        QString error;
    };

    Outcome run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.setWorkingDirectory(m_dir->path());
        process.start(program, arguments);
        const bool hasEnded = process.waitForFinished() && process.exitStatus() == 0;
        return {hasEnded ? process.exitCode() : -1, process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    Outcome env(const QStringList& arguments)
    {
        return run(ZELCTL_PATH, QStringList("env") + arguments);
    }

    QString path(const QString& name = "env") const { return m_dir->filePath(name); }
    QStringList names() const
    {
        return QDir(m_dir->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    struct stat status(const QString& name = "env") const
    {
        struct stat status = {};
        lstat(qPrintable(path(name)), &status);
        return status;
    }

    std::unique_ptr<QTemporaryDir> m_dir;

private Q_SLOTS:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void edits_data()
    {
        QTest::addColumn<QByteArray>("before"); // null: no file
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QByteArray>("after");
        const QStringList on{"set", "LAB_TEST", "1"};
        const auto row = [](const char* name, const QByteArray& before, const QStringList& words,
                            const QByteArray& after) {
            QTest::newRow(name) << before << words << after;
        };
        row("no file", {}, on, "LAB_TEST=1\n");
        row("empty file", "", on, "LAB_TEST=1\n");
        row("all around stays", "# a=\xff\n\n \tFOO = x \nLAB_TEST=0\n\n#LAB_TEST=0\n=\n", on,
            "# a=\xff\n\n \tFOO = x \nLAB_TEST=1\n\n#LAB_TEST=0\n=\n");
        row("CR LF", "A=1\r\nLAB_TEST=0\r\nB\r\n", on, "A=1\r\nLAB_TEST=1\r\nB\r\n");
        row("CR LF, appended", "A=1\r\n", on, "A=1\r\nLAB_TEST=1\r\n");
        row("no line feed at the end", "A=1\nLAB_TEST=0", on, "A=1\nLAB_TEST=1");
        row("appended where no line feed is", "A=1", on, "A=1\nLAB_TEST=1");
        row("the same with CR LF", "A=1\r\nB=2", on, "A=1\r\nB=2\r\nLAB_TEST=1");
        row("the last of several", "LAB_TEST=1\nLAB_TEST=0\nA\n", on,
            "LAB_TEST=1\nLAB_TEST=1\nA\n");
        row("key without a value", " LAB_TEST \n", {"set", "LAB_TEST", "0"}, "LAB_TEST=0\n");
        row("there already", " LAB_TEST \n", on, " LAB_TEST \n");
        row("names that only look alike", "LAB_TEST =0\nLAB_TESTS=0\n", on,
            "LAB_TEST =0\nLAB_TESTS=0\nLAB_TEST=1\n");
        row("any text", {}, {"set", "CL_MODEL_0", "a = b=\"#c\""}, "CL_MODEL_0=a = b=\"#c\"\n");
        row("empty text", {}, {"set", "CL_MODEL_0", ""}, "CL_MODEL_0=\n");
        row("text like an option", {}, {"set", "CL_MODEL_0", "--", "-5"}, "CL_MODEL_0=-5\n");
        row("module", {}, {"set", "ZEL_DEBUG_PAYMENT", "1"}, "ZEL_DEBUG_PAYMENT=1\n");
        row("all modules", {}, {"set", "ZEL_DEBUG_ALL", "0"}, "ZEL_DEBUG_ALL=0\n");
        row("thread of the log", {}, {"set", "LOG_FROM_MAIN_THREAD", "1"},
            "LOG_FROM_MAIN_THREAD=1\n");
        row("unknown, forced", {}, {"set", "--force", "A", "b"}, "A=b\n");
        row("unset all", "LAB_TEST=1\nA\n LAB_TEST\r\nB", {"unset", "LAB_TEST"}, "A\nB");
        row("unset the only one", "LAB_TEST", {"unset", "LAB_TEST"}, "");
        row("unset an unknown one", "A\nB\n", {"unset", "A"}, "B\n");
        row("unset what is not there", "A\n", {"unset", "LAB_TEST"}, "A\n");
    }
    void edits()
    {
        QFETCH(QByteArray, before);
        if (!before.isNull())
            support::writeFile(path(), before);
        QFETCH(QStringList, words);
        const Outcome outcome = env(QStringList("env") + words);
        QCOMPARE(outcome.error, QString());
        QCOMPARE(outcome.output, QString());
        QCOMPARE(outcome.exitCode, 0);
        QTEST(support::readFile(path()), "after");
        QCOMPARE(names(), QStringList("env"));
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("words"); // separated by "|"
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        QTest::newRow("no Boolean")
            << "env|set|LAB_TEST|yes" << 1 << "\"yes\" is no value for LAB_TEST";
        QTest::newRow("empty Boolean") << "env|set|LAB_TEST|" << 1 << "\"\" is no value";
        QTest::newRow("forced all the same") << "env|set|--force|LAB_TEST|2" << 1 << "\"2\" is no";
        QTest::newRow("log switch") << "env|set|ZEL_DEBUG_PAYMENT|yes" << 1 << "ZEL_DEBUG_PAYMENT";
        QTest::newRow("typing error") << "env|set|LABTEST|1" << 1 << "LABTEST is no switch";
        QTest::newRow("no such module") << "env|set|ZEL_DEBUG_LAB|1" << 1 << "no switch";
        QTest::newRow("unset a typing error") << "env|unset|LABTEST" << 1 << "no switch";
        QTest::newRow("\"=\" in the name") << "env|set|--force|A=B|1" << 1 << "the name \"A=B\"";
        QTest::newRow("name of a comment") << "env|set|--force|#A|1" << 1 << "the name";
        QTest::newRow("blank before the name") << "env|set|--force| A|1" << 1 << "the name";
        QTest::newRow("empty name") << "env|set|--force||1" << 2 << "name is empty";
        QTest::newRow("unset the blank lines") << "env|unset|" << 2 << "name is empty";
        QTest::newRow("blank at the end") << "env|set|EXE_MODEL|a " << 1 << "the value \"a \"";
        QTest::newRow("line feed, masked") << "env|set|EXE_MODEL|a\nB=1" << 1 << "\"a?B=1\"";
        QTest::newRow("carriage return") << "env|set|EXE_MODEL|a\rb" << 1 << "the value";
        QTest::newRow("escape sequence, masked") << "env|get|\x1b[31m" << 1 << "?[31m is no switch";
        QTest::newRow("no value") << "env|get|QML_SCREENSAVER" << 1 << "has no value";
        QTest::newRow("invalid in the file") << "env|get|FIELD_TEST_LOG" << 1 << "env: \"yes\"";
        QTest::newRow("no file to list") << "other|list" << 1 << "cannot read other: No such file";
        QTest::newRow("no file to get from") << "other|get|LAB_TEST" << 1 << "No such file";
        QTest::newRow("no file to unset in") << "other|unset|LAB_TEST" << 1 << "No such file";
        QTest::newRow("no folder") << "no/env|set|LAB_TEST|1" << 1 << "/no: No such file";
        QTest::newRow("folder") << "folder|set|LAB_TEST|1" << 1 << "folder: it is not a file";
        QTest::newRow("pipe") << "pipe|list" << 1 << "pipe: it is not a file";
        QTest::newRow("link to nothing") << "link|set|LAB_TEST|1" << 1 << "points to nothing";
        QTest::newRow("no place for the new file")
            << "blocked|set|LAB_TEST|1" << 1 << ".blocked.zelctl";
        for (const char* words :
             {"", "env", "env|sets|LAB_TEST|1", "env|set|LAB_TEST", "env|list|A", "|list",
              "env|get|LAB_TEST|--json", "env|get|LAB_TEST|--force"})
            QTest::newRow(words) << words << 2 << "--help";
        QTest::newRow("unknown option") << "env|list|--jsn" << 2 << "jsn";
    }
    void refuses()
    {
        const QByteArray content = "LAB_TEST=0\n\nFIELD_TEST_LOG=yes\n";
        support::writeFile(path(), content);
        QDir(m_dir->path()).mkdir("folder");
        QDir(m_dir->path()).mkpath(".blocked.zelctl/something");
        QCOMPARE(mkfifo(qPrintable(path("pipe")), 0600), 0);
        QCOMPARE(symlink("nothing", qPrintable(path("link"))), 0);
        const QStringList before = names();
        QFETCH(QString, words);
        QFETCH(QString, message);
        const Outcome outcome = env(words.split('|'));
        QVERIFY2(outcome.error.contains(message), qPrintable(outcome.error));
        QCOMPARE(outcome.error.count('\n'), 1);
        QCOMPARE(outcome.output, QString());
        QTEST(outcome.exitCode, "exitCode");
        QCOMPARE(support::readFile(path()), content);
        QCOMPARE(names(), before);
    }

    void tellsWhereAValueComesFrom()
    {
        const support::EnvironmentGuard machine("ENCRYPTED_MACHINE", "0");
        const support::EnvironmentGuard lab("LAB_TEST", "1");
        const support::EnvironmentGuard model("EXE_MODEL", "caf\xc3\xa9");
        const support::EnvironmentGuard log("ZEL_DEBUG_PAYMENT", "1");
        support::writeFile(path(), "FOO=b=r\n\nLAB_TEST=0\nCANBUS_DUMP_TO_FILE\nZEL_DEBUG_ALL=1\n");
        const QStringList expected{"ENCRYPTED_CONFIG define 1",
                                   "ENCRYPTED_MACHINE environment 0",
                                   "LAB_TEST file 0",
                                   "CANBUS_DUMP_TO_FILE file 1",
                                   "EXE_MODEL environment café",
                                   "ZEL_DEBUG_PAYMENT environment 1",
                                   "ZEL_DEBUG_ALL file 1",
                                   "FOO file, unknown b=r"};
        // The rest of the defines depend on the build.
        const QRegularExpression other("^(PLATFORM|OS|MODEL)_");
        QStringList lines;
        for (const QString& line : env({"env", "list"}).output.split('\n', Qt::SkipEmptyParts)) {
            if (!line.contains(other))
                lines.append(line.simplified());
        }
        QCOMPARE(lines, expected);

        lines.clear();
        const QString json = env({"--json", "env", "list"}).output;
        for (const QJsonValue setting :
             QJsonDocument::fromJson(json.toUtf8())["settings"].toArray()) {
            if (setting["name"].toString().contains(other))
                continue;
            QVERIFY(setting["valid"].toBool());
            lines.append(setting["name"].toString() + ' ' + setting["source"].toString() +
                         (setting["known"].toBool() ? " " : ", unknown ") +
                         setting["value"].toString());
        }
        QCOMPARE(lines, expected);

        for (const QString& line : expected) {
            const QString value = line.section(' ', -1);
            QCOMPARE(env({"env", "get", line.section(' ', 0, 0)}).output, value + '\n');
        }
    }

    void listsWhatTheMachineWouldRefuse()
    {
        support::writeFile(path(), "LAB_TEST=yes\nFOO=1\n");
        const Outcome text = env({"env", "list"});
        QVERIFY2(
            text.output.contains(QRegularExpression("LAB_TEST +file, invalid  yes\n(.|\n)*FOO")),
            qPrintable(text.output));
        QVERIFY(text.error.startsWith("zelctl: env: \"yes\" is no value for LAB_TEST"));
        QCOMPARE(text.exitCode, 1);
        const Outcome json = env({"env", "list", "--json"});
        QCOMPARE(json.exitCode, 1);
        QVERIFY(json.output.contains("\"name\":\"LAB_TEST\",\"source\":\"file\",\"valid\":false"));
    }

    void showsTheCatalogue()
    {
        const QByteArray json = env({"catalogue", "--json"}).output.toUtf8();
        const QJsonArray switches = QJsonDocument::fromJson(json)["switches"].toArray();
        QCOMPARE(switches.size(), 96);
        QCOMPARE(switches.first()["name"].toString(), "ZEL_DEBUG_MODE");
        const QJsonObject path{
            {"name", "CANBUS_INTERFACE_PATH"},
            {"type", "String"},
            {"category", "CanBus"},
            {"flags", 7},
            {"default", QJsonValue()},
            {"description", "Set canbus interface path, e.g. can0 or /tmp/ttyS0"}};
        QVERIFY(switches.contains(path));
        const QStringList lines = env({"catalogue"}).output.split('\n');
        QCOMPARE(lines.size(), 97); // no description has broken a line
        QCOMPARE(lines[6].simplified(),
                 "ENCRYPTED_CONFIG Boolean General 1 1 Encrypt configuration database");
        QCOMPARE(lines[25].simplified(),
                 "CANBUS_INTERFACE_PATH String CanBus 7 - " + path["description"].toString());
    }

    void takesUtf8InAnyLocale()
    {
        const support::EnvironmentGuard locale("LC_ALL", "C");
        const QString line = ZELCTL_PATH " env env set EXE_MODEL \"$(printf '%1')\"";
        QCOMPARE(run("/bin/sh", {"-c", line.arg("caf\\303\\251")}).exitCode, 0);
        QCOMPARE(support::readFile(path()), "EXE_MODEL=caf\xc3\xa9\n");
        QCOMPARE(run("/bin/sh", {"-c", line.arg("caf\\303")}).exitCode, 2);
    }

    void keepsModeOwnerAndLink()
    {
        QDir(m_dir->path()).mkdir("folder");
        const QString file = path("folder/env"), leftover = path("folder/.env.zelctl");
        support::writeFile(file, "A\n");
        support::writeFile(path("innocent"), "innocent");
        QCOMPARE(link(qPrintable(path("innocent")), qPrintable(leftover)), 0);
        QCOMPARE(symlink("folder/env", qPrintable(path())), 0);
        const bool isRoot = geteuid() == 0;
        QCOMPARE(chown(qPrintable(file), isRoot ? 12 : geteuid(), isRoot ? 34 : getegid()), 0);
        QCOMPARE(chmod(qPrintable(file), 04751), 0);
        const struct stat before = status("folder/env");
        QCOMPARE(env({"env", "set", "LAB_TEST", "1"}).error, QString());
        const struct stat after = status("folder/env");
        QCOMPARE(support::readFile(file), "A\nLAB_TEST=1\n");
        QCOMPARE(after.st_mode, before.st_mode);
        QCOMPARE(after.st_uid, before.st_uid);
        QCOMPARE(after.st_gid, before.st_gid);
        QVERIFY(S_ISLNK(status().st_mode));
        QCOMPARE(support::readFile(path("innocent")), "innocent");
        QVERIFY(!QFile::exists(leftover));
        // Nothing to change: not even a new file with the old content.
        QCOMPARE(env({"env", "set", "LAB_TEST", "1"}).error, QString());
        QCOMPARE(status("folder/env").st_ino, after.st_ino);
    }

    void makesAFileAsTheUmaskSays()
    {
        const mode_t umaskBefore = umask(027);
        const Outcome outcome = env({"env", "set", "LAB_TEST", "1"});
        umask(umaskBefore);
        QCOMPARE(outcome.error, QString());
        QCOMPARE(status().st_mode & 07777, 0640U);
    }

    void losesNoEditOfManyAtOnce()
    {
        QStringList expected;
        std::vector<std::unique_ptr<QProcess>> processes;
        for (int i = 10; i < 40; ++i) {
            const QString name = QStringLiteral("N%1").arg(i);
            expected.append(name + "=x");
            processes.push_back(std::make_unique<QProcess>());
            processes.back()->start(ZELCTL_PATH, {"env", path(), "set", "--force", name, "x"});
        }
        for (const auto& process : processes)
            QVERIFY(process->waitForFinished() && process->exitCode() == 0);
        QStringList lines = QString(support::readFile(path())).split('\n', Qt::SkipEmptyParts);
        lines.sort();
        QCOMPARE(lines, expected);
        QCOMPARE(names(), QStringList("env"));
    }
};

QTEST_GUILESS_MAIN(TestZelctlEnv)
#include "tst_zelctl_env.moc"
