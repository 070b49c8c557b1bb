#include "dmesg/dmesg.h"
#include "dmesg/kmsgreader.h"
#include "support.h"
#include "support/machines.h"
#include "support/rows.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>

using namespace dmesg;
using namespace std::chrono_literals;

using RestartRow = std::tuple<const char*, System::Command, const char*>;
using ReplayRow = std::tuple<const char*, QString, QString, bool>;
using ParseRow = std::tuple<const char*, QByteArray, QString>;
using Process = support::Opened<DmesgProcess>;

/// The restart of a capture that ends, and reading without dmesg.
class TestKernelLog : public QObject
{
    Q_OBJECT

    support::TemporaryLayout m_layout;
    support::LineRecorder m_recorder;
    QTemporaryDir m_dir;

    /// The warnings, shortened; other lines are left out.
    QString takeWarnings()
    {
        QStringList warnings;
        for (const support::LineRecorder::Line& line : m_recorder.take()) {
            if (line.level == LogLevel::Warning)
                warnings.append(line.message);
        }
        return warnings.join('|').remove("The kernel log is not followed: ");
    }
    /// A shell script that knows by $n how often it has been started.
    System::Command script(const QString& text)
    {
        QFile::remove(m_dir.filePath("count"));
        return {"/bin/sh", {"-c", "echo >>count; n=$(wc -l <count); " + text, "sh"}};
    }
    static std::vector<KmsgReader::Result> readAll(KmsgReader& reader, QStringList& texts)
    {
        std::vector<KmsgReader::Result> results;
        KmsgRecord record;
        do {
            results.push_back(reader.next(record));
            if (results.back() == KmsgReader::Result::Record)
                texts.append(QString("%1+%2 %3")
                                 .arg(record.sequence)
                                 .arg(record.overwritten)
                                 .arg(record.printableText()));
        } while (results.back() <= KmsgReader::Result::Malformed);
        return results;
    }
    /// Opened for both, a FIFO has a writer as long as the descriptor is open.
    int makeFifo()
    {
        QFile::remove(m_dir.filePath("kmsg"));
        const QByteArray path = m_dir.filePath("kmsg").toLocal8Bit();
        return ::mkfifo(path, 0600) == 0 ? ::open(path, O_RDWR | O_CLOEXEC) : -1;
    }
    static QByteArray newMark()
    {
        return "zeltools test " + QByteArray::number(QDateTime::currentMSecsSinceEpoch());
    }
    /// Without the line feed the kernel would wait for the rest of the record.
    static bool writeToKernel(const QByteArray& text)
    {
        QFile kernel("/dev/kmsg");
        return kernel.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
               kernel.write(text + '\n') > 0;
    }
    static bool write(int file, const QByteArray& bytes)
    {
        return ::write(file, bytes, size_t(bytes.size())) == bytes.size();
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(QDir::setCurrent(m_dir.path())); }
    void init() { m_recorder.take(); }

    void restarts_data()
    {
        const char* delays = "0.015 0.03 0.06 0.12 0.24 0.48 0.9 0.9";
        support::addRows<RestartRow>(
            {{"exit code 3", script("exit 3"), delays},
             {"ended by signal 9", script("kill -9 $$"), "0.015 0.03"},
             {"No such file or directory", {"/nowhere", {}}, "0.015 0.03"},
             {"exit code 4",
              script("[ $n != 3 ] || sleep 1.2; [ $n = 5 ] && exec sleep 300; exit 4"),
              "0.015 0.03 0.015 0.03"}});
    }
    void restarts()
    {
        const auto& [reason, command, delays] = support::currentRow<RestartRow>();
        QFile::remove("count");
        Process process(500ms, 15ms);
        process.setCommand(command);
        process.setRestarting(true);
        process.start();
        QString all, found;
        const QRegularExpression number("next attempt in ([\\d.]+) s");
        QTRY_VERIFY_WITH_TIMEOUT(
            (all += takeWarnings()).count(number) >= QString(delays).count(' ') + 1, 30000);
        QVERIFY(process.isRunning()); // also while it waits for the next attempt
        process.stop();
        QVERIFY(!process.isRunning());
        const QByteArray starts = support::readFile("count");
        QTest::qWait(400);
        QCOMPARE(support::readFile("count"), starts);
        QCOMPARE(all.count(reason), all.count(number));
        for (auto matches = number.globalMatch(all); matches.hasNext();)
            found += matches.next().captured(1) + ' ';
        QVERIFY2(found.startsWith(delays), qPrintable(all));
    }

    void repeatsNoLine_data()
    {
        QString oldLog, log; // longer than what is remembered
        for (int i = 0; i < 3000; ++i)
            (i < 2000 ? oldLog : log) += QString("%1[%2] x").arg(i % 2000 ? "|" : "").arg(i / 2);
        log = oldLog + '|' + log;
        support::addRows<ReplayRow>(
            {{"the same again and more", "[1] a|[2] b;[1] a|[2] b|[3] c", "[1] a|[2] b|[3] c",
              false},
             {"nothing new", "[1] a|[2] b;[1] a|[2] b", "[1] a|[2] b", false},
             {"its beginning is overwritten", "[1] a|[2] b;[2] b|[3] c", "[1] a|[2] b|[3] c",
              false},
             {"the same text again", "[1] a|[2] b;[1] a|[2] b|[3] a|[4] b",
              "[1] a|[2] b|[3] a|[4] b", false},
             {"the clock was set", "[1] a|[2] b;[8] a|[9] b|[9] a|[9] b", "[1] a|[2] b|[9] a|[9] b",
              false},
             {"one stamp has changed", "[1] a|[2] b;[1] a|[3] b|[3] c", "[1] a|[2] b|[3] c", false},
             {"all is overwritten", "[1] a|[2] b;[3] c|[4] d", "[1] a|[2] b|[3] c|[4] d", true},
             {"ends while it repeats", "[1] a|[2] b|[3] c;[1] a|[2] b;[2] b|[3] c|[4] d",
              "[1] a|[2] b|[3] c|[4] d", false},
             {"it never pauses", "[1] a|[2] b;[1] a|[2] b|[3] c", "[1] a|[2] b|[3] c", false},
             {"a long log", oldLog + ';' + log, log, false}});
    }
    void repeatsNoLine()
    {
        const auto& [name, runs, expected, hasGap] = support::currentRow<ReplayRow>();
        const QStringList outputs = runs.split(';');
        for (int i = 0; i < outputs.size(); ++i)
            support::writeFile(QString("run%1").arg(i + 1),
                               QString(outputs[i]).replace('|', '\n').toUtf8() + '\n');
        Process process(500ms, 5ms);
        QMutex mutex;
        QString lines;
        connect(&process, &DmesgProcess::newLines, [&](const QStringList& newLines) {
            const QMutexLocker locker(&mutex);
            for (const QString& line : newLines)
                lines += line.isEmpty() ? line : '|' + line;
        });
        const auto received = [&] {
            const QMutexLocker locker(&mutex);
            return lines.mid(1);
        };
        const bool isChatty = QString(name) == "it never pauses";
        process.setCommand(
            script(QString("cat run$n; [ $n != %1 ] || %2")
                       .arg(QString::number(outputs.size()),
                            isChatty ? "while echo; do sleep 0.2; done" : "exec sleep 300")));
        process.setRestarting(true);
        process.start();
        QTRY_COMPARE(support::readFile("count").size(), int(outputs.size()));
        QTest::qWait(800);
        QTRY_COMPARE_WITH_TIMEOUT(received(), expected, 8000);
        QCOMPARE(takeWarnings().contains("lines may be missing"), hasGap);
    }

    void parses_data()
    {
        support::addRows<ParseRow>(
            {{"a plain record", "6,339,5140900,-;NET: ready", "kern info 339 5140900 NET: ready"},
             {"fields", "30,3,1,-;a\n SUBSYSTEM=acpi\n DEVICE=\\x2bx\n=\n",
              "daemon info 3 1 a DEVICE=+x SUBSYSTEM=acpi"},
             {"more values", "191,3,1,c,caller=T1,x;a;b", "local7 debug 3 1 a;b"},
             {"escapes", "0,0,0,-;\\x1b[m\\x09\\x5cx09 caf\\xc3\\xa9 \\xff\\xg\\x",
              "kern emerg 0 0 \\x1b[m\t\\x09 café \\xff\\xg\\x"},
             {"raw bytes", QByteArray("0,0,0,-;\xEF\xBB\xBF\xC3|\x00|\xC2\x9B", 17),
              "kern emerg 0 0 \\xef\\xbb\\xbf\\xc3|\\x00|\\xc2\\x9b"},
             {"no facility of that number", "4294967295,18446744073709551615,0;",
              "536870911 debug 18446744073709551615 0 "},
             {"a number too large", "4294967296,1,1,-;a", ""},
             {"a time too large", "6,1,9223372036854775807,-;a", ""},
             {"no semicolon", "6,1,1,-", ""},
             {"a semicolon in the next line", "6,1,1,-\n ;", ""},
             {"a sign", "6,1,-1,-;a", ""},
             {"no time", "6,1,,-;a", ""},
             {"another separator", "6,1,1x,-;a", ""},
             {"nothing", "", ""}});
    }
    void parses()
    {
        const auto& [name, bytes, expected] = support::currentRow<ParseRow>();
        const std::optional<KmsgRecord> record = KmsgRecord::parse(bytes);
        QString found;
        if (record) {
            found = QString("%1 %2 %3 %4 %5")
                        .arg(KmsgRecord::facilityName(record->facility),
                             KmsgRecord::levelName(record->level))
                        .arg(record->sequence)
                        .arg(record->sinceBoot.count())
                        .arg(record->printableText());
            for (auto field = record->fields.begin(); field != record->fields.end(); ++field)
                found += ' ' + field.key() + '=' + field.value();
        }
        QCOMPARE(found, expected);
    }

    void readsHostileRecords()
    {
        using Result = KmsgReader::Result;
        const int fifo = makeFifo();
        const std::vector<Result> found{Result::Record, Result::Record, Result::Nothing};
        KmsgReader reader("kmsg");
        QCOMPARE(reader.open(), "");
        QStringList texts;
        const QByteArray field(16 * 1024 - 14, 'x'); // ends with the first read
        QVERIFY(write(fifo, "6,5,1,-;a\n P=" + field + "\n X=y\n6,6,1,-;b\n6,9,1,-;c"));
        QCOMPARE(readAll(reader, texts), found);
        QVERIFY(write(fifo, "c\n6,2,1,-;after a step back\n"));
        QCOMPARE(readAll(reader, texts), found);
        QVERIFY(write(fifo, "garbage\n"));
        QCOMPARE(readAll(reader, texts).front(), Result::Malformed);
        for (int i = 0; i < 2 * KmsgReader::longestRecord_B; i += 4096) {
            QVERIFY(write(fifo, QByteArray(4096, '\0')));
            readAll(reader, texts);
        }
        QVERIFY(write(fifo, "\n6,4,1,-;d\n"));
        QCOMPARE(readAll(reader, texts).back(), Result::Nothing);
        // Opened again, it skips what it has returned.
        QCOMPARE(reader.open(), "");
        QVERIFY(write(fifo, "6,3,1,-;old\n6,4,1,-;d\n6,6,1,-;e\n"));
        ::close(fifo);
        QCOMPARE(readAll(reader, texts).back(), Result::Ended);
        QCOMPARE(texts.join('|'), "5+0 a|6+0 b|9+2 cc|2+0 after a step back|4+1 d|6+1 e");
        QCOMPARE(KmsgReader("nowhere").open(), "cannot read nowhere: No such file or directory");
        KmsgReader folder(".");
        QCOMPARE(folder.open(), "");
        KmsgRecord record;
        QCOMPARE(folder.next(record), Result::Failed);
        QCOMPARE(folder.error(), "cannot read .: Is a directory");
    }

    // Where the programs are missing, the capture reads the records; if that ends, it begins anew.
    void capturesWithoutDmesg()
    {
        const support::EnvironmentGuard path("PATH", m_dir.path().toUtf8());
        zeltools::Machine machine = support::machine(true);
        machine.kernelMessageFile = m_dir.filePath("kmsg");
        int fifo = makeFifo();
        support::Opened<Dmesg> capture(machine);
        capture.setSource(Dmesg::Automatic);
        capture.setRestarting(true);
        capture.start();
        QVERIFY(write(fifo, "6,5,0,-;a\\x0ab \n12,6,0,-;c\n"));
        QTRY_COMPARE(capture.lines().size(), 3);
        ::close(fifo);
        QString warnings;
        QTRY_COMPARE((warnings += takeWarnings()), "the file has ended; next attempt in 1 s");
        fifo = makeFifo();
        QVERIFY(write(fifo, "6,6,0,-;c\n6,9,0,-;d\n%\n"));
        QTRY_COMPARE(capture.lines().size(), 4);
        QCOMPARE(takeWarnings(), "The kernel log has malformed records, which are skipped|The "
                                 "kernel has overwritten 2 records before they were read");
        const QRegularExpression stamp(
            "\\[\\w{3} \\w{3} [ \\d]\\d \\d\\d:\\d\\d:\\d\\d \\d{4}\\] ");
        QCOMPARE(capture.linesToString(0, Dmesg::OlderFirst).replace(stamp, ">"), ">a\nb\n>c\n>d");
        ::close(fifo);
    }

    void readsTheKernelAsDmesgDoes()
    {
        const QByteArray mark = newMark(), text = mark + " \x1b \xc3\xa9 \\\nsecond " + mark;
        KmsgReader reader;
        if (!writeToKernel("<14>" + text) || !reader.open().isEmpty())
            QSKIP("The kernel log is not open to this process", SkipSingle);
        const qint64 now_ms = QDateTime::currentMSecsSinceEpoch();
        QStringList lines;
        KmsgRecord record;
        while (record.text != text) {
            QCOMPARE(reader.next(record), KmsgReader::Result::Record);
            lines += record.lines();
        }
        QCOMPARE(KmsgRecord::facilityName(record.facility), "user");
        QCOMPARE(KmsgRecord::levelName(record.level), "info");
        QVERIFY(qAbs(record.time.count() - now_ms) < 2000);
        QProcess dmesg;
        dmesg.start("/bin/sh", {"-c", "LC_ALL=C.UTF-8 dmesg --ctime | sed 's/^ *//'"});
        QVERIFY(dmesg.waitForFinished());
        QStringList printed = QString(dmesg.readAll()).split('\n');
        printed = printed.mid(0, printed.indexOf("second " + mark) + 1);
        // dmesg omits the fractions of a second before it adds, so that its times may be earlier.
        const QRegularExpression timeOrBlanks("^\\[[^\\]]*\\] | +$");
        for (QStringList* list : {&lines, &printed})
            list->replaceInStrings(timeOrBlanks, "");
        const int count = qMin(1000, qMin(lines.size(), printed.size()));
        QVERIFY(count >= 2);
        QCOMPARE(lines.mid(lines.size() - count), printed.mid(printed.size() - count));
    }

    void restartsDmesg()
    {
        const QByteArray mark = newMark();
        if (!writeToKernel(mark) || !KmsgReader().open().isEmpty())
            QSKIP("The kernel log is not open to this process", SkipSingle);
        Process process(500ms, 5ms);
        QStringList lines;
        connect(&process, &DmesgProcess::newLines,
                [&](const QStringList& newLines) { lines += newLines; });
        process.setCommand({"timeout", {"1", "dmesg", "--follow", "--ctime"}});
        process.setRestarting(true);
        process.start();
        QTest::qWait(1500);
        QVERIFY(writeToKernel("second " + mark));
        QTest::qWait(2500);
        process.stop();
        QVERIFY(takeWarnings().count("exit code 124") > 1);
        QCOMPARE(lines.filter(mark).size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestKernelLog)
#include "tst_kernellog.moc"
