#include "shell.h"
#include "support.h"
#include <zeltools/crashreports/crashreport.h>

using zeltools::CrashReport;

/// `zelctl crash`, and the reader of reports behind it, with the reports of real crashes.
class TestZelctlCrash : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString run(const QString& command) { return runInShell(command, m_dir.path()); }
    static void row(const char* command, const QString& answer)
    {
        QTest::newRow(command) << answer;
    }

private Q_SLOTS:
    void initTestCase()
    {
        // Each crash is collected by the next start.
        const QString crash = "(" CRASHER_PATH " machine %1; " CRASHER_PATH " machine nothing) "
                              "2>/dev/null; mv machine/crashes/*.report crash-%1.report\n";
        run("mkdir machine bad none other debug build\n" + crash.arg("exception") +
            crash.arg("null_call") +
            "head -c 2000 crash-null_call.report >bad/crash-cut.report\n"
            "truncate -s 1M bad/crash-cut.report; echo text >bad/crash-text.report\n"
            "printf 'ZelTools crash report 1\n[process]\nprogram /\033[31m\n[stack 1 "
            "A]\n0x10\n0x20\n[log]\n\033c\n' "
            ">bad/escapes; truncate -s 5M bad/large; mkfifo bad/pipe\n"
            "id=$(readelf -n " CRASHER_PATH " | sed -n 's/.*Build ID: \\(..\\)/\\1\\//p')\n"
            "mkdir -p build/.build-id/${id%/*}\n"
            "objcopy --only-keep-debug " CRASHER_PATH " build/.build-id/$id.debug\n"
            "cp build/.build-id/$id.debug debug/any.debug; mkdir debug32\n"
            "objcopy -I elf64-little -O elf32-little debug/any.debug debug32/any.debug\n"
            // Three modules that have one file, and two sections and registers of one name.
            "m=$(sed -n 's/^0x[^ ]* 0x[^ ]* \\(.*crasher\\)$/\\1/p' crash-null_call.report)\n"
            "f=$(nm " CRASHER_PATH " | sed -n 's/ T crash_null_call//p')\n"
            "(echo 'ZelTools crash report 1\n[registers]\nx 0x1\nx 0x2\n[section t]\na\n[section "
            "t]\nb\n[modules]'; for i in 1 2 3; do echo 0x${i}0000000 0x${i}8000000 $m; done\n"
            "for i in 1 2 3; do printf '[stack 1 A]\n%#x\n' $((0x${i}0000000 + 0x$f)); done; "
            "echo '[end]') >bad/modules; mkdir bin; printf '#!/bin/sh\necho >>asked; "
            "PATH=${PATH#bin:} exec addr2line \"$@\"' >bin/addr2line; chmod +x bin/addr2line\n"
            // Another build, and files with damaged headers: cut, or with tables of any place and
            // size.
            "cp /bin/true other/crasher\n"
            "for size in 0 4 63 64 700; do head -c $size /bin/true >other/$size.debug; done\n"
            "for place in 32 40 54 56 60; do for byte in 001 177 377; do\n"
            "cp /bin/true other/$place-$byte.debug; printf \"\\\\$byte\\\\$byte\\\\$byte\" | "
            "dd of=other/$place-$byte.debug bs=1 seek=$place conv=notrunc 2>/dev/null; done; done");
        // A crash that no start has collected, and a run without a crash.
        run(CRASHER_PATH " machine null_call; echo >machine/crashes/crash-1-1.open");
        QVERIFY(QFile::exists(m_dir.filePath("crash-null_call.report")));
    }

    void lists_data()
    {
        QTest::addColumn<QString>("answer"); // also of stderr, and the exit status unless it is 0
        row("zelctl crash list . | cut -c 26-",
            "SIGSEGV  complete  crasher  crash-null_call.report  -\n"
            "SIGABRT  complete  crasher  crash-exception.report  std::runtime_error: no milk\n");
        row("zelctl crash list bad 2>/dev/null | cut -c 26-",
            "SIGSEGV  incomplete  crasher  crash-cut.report   -\n"
            "-        unreadable  -        crash-text.report  cannot read bad/crash-text.report: "
            "it is not a crash report\n");
        row("zelctl crash list bad >/dev/null",
            "zelctl: cannot read bad/crash-text.report: it is not a crash report\nstatus 1\n");
        row("zelctl crash list none", "");
        row("zelctl crash list machine/crashes | cut -c 26- | sed 's/-[0-9]*-[0-9]*//'",
            "SIGSEGV  complete  crasher  crash.open  -\n");
        row("zelctl crash list . --json | grep -o '\"complete\":[^,]*,\"file\":\"[^\"]*'",
            "\"complete\":true,\"file\":\"crash-null_call.report\n"
            "\"complete\":true,\"file\":\"crash-exception.report\n");
    }
    void lists() { QTEST(run(QTest::currentDataTag()), "answer"); }

    void answers_data()
    {
        QTest::addColumn<QString>("answer");
        const QByteArray stack =
            "zelctl crash show crash-null_call.report %1 2>&1 | "
            "sed -n '/, crashed$/{n;p;n;s/ at .*crasher.cpp:.*//;s/+0x.*//;p}'";
        const QString top = "  #0  ? (0x0)\n  #1  ";
        for (const char* option : {"", "--symbols debug", "--symbols build"})
            row(QByteArray(stack).replace("%1", option), top + "crash_null_call\n");
        for (const char* option : {"--symbols none", "--symbols other"})
            row(QByteArray(stack).replace("%1", option), top + "? (crasher\n");
        row("zelctl crash show crash-null_call.report --symbols other | grep -c 'crasher (other "
            "build)$'",
            "1\n");
        row("PATH=/nowhere \"$0\" crash show crash-null_call.report --symbols debug >/dev/null",
            "zelctl: addr2line of binutils is missing, so calls have no names\n"
            "status 1\n");
        row("zelctl crash show crash-exception.report | sed -n '/^signal/p; /^reason/p; "
            "/^application/p; /, crashed$/s/ [0-9]*//p; /Last words/s/.*| //p; /water/p'",
            "signal       6 SIGABRT (code -6)\nreason       std::runtime_error: no milk\n"
            "application  4.2.1\nthread crasher, crashed\nLast words\n  water 17\n");
        row("zelctl crash show crash-null_call.report --json | grep -o '\"functions\":"
            "\\[\"crash_null_call'",
            "\"functions\":[\"crash_null_call\n");

        row("PATH=bin:$PATH; zelctl crash show bad/modules --symbols debug | grep -c "
            "crash_null_call; "
            "wc -l <asked",
            "3\n1\n");
        row("zelctl crash show bad/modules --json | grep -o '\"name\":\"[tx]\"' | wc -l", "4\n");
        row("zelctl crash show bad/modules --symbols debug32 2>&1 | grep -c debug32/any.debug",
            "3\n");
        row("zelctl crash show bad/crash-cut.report | sed -n 1p",
            "incomplete   the report is cut or damaged\n");
        row("zelctl crash show bad/escapes | grep 31m; zelctl crash show bad/escapes | tail -n 1",
            "program      /?[31m (process 0)\n  ?c\n");
        row("zelctl crash show bad/escapes | grep '#'", "  #0  ? (0x10)\n  #1  ? (0x1f)\n");
        const auto refused = [](const char* arguments, const char* message, int status) {
            row(QByteArray("zelctl crash ") + arguments,
                QString("zelctl: %1\nstatus %2\n").arg(message).arg(status));
        };
        refused("show bad/crash-text.report",
                "cannot read bad/crash-text.report: it is not a crash report", 1);
        refused("show bad/large", "cannot read bad/large: it is too large", 1);
        refused("show bad/pipe", "cannot read bad/pipe: it is not a file", 1);
        refused("show crash-null_call.report --symbols nowhere", "no folder nowhere", 1);
        refused("list nowhere", "no folder nowhere", 1);
        refused("list . --symbols .",
                "--symbols is only valid with show; see \"zelctl crash --help\"", 2);
    }
    void answers() { QTEST(run(QTest::currentDataTag()), "answer"); }

    void readsWhatItCan_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isComplete");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const QByteArray& text, bool isComplete,
                            const char* expected) {
            QTest::newRow(name) << text << isComplete << QString(expected);
        };
        row("fields and sections of a later version", "[process]\nx 1\npid 7\n[later]\ny\n", true,
            "7 0 []");
        row("a process with a negative number", "[process]\npid -7\n", false, "0 0 []");
        row("a process with a large number", "[process]\npid 4294967297\n", false, "0 0 []");
        row("an empty name of the crashed thread", "[stack 8  crashed]\n0x1\n", true,
            "0 0 [8::crashed:1]");
        row("a thread named as a crashed one", "[stack 8 A]\nno answer\n[stack 9 B crashed]\n0x1\n",
            true, "0 0 [8:A::0][9:B crashed::1]");
        row("a damaged address", "[stack 8 A]\n0x1\n1\n0xg\n0x10000000000000000\n0x2\n", false,
            "0 0 [8:A::2]");
        row("a stack without a thread", "[stack]\n0x1\n[stack A]\n0x1\n", false, "0 0 []");
        row("a module without a build id", "[modules]\n0x1 0x2 - /a b\n", true, "0 1 []");
        row("a module with a path as build id", "[modules]\n0x1 0x2 ../../x /a\n", false, "0 0 []");
        row("too many calls", "[stack 8 A]\n" + QByteArray("0x1\n").repeated(300), false,
            "0 0 [8:A::256]");
        row("too many modules", "[modules]\n" + QByteArray("0x1 0x2 - a\n").repeated(5000), false,
            "0 4096 []");
    }
    void readsWhatItCan()
    {
        QFETCH(QByteArray, text);
        QString error;
        const auto report =
            CrashReport::parse("ZelTools crash report 1\n" + text + "[end]\n", error);
        QVERIFY2(report, qPrintable(error));
        QTEST(report->isComplete, "isComplete");
        QString found;
        for (const CrashReport::Stack& stack : report->stacks)
            found +=
                QString("[%1:%2:%3:%4]")
                    .arg(QString::number(stack.thread), stack.name,
                         stack.hasCrashed ? "crashed" : "", QString::number(stack.calls.size()));
        found = QString("%1 %2 %3")
                    .arg(report->process)
                    .arg(report->modules.size())
                    .arg(found.isEmpty() ? "[]" : found);
        QTEST(found, "expected");
    }

    void readsWhatALossOfPowerLeft()
    {
        const QByteArray whole = support::readFile(m_dir.filePath("crash-null_call.report"));
        QString error;
        for (int size = 0; size < whole.size(); size += 7) {
            const QByteArray cut = whole.left(size) + QByteArray(100, '\0');
            const auto report = CrashReport::parse(cut, error);
            QCOMPARE(report.has_value(), size > 23); // the first line
            QVERIFY(!report || (!report->isComplete && report->log.size() <= 200));
        }
        QVERIFY(CrashReport::parse(whole + QByteArray(100, '\0'), error)->isComplete);
        const QByteArray lostBlock =
            QByteArray(whole).replace(whole.size() / 2, 9, QByteArray(9, '\0'));
        QVERIFY(!CrashReport::parse(lostBlock, error)->isComplete);
    }
};

QTEST_GUILESS_MAIN(TestZelctlCrash)
#include "tst_zelctl_crash.moc"
