#include "logging/rotatinglogfile.h"
#include "platform.h"
#include "support.h"
#include "windowstools.h"

#include <QtTest>

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
        const QString primary = folder.filePath(QStringLiteral("zel.log"));
        return index == 0 ? primary : primary + QLatin1Char('.') + QString::number(index);
    }
    /// "zel.log=abc zel.log.1=..." for all files, sorted by name.
    QString content() const
    {
        QStringList files;
        for (const QString& name : QDir(folder.path()).entryList(QDir::Files, QDir::Name))
            files.append(name + QLatin1Char('=') +
                         QString::fromUtf8(readFile(folder.filePath(name))));
        return files.join(QLatin1Char(' '));
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
        RotatingLogFile log({1.5F, 2, false});
        QCOMPARE(log.maximumSize_B(), qint64(1572864));
        QCOMPARE(log.filename(0), QString());
        QVERIFY(!log.isReady());
        QCOMPARE(log.write("x"), qint64(-1));
        QVERIFY(log.setPrimaryFilename(QStringLiteral("/tmp/zel.log")));
        QCOMPARE(log.filename(-1), QString());
        QCOMPARE(log.filenames(RotatingLogFile::OldestFirst),
                 QStringList({QStringLiteral("/tmp/zel.log.2"), QStringLiteral("/tmp/zel.log.1"),
                              QStringLiteral("/tmp/zel.log")}));
        QCOMPARE(log.deletedFilenames(RotatingLogFile::NewestFirst).at(2),
                 QStringLiteral("/tmp/zel_deleted.log.2"));
        log.setSecondaryFilesCount(-1);
        QCOMPARE(log.filenames(RotatingLogFile::NewestFirst), QStringList());
    }

    void theNameOfAnOpenFileStays()
    {
        Fixture f(1);
        support::LineRecorder recorder;
        QVERIFY(!f.log.setPrimaryFilename(QStringLiteral("other")));
        QCOMPARE(f.log.primaryFilename(), f.path(0));
        QCOMPARE(recorder.takeMessages(),
                 QStringList(QStringLiteral("bool RotatingLogFile::setPrimaryFilename(const "
                                            "QString&) File is already opened !")));
    }

    void rotation_data()
    {
        QTest::addColumn<int>("predecessors");
        QTest::addColumn<QStringList>("writes");
        QTest::addColumn<QString>("content");
        const QStringList words{
            QStringLiteral("aaaaa"),     QStringLiteral("bbbbb"),          QStringLiteral("c"),
            QStringLiteral("ddddddddd"), QStringLiteral("eeeeeeeeeeeeee"), QStringLiteral("f")};
        QTest::newRow("the limit itself does not rotate")
            << 1 << QStringList(words.mid(0, 2)) << QStringLiteral("zel.log=aaaaabbbbb");
        QTest::newRow("one byte more does, before the write")
            << 1 << QStringList(words.mid(0, 3))
            << QStringLiteral("zel.log=c zel.log.1=aaaaabbbbb");
        QTest::newRow("the oldest goes, a long line gets a file of its own")
            << 1 << words << QStringLiteral("zel.log=f zel.log.1=eeeeeeeeeeeeee");
        QTest::newRow("three predecessors move up")
            << 3 << words
            << QStringLiteral("zel.log=f zel.log.1=eeeeeeeeeeeeee zel.log.2=cddddddddd "
                              "zel.log.3=aaaaabbbbb");
        QTest::newRow("without predecessors the file grows")
            << 0 << QStringList(words.mid(0, 4)) << QStringLiteral("zel.log=aaaaabbbbbcddddddddd");
    }
    void rotation()
    {
        QFETCH(int, predecessors);
        QFETCH(QStringList, writes);
        QFETCH(QString, content);
        Fixture f(predecessors);
        for (const QString& text : writes)
            QCOMPARE(f.log.write(text.toUtf8()), qint64(text.size()));
        QCOMPARE(f.content(), content);
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
        QCOMPARE(f.content(), QStringLiteral("zel.log=1234567890 zel.log.1=0 zel.log.3=2"));
    }

    void theSizeAtOpeningCounts()
    {
        Fixture f(1);
        f.log.write("12345");
        f.log.file.close();
        QCOMPARE(f.log.write("lost"), qint64(-1));
        writeFile(f.path(0), "12345678");
        QVERIFY(f.log.file.open(QIODevice::Append));
        f.log.write("abc");
        QCOMPARE(f.content(), QStringLiteral("zel.log=abc zel.log.1=12345678"));
    }

    void aFileCutFromOutsideDoesNotRotate()
    {
        Fixture f(1);
        f.log.write("123456789");
        QVERIFY(QFile::resize(f.path(0), 0));
        f.log.write("abcdefgh");
        QCOMPARE(f.content(), QStringLiteral("zel.log=abcdefgh"));
    }

    void aRemovedFileIsMadeAgain()
    {
        Fixture f(1);
        f.log.write("lost");
        QVERIFY(f.log.deleteFileByName(f.path(0)));
        QVERIFY(!f.log.deleteFileByName(f.path(0)));
        QTRY_VERIFY(f.log.write("a\n") == 2 && QFile::exists(f.path(0)));
    }

    void aHalfLineIsEnded()
    {
        Fixture f(1);
        f.log.endHalfLine();
        f.log.write("half");
        f.log.endHalfLine();
        f.log.endHalfLine();
        f.log.write("new\n");
        QCOMPARE(f.content(), QStringLiteral("zel.log=half\nnew\n"));
        f.log.write("x");
        f.log.endHalfLine();
        f.log.write("\n"); // with the feed it needs, one byte more than there is room for
        QCOMPARE(f.content(), QStringLiteral("zel.log=\n zel.log.1=half\nnew\nx"));
        f.log.write("x");
        f.log.endHalfLine();
        f.log.file.close();
        writeFile(f.path(0), "");
        f.log.file.open(QIODevice::Append);
        f.log.endHalfLine();
        f.log.write("first\n");
        QCOMPARE(readFile(f.path(0)), QByteArray("first\n"));
    }

    void deletion_data()
    {
        QTest::addColumn<bool>("kept");
        QTest::addColumn<QString>("content");
        QTest::newRow("gone") << false << QStringLiteral("zel.log=new");
        QTest::newRow("kept for one generation")
            << true << QStringLiteral("zel.log=new zel_deleted.log=b zel_deleted.log.1=1234567890");
    }
    void deletion()
    {
        QFETCH(bool, kept);
        QFETCH(QString, content);
        Fixture f(1);
        f.log.enableDeletedFilesStorage(kept);
        f.log.write("first generation");
        f.log.deleteFile();
        f.log.write("1234567890");
        f.log.write("b");
        f.log.deleteFile();
        f.log.write("new");
        QCOMPARE(f.content(), content);
    }

    void lines_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const QString a = QStringLiteral("a");
        const QString b = QStringLiteral("b");
        const QByteArray megabyte(1 << 20, 'x');
        QTest::newRow("feeds and NULs are one break")
            << QByteArray("a\n\n\0\0b\n", 7) << QStringList({a, b});
        QTest::newRow("an empty file is one empty line") << QByteArray() << QStringList(QString());
        QTest::newRow("a NUL run in front is no white space")
            << QByteArray("\0\0a\nb", 5) << QStringList({QString(), a, b});
        QTest::newRow("a half line counts") << QByteArray("a\nb") << QStringList({a, b});
        QTest::newRow("a long line stays whole")
            << "a\n" + megabyte + "\nb\n"
            << QStringList({a, QString::fromLatin1(megabyte), b});
        QTest::newRow("bad UTF-8 spoils its own line only")
            << QByteArray("a\n\xff\xc3\nb\n")
            << QStringList({a, QString(2, QChar(QChar::ReplacementCharacter)), b});
    }
    void lines()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        Fixture f(0);
        writeFile(f.path(0), bytes);
        QCOMPARE(RotatingLogFile::getLogLines(f.path(0)), lines);
        QCOMPARE(RotatingLogFile::getLogLines(f.path(7)), QStringList());
    }

    void contentAndPages()
    {
        Fixture f(2);
        writeFile(f.path(0), "c\nd\n");
        writeFile(f.path(2), "a\nb\n");
        using L = RotatingLogFile;
        QCOMPARE(f.log.totalContent(L::NewestFirst), QStringLiteral("d\nc\n\nb\na\n"));
        QCOMPARE(f.log.totalContent(L::OldestFirst), QStringLiteral("c\nd\n\na\nb\n"));
        QCOMPARE(f.log.pageContent(0, 0, L::NewestFirst), QStringLiteral("d"));
        QCOMPARE(f.log.pageContent(1, 2, L::NewestFirst), QStringLiteral("c\nb"));
        QCOMPARE(f.log.pageContent(3, 9, L::OldestFirst), QStringLiteral("b"));
        QCOMPARE(f.log.pageContent(4, 9, L::OldestFirst), QString());
        QCOMPARE(f.log.pageContent(2, 1, L::OldestFirst), QString());
        f.log.file.close();
        QCOMPARE(f.log.totalContent(L::NewestFirst), QString());
    }

    void compression()
    {
        Fixture f(1);
        const QString source = f.folder.filePath(QStringLiteral("it's.log"));
        writeFile(source, "packed");
        support::LineRecorder recorder;
        RotatingLogFile::compressFile(source, &f.log);
        QVERIFY(!QFile::exists(source));
        QVERIFY(
            WindowsTools::runCommand(QStringLiteral("tar -xzf zel.log.1.tar.gz"), f.folder.path()));
        QCOMPARE(readFile(source), QByteArray("packed"));

        QSignalSpy completed(&f.log, &RotatingLogFile::workCompleted);
        recorder.take();
        RotatingLogFile::compressFile(QStringLiteral("/nowhere/x"), &f.log);
        QCOMPARE(completed.value(0).value(0).toString(), QString());
        QVERIFY(!QFile::exists(f.path(1) + QStringLiteral(".tar.gz"))); // not even half of one
        QVERIFY(recorder.takeMessages().last().endsWith(
            QStringLiteral("RotatingLogFile*) Failed to compress  \"/nowhere/x\"")));
        Q_EMIT f.log.workCompleted(QStringLiteral("/nowhere/x"));
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
            if (platform::isBoard)
                QTRY_VERIFY(!QFile::exists(f.path(1)));
        }
        const int archives = QDir(f.folder.path()).entryList({QStringLiteral("*.tar.gz")}).size();
        QCOMPARE(archives, platform::isBoard ? 4 : 0);
        QStringList found;
        for (int i = archives; i > 0; --i) {
            QVERIFY(WindowsTools::runCommand(QStringLiteral("tar -xzf zel.log.%1.tar.gz").arg(i),
                                             f.folder.path()));
            found += RotatingLogFile::getLogLines(f.path(1));
        }
        QCOMPARE(found + RotatingLogFile::getLogLines(f.path(0)), expected);
    }
};

QTEST_GUILESS_MAIN(TestRotatingLogFile)
#include "tst_rotatinglogfile.moc"
