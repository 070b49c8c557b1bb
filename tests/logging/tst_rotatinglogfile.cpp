#include "logging/rotatinglogfile.h"
#include "support.h"
#include "windowstools.h"
#include <zeltools/platform.h>

#include <QtTest>

#include <sys/stat.h>

using support::readFile;
using support::writeFile;

namespace
{

constexpr double bytes(int count)
{
    return count / 1024.0 / 1024.0;
}

/// A rotating file in a folder of its own, 10 bytes large.
struct Fixture
{
    explicit Fixture(int predecessors, bool compressed = false)
        : log({2.5F, predecessors, compressed})
    {
        log.setPrimaryFilename(path(0));
        log.setMaximumSizeMiB(bytes(10));
        log.file.open(QIODevice::Append);
    }
    QString path(int index) const
    {
        const QString primary = folder.filePath("zel.log");
        return index == 0 ? primary : primary + '.' + QString::number(index);
    }
    /// "zel.log=abc zel.log.1=..." for all files, sorted by name.
    QString content() const
    {
        QStringList files;
        for (const QString& name : QDir(folder.path()).entryList(QDir::Files, QDir::Name))
            files.append(name + '=' + QString::fromUtf8(readFile(folder.filePath(name))));
        return files.join(' ');
    }

    QTemporaryDir folder;
    RotatingLogFile log;
};

} // namespace

class TestRotatingLogFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names()
    {
        Fixture f(2);
        const RotatingLogFile& log = f.log;
        QCOMPARE(RotatingLogFile({1.5F, 2, false}).maximumSize_B(), qint64(1572864));
        QCOMPARE(log.filename(-1), QString());
        QCOMPARE(log.filenames(RotatingLogFile::OldestFirst),
                 QStringList({f.path(2), f.path(1), f.path(0)}));
        QCOMPARE(f.log.deletedFilenames(RotatingLogFile::NewestFirst)[2],
                 f.folder.filePath("zel_deleted.log.2"));
        support::LineRecorder recorder;
        QVERIFY(!f.log.setPrimaryFilename("other"));
        QCOMPARE(log.primaryFilename(), f.path(0));
        QCOMPARE(recorder.takeMessages(),
                 QStringList("bool RotatingLogFile::setPrimaryFilename(const QString&) File is "
                             "already opened !"));
        f.log.setSecondaryFilesCount(-1);
        QCOMPARE(log.filenames(RotatingLogFile::NewestFirst), QStringList());
        QCOMPARE(f.log.write("x", -1), qint64(-1));
        QCOMPARE(RotatingLogFile({1, 2, false}).write("x"), qint64(-1));
    }

    void rotation_data()
    {
        QTest::addColumn<int>("predecessors");
        QTest::addColumn<QStringList>("writes");
        QTest::addColumn<QString>("content");
        const auto row = [](const char* name, int count, const QStringList& writes,
                            const char* content) {
            QTest::newRow(name) << count << writes << content;
        };
        row("the limit itself does not rotate", 1, {"aaaaa", "bbbbb"}, "zel.log=aaaaabbbbb");
        row("one byte more does, before the write", 1, {"aaaaa", "bbbbb", "c"},
            "zel.log=c zel.log.1=aaaaabbbbb");
        row("the oldest goes, a long line gets a file of its own", 1,
            {"aaaaaaaaaa", "b", "eeeeeeeeeeeeee", "f"}, "zel.log=f zel.log.1=eeeeeeeeeeeeee");
        row("three predecessors move up", 3,
            {"aaaaaaaaaa", "bbbbbbbbbb", "cccccccccc", "dddddddddd", "e"},
            "zel.log=e zel.log.1=dddddddddd zel.log.2=cccccccccc zel.log.3=bbbbbbbbbb");
        row("without predecessors the file grows", 0, {"aaaaaaaaaa", "b"}, "zel.log=aaaaaaaaaab");
    }
    void rotation()
    {
        QFETCH(int, predecessors);
        QFETCH(QStringList, writes);
        Fixture f(predecessors);
        for (const QString& text : writes)
            QCOMPARE(f.log.write(text.toUtf8()), qint64(text.size()));
        QTEST(f.content(), "content");
        QVERIFY(f.log.dataWritten());
        f.log.sync();
        QVERIFY(!f.log.dataWritten());
    }

    void aGapMovesUp()
    {
        Fixture f(3);
        writeFile(f.path(0), "0");
        writeFile(f.path(2), "2");
        writeFile(f.path(3), "3");
        f.log.write("1234567890");
        QCOMPARE(f.content(), "zel.log=1234567890 zel.log.1=0 zel.log.3=2");
    }

    void theSizeAtOpeningCounts()
    {
        Fixture f(1);
        f.log.write("12345");
        f.log.file.close();
        QCOMPARE(f.log.write("lost"), qint64(-1));
        writeFile(f.path(0), "1234567");
        QVERIFY(f.log.file.open(QIODevice::Append));
        f.log.file.write("8"); // which QFile holds back
        f.log.write("abc");
        QCOMPARE(f.content(), "zel.log=abc zel.log.1=12345678");
    }

    void aFileCutFromOutsideDoesNotRotate()
    {
        Fixture f(1);
        f.log.write("123456789");
        QVERIFY(QFile::resize(f.path(0), 0));
        f.log.write("abcdefgh");
        QCOMPARE(f.content(), "zel.log=abcdefgh");
    }

    void aFileThatWasTakenAwayIsMadeAgain_data()
    {
        QTest::addColumn<bool>("isFifo");
        QTest::newRow("removed") << false;
        QTest::newRow("a FIFO that nobody reads in its place") << true;
    }
    void aFileThatWasTakenAwayIsMadeAgain()
    {
        QFETCH(bool, isFifo);
        Fixture f(1);
        f.log.write("lost");
        QVERIFY(f.log.deleteFileByName(f.path(0)));
        QVERIFY(!f.log.deleteFileByName(f.path(0)));
        if (isFifo) {
            QCOMPARE(mkfifo(QFile::encodeName(f.path(0)).constData(), 0600), 0);
            QTest::qSleep(150);
            QCOMPARE(f.log.write("lost\n"), qint64(5));
            f.log.endHalfLine();
            QCOMPARE(f.log.totalContent(RotatingLogFile::NewestFirst), "\n\n");
            f.log.file.close();
            QVERIFY(!f.log.file.open(QIODevice::Append));
            QFile::remove(f.path(0));
            QVERIFY(f.log.file.open(QIODevice::Append));
        }
        QTRY_VERIFY(f.log.write("a\n") == 2 && QFile::exists(f.path(0)));
    }

    void onlyTheFirstWriterRotates()
    {
        Fixture f(1);
        RotatingLogFile second({bytes(10), 1, false});
        second.setPrimaryFilename(f.path(0));
        second.file.open(QIODevice::Append);
        support::LineRecorder recorder;
        f.log.write("aaaaaaaa");
        second.write("bbbbbb");
        second.write("c");
        QCOMPARE(f.content(), "zel.log=aaaaaaaabbbbbbc");
        QCOMPARE(recorder.takeMessages().size(), 1);
        QTest::qSleep(150);
        f.log.write("d");
        second.write("e");
        QCOMPARE(f.content(), "zel.log=de zel.log.1=aaaaaaaabbbbbbc");
        f.log.file.close();
        QTest::qSleep(150);
        second.write("ffffffffff");
        QCOMPARE(f.content(), "zel.log=ffffffffff zel.log.1=de");
    }

    void aHalfLineIsEnded()
    {
        Fixture f(1);
        f.log.endHalfLine();
        f.log.write("half");
        f.log.endHalfLine();
        f.log.write("new\n");
        f.log.write("x");
        f.log.endHalfLine();
        f.log.write("\n"); // with the feed it needs, one byte more than there is room for
        QCOMPARE(f.content(), "zel.log=\n zel.log.1=half\nnew\nx");
    }

    void deletion_data()
    {
        QTest::addColumn<bool>("kept");
        QTest::addColumn<QString>("content");
        QTest::newRow("gone") << false << "zel.log=new";
        QTest::newRow("kept for one generation")
            << true << "zel.log=new zel_deleted.log=b zel_deleted.log.1=1234567890";
    }
    void deletion()
    {
        QFETCH(bool, kept);
        Fixture f(1);
        f.log.enableDeletedFilesStorage(kept);
        f.log.write("first generation");
        f.log.deleteFile();
        f.log.write("1234567890");
        f.log.write("b");
        f.log.deleteFile();
        f.log.write("new");
        QTEST(f.content(), "content");
    }

    void lines_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const auto row = [](const char* name, const QByteArray& bytes, const QStringList& lines) {
            QTest::newRow(name) << bytes << lines;
        };
        const QByteArray megabyte(1 << 20, 'x');
        row("feeds and NULs are one break", QByteArray("a\n\n\0\0b\n", 7), {"a", "b"});
        row("an empty file is one empty line", "", {""});
        row("a NUL run in front is no white space", QByteArray("\0\0a\nb", 5), {"", "a", "b"});
        row("a long line stays whole", "a\n" + megabyte + "\nb\n", {"a", megabyte, "b"});
        row("bad UTF-8 spoils its own line only", "a\n\xff\nb\n", {"a", "\ufffd", "b"});
    }
    void lines()
    {
        QFETCH(QByteArray, bytes);
        Fixture f(0);
        writeFile(f.path(0), bytes);
        QTEST(RotatingLogFile::getLogLines(f.path(0)), "lines");
        QCOMPARE(RotatingLogFile::getLogLines(f.path(7)), QStringList());
    }

    void contentAndPages()
    {
        Fixture f(2);
        writeFile(f.path(0), "c\nd\n");
        writeFile(f.path(2), "a\nb\n");
        using L = RotatingLogFile;
        QCOMPARE(f.log.totalContent(L::NewestFirst), "d\nc\n\nb\na\n");
        QCOMPARE(f.log.totalContent(L::OldestFirst), "c\nd\n\na\nb\n");
        QCOMPARE(f.log.pageContent(0, 0, L::NewestFirst), "d");
        QCOMPARE(f.log.pageContent(1, 2, L::NewestFirst), "c\nb");
        QCOMPARE(f.log.pageContent(3, 9, L::OldestFirst), "b");
        QCOMPARE(f.log.pageContent(4, 9, L::OldestFirst), QString());
        QCOMPARE(f.log.pageContent(2, 1, L::OldestFirst), QString());
        f.log.file.close();
        QCOMPARE(f.log.totalContent(L::NewestFirst), QString());
    }

    void compression()
    {
        Fixture f(1);
        const QString source = f.folder.filePath("it's.log");
        writeFile(source, "packed");
        support::LineRecorder recorder;
        RotatingLogFile::compressFile(source, &f.log);
        QVERIFY(!QFile::exists(source));
        QVERIFY(WindowsTools::runCommand("tar -xzf zel.log.1.tar.gz", f.folder.path()));
        QCOMPARE(readFile(source), QByteArray("packed"));

        QSignalSpy completed(&f.log, &RotatingLogFile::workCompleted);
        recorder.take();
        RotatingLogFile::compressFile("/nowhere/x", &f.log);
        QCOMPARE(completed.value(0).value(0).toString(), QString());
        QVERIFY(QFile::exists(f.path(1) + ".tar.gz")); // the one before
        QVERIFY(!QFile::exists(f.path(1) + ".tar.gz.part"));
        QVERIFY(recorder.takeMessages().last().endsWith(
            QStringLiteral("RotatingLogFile*) Failed to compress  \"/nowhere/x\"")));
        Q_EMIT f.log.workCompleted("/nowhere/x");
        QCOMPARE(recorder.takeMessages().last(),
                 QStringLiteral("void RotatingLogFile::onWorkCompleted(const QString&) Failed to "
                                "delete file after compression \"/nowhere/x\""));
    }

    // On the desktop the primary of a compressed file just grows; on the board every line ends up
    // in an archive, whatever the pace of the packing.
    void compressedRotation()
    {
        Fixture f(9, true);
        QStringList expected;
        for (int i = 0; i < 5; ++i) {
            const QByteArray line = "line " + QByteArray::number(i) + "...\n";
            expected.append(QString::fromUtf8(line).trimmed());
            f.log.write(line);
            while (platform::isBoard && QFile::exists(f.path(1)))
                QThread::msleep(1); // without an event loop
        }
        const int archives = QDir(f.folder.path()).entryList({"*.tar.gz"}).size();
        QCOMPARE(archives, platform::isBoard ? 4 : 0);
        QStringList found;
        for (int i = archives; i > 0; --i) {
            QVERIFY(WindowsTools::runCommand(QString("tar -xzf zel.log.%1.tar.gz").arg(i),
                                             f.folder.path()));
            found += RotatingLogFile::getLogLines(f.path(1));
        }
        QCOMPARE(found + RotatingLogFile::getLogLines(f.path(0)), expected);
    }
};

QTEST_GUILESS_MAIN(TestRotatingLogFile)
#include "tst_rotatinglogfile.moc"
