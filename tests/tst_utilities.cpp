#include "accesstoken.h"
#include "filereader.h"
#include "imagevalidator.h"
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

    void validatesImages()
    {
        QCOMPARE(ImageValidator().validatedUrl("qrc:/img/logo.png"), QUrl("qrc:/img/logo.png"));
        for (const char* path : {"qrc:/img/none.png", "qrc:/img/nodot", ":/img/logo.png", ""})
            QVERIFY2(ImageValidator().validatedUrl(path).isEmpty(), path);
    }
};

QTEST_GUILESS_MAIN(TestUtilities)
#include "tst_utilities.moc"
