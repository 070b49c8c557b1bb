#include "logging/rotatinglogfile.h"
#include "support.h"
#include "support/rows.h"
#include "windowstools.h"
#include <zeltools/platform.h>

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

using Writes = std::tuple<const char*, int, QByteArray, QString>;
using Lines = std::tuple<const char*, QByteArray, QStringList>;

} // namespace

class TestRotatingLogFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names()
    {
        Fixture f(2);
        QCOMPARE(RotatingLogFile({1.5F, 2, false}).maximumSize_B(), qint64(1572864));
        QCOMPARE(f.log.filename(-1), QString());
        QCOMPARE(f.log.filenames(RotatingLogFile::OldestFirst),
                 QStringList({f.path(2), f.path(1), f.path(0)}));
        QCOMPARE(f.log.deletedFilenames(RotatingLogFile::NewestFirst)[2],
                 f.folder.filePath("zel_deleted.log.2"));
        f.log.setSecondaryFilesCount(-1);
        QCOMPARE(f.log.filenames(RotatingLogFile::NewestFirst), QStringList());
    }

    // Ten bytes fit into a file. "abc d" writes "abc", then "d".
    void rotation_data()
    {
        support::addRows<Writes>({
            {"the limit itself does not rotate", 1, "aaaaa bbbbb", "zel.log=aaaaabbbbb"},
            {"one byte more", 1, "aaaaa bbbbb c", "zel.log=c zel.log.1=aaaaabbbbb"},
            {"long lines", 1, "a bbbbbbbbbbbbbb c", "zel.log=c zel.log.1=bbbbbbbbbbbbbb"},
            {"the oldest is removed", 2, "aaaaaaa bbbbbbb ccccccc ddddddd",
             "zel.log=ddddddd zel.log.1=ccccccc zel.log.2=bbbbbbb"},
            {"no predecessors", 0, "aaaaaaaaaa b", "zel.log=aaaaaaaaaab"},
        });
    }
    void rotation()
    {
        const auto& [name, predecessors, writes, content] = support::currentRow<Writes>();
        Fixture f(predecessors);
        for (const QByteArray& text : writes.split(' '))
            QCOMPARE(f.log.write(text), qint64(text.size()));
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
        QCOMPARE(f.content(), "zel.log=1234567890 zel.log.1=0 zel.log.3=2");
    }

    void changesBeforeOpeningAndByOthersCount()
    {
        Fixture f(1);
        f.log.write("12345");
        f.log.file.close();
        QCOMPARE(f.log.write("lost"), qint64(-1));
        writeFile(f.path(0), "1234567");
        QVERIFY(f.log.file.open(QIODevice::Append));
        f.log.file.write("8"); // stays in the buffer of QFile
        f.log.write("abcdefghi");
        QCOMPARE(f.content(), "zel.log=abcdefghi zel.log.1=12345678");
        QVERIFY(QFile::resize(f.path(0), 0));
        f.log.write("jkl");
        QCOMPARE(f.content(), "zel.log=jkl zel.log.1=12345678");
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
        QTRY_VERIFY(f.log.write("d") == 1 && readFile(f.path(0)).startsWith('d'));
        QTRY_VERIFY(second.write("e") == 1 && readFile(f.path(0)).endsWith("eeee"));
        QVERIFY(readFile(f.path(1)).startsWith("aaaaaaaabbbbbbc"));
        f.log.file.close();
        QTRY_VERIFY(second.write("ffffffffff") == 10 && readFile(f.path(0)) == "ffffffffff");
        QCOMPARE(recorder.takeMessages().size(), 1);
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
        f.log.write("\n"); // with the line feed before it, it exceeds the limit by one byte
        QCOMPARE(f.content(), "zel.log=\n zel.log.1=half\nnew\nx");
    }

    void deletion()
    {
        Fixture f(1);
        const auto fillAndDelete = [&f] {
            f.log.write("1234567890");
            f.log.write("b");
            f.log.deleteFile();
            return f.content();
        };
        QCOMPARE(fillAndDelete(), "zel.log=");
        f.log.enableDeletedFilesStorage(true);
        const QString kept = "zel.log= zel_deleted.log=b zel_deleted.log.1=1234567890";
        QCOMPARE(fillAndDelete(), kept);
        QCOMPARE(fillAndDelete(), kept); // in place of the generation before
        f.log.write("new");
        QVERIFY(f.content().startsWith("zel.log=new "));
    }

    void lines_data()
    {
        const QByteArray megabyte(1 << 20, 'x');
        support::addRows<Lines>({
            {"feeds and NULs are one break", QByteArray("a\n\n\0\0b\n", 7), {"a", "b"}},
            {"an empty file is one empty line", "", {""}},
            {"a NUL run in front is not white space", QByteArray("\0\0a\nb", 5), {"", "a", "b"}},
            {"a long line stays whole", "a\n" + megabyte + "\nb\n", {"a", megabyte, "b"}},
            {"bad UTF-8 spoils its own line only", "a\n\xff\nb\n", {"a", "\ufffd", "b"}},
        });
    }
    void lines()
    {
        const auto& [name, bytes, lines] = support::currentRow<Lines>();
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
        QVERIFY(QFile::exists(f.path(1) + ".tar.gz")); // of the first call
        QVERIFY(!QFile::exists(f.path(1) + ".tar.gz.part"));
        QVERIFY(recorder.takeMessages().last().endsWith("Failed to compress  \"/nowhere/x\""));
    }

    // On the desktop the primary of a compressed file just grows. On the board every line ends up
    // in an archive, without an event loop.
    void compressedRotation()
    {
        Fixture f(9, true);
        QStringList expected;
        for (int i = 0; i < 5; ++i) {
            const QByteArray line = "line " + QByteArray::number(i) + "...\n";
            expected.append(QString::fromUtf8(line).trimmed());
            f.log.write(line);
            while (platform::isBoard && QFile::exists(f.path(1)))
                QThread::msleep(1);
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
