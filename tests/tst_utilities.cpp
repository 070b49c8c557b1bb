#include "accesstoken.h"
#include "filereader.h"
#include "imagevalidator.h"
#include "quotedwords.h"
#include "random.h"
#include "storage_p.h"
#include "support.h"
#include "support/machines.h"
#include "system.h"
#include <zeltools/platform.h>

#include <QtTest>

#include <algorithm>
#include <thread>

static QByteArrayList s_synced;
static bool s_isFailing = false;

// These replace the system's functions: they record the data to sync and change nothing.
extern "C" Q_DECL_EXPORT int fsync(int descriptor)
{
    char content[64] = {};
    s_synced << QByteArray(content, int(::pread(descriptor, content, sizeof content, 0)));
    errno = EIO;
    return s_isFailing ? -1 : 0;
}
extern "C" Q_DECL_EXPORT void sync() noexcept
{
    s_synced << "all";
}

class TestUtilities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void syncsFiles_data() { support::addMachineRows(); }
    void syncsFiles()
    {
        QFETCH(bool, isBoard);
        const zeltools::Storage storage(isBoard);
        QTemporaryFile file;
        QVERIFY(file.open() && file.write("text") == 4);
        QFile folder("/");
        support::LineRecorder recorder;
        s_synced.clear();
        storage.sync(file); // including what the file itself holds back
        storage.sync(file.handle());
        storage.dropPageCache(file.fileName());
        QCOMPARE(s_synced.join(' '), QByteArray(isBoard ? "text text all" : ""));
        QCOMPARE(support::readFile(file.fileName()), QByteArray(isBoard ? "1" : "text"));
        s_isFailing = true;
        file.close();
        storage.sync(file);
        storage.sync(STDIN_FILENO);
        s_isFailing = false;
        storage.sync(folder);
        const QStringList messages = recorder.takeMessages();
        QCOMPARE(messages.filter("Input/output error").size(), isBoard ? 2 : 0);
        QCOMPARE(messages.filter("Failed to open file \"/\" for sync").size(), 1);
    }

    void readsFiles()
    {
        const QTemporaryDir dir;
        support::writeFile(dir.filePath("a.txt"), "one\r\n\ntwo \n");
        s_synced.clear();
        System::syncFile(dir.filePath("a.txt"));
        delete new System::FileSystemSyncer;
        QCOMPARE(s_synced.size(), platform::isBoard ? 2 : 0);
        QVERIFY(zeltools::FileReader().fileContent("/proc/self/mem").isNull()); // no read succeeds
        QCOMPARE(zeltools::FileReader().fileContent(dir.filePath("a.txt")), "one\r\n\ntwo \n");
        QVERIFY(System::filenameAlreadyExists("a.txt", dir.path()));
        QVERIFY(System::folderExists(dir.path()) && !System::fileExists(dir.path()));
    }

    void drawsFromOneEngine()
    {
        std::mt19937 expected = utils::randomGenerator();
        expected.discard(1000000); // enough for the threads to meet
        const auto draw = utils::randomTypeDistributed<char, 0, 127>;
        std::vector<char> a(500000), b(500000);
        std::thread other([&] { std::generate(a.begin(), a.end(), draw); });
        std::generate(b.begin(), b.end(), draw);
        other.join();
        QVERIFY(utils::randomGenerator() == expected); // no draw was lost to the other thread
        QVERIFY(!tools::AccessToken().match(tools::AccessToken()));
    }

    void splitsQuotedWords_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("expected"); // column, Q or B, and text of each word
        QTest::newRow("nothing") << QByteArray(" \t# \"") << "";
        QTest::newRow("both kinds") << QByteArray("when \"a\\\"b\"\t5#x") << "1Bwhen|6Qa\"b|13B5";
        QTest::newRow("escapes") << QByteArray(R"("\\\n\r\t\x41\xe8" "")")
                                 << QString("1Q\\\n\r\tA\u00e8|20Q");
        QTest::newRow("unknown escape") << QByteArray(R"("\x4g")") << "column 2: unknown escape";
        QTest::newRow("zero behind a backslash")
            << QByteArray("\"\\\0\"", 4) << "column 2: unknown escape";
        QTest::newRow("open quote")
            << QByteArray("a \"b\\\"") << "column 7: the closing quote is missing";
        QTest::newRow("word behind a quote")
            << QByteArray("\"a\"b") << "column 4: unexpected character";
        QTest::newRow("control character")
            << QByteArray("a\x7f") << "column 2: unexpected character";
    }
    void splitsQuotedWords()
    {
        QFETCH(QByteArray, line);
        QFETCH(QString, expected);
        QString error;
        QStringList found;
        for (const auto& word :
             zeltools::splitQuotedWords(line, error).value_or(QVector<zeltools::QuotedWord>()))
            found << QString::number(word.column) + (word.isQuoted ? 'Q' : 'B') +
                         QString::fromLatin1(word.text);
        QCOMPARE(error + found.join('|'), expected);
    }

    void quotesAnyByte()
    {
        QByteArray bytes = "caff\xc3\xa8 \xed\xa0\x80";
        for (int byte = 0; byte < 256; ++byte)
            bytes += char(byte);
        const QByteArray word = zeltools::quotedWord(bytes);
        QVERIFY(word.startsWith("\"caff\xc3\xa8 \\xed") && !word.contains('\n'));
        QString error;
        QCOMPARE(zeltools::splitQuotedWords(word, error).value().first().text, bytes);
    }

    void validatesImages()
    {
        QCOMPARE(ImageValidator().validatedUrl("qrc:/img/logo.png"), QUrl("qrc:/img/logo.png"));
        for (const char* path : {"qrc:/img/none.png", "qrc:/img/nodot", ":/img/logo.png", ""})
            QVERIFY2(ImageValidator().validatedUrl(path).isEmpty(), path);
    }
};

QTEST_GUILESS_MAIN(TestUtilities)
#include "tst_utilities.moc"
