#include "accesstoken.h"
#include "dimensions.h"
#include "filereader.h"
#include "imagevalidator.h"
#include "qobjectdeleter.h"
#include "random.h"
#include "support.h"
#include "system.h"
#include <zeltools/platform.h>

#include <QtTest>

#include <algorithm>
#include <thread>

static QByteArrayList synced;

// In place of the system's functions: they take notes, and leave the machine alone.
extern "C" Q_DECL_EXPORT int fsync(int descriptor)
{
    if (synced.size() > 2) {
        errno = EIO;
        return -1;
    }
    char content[64] = {};
    synced << QByteArray(content, int(::pread(descriptor, content, sizeof content, 0)));
    return 0;
}
extern "C" Q_DECL_EXPORT void sync() noexcept
{
    synced << "all";
}

class TestUtilities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void syncsAndLooksAtFiles()
    {
        const QTemporaryDir dir;
        const QByteArray text = "one\r\n\ntwo \n";
        QFile file(dir.filePath("a.txt"));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.write(text) == text.size());
        System::syncFile(file);
        System::syncFile(file.fileName());
        delete new System::FileSystemSyncer;
        QCOMPARE(synced.join(), platform::isBoard ? text + text + "all" : "");
        support::LineRecorder recorder;
        System::syncFile(file); // as the disk fails
        System::syncFile(file.handle());
        QCOMPARE(recorder.takeMessages().filter("Input/output error").size(),
                 platform::isBoard ? 2 : 0);

        QVERIFY(zeltools::FileReader().fileContent("/proc/self/mem").isNull()); // no read succeeds
        QCOMPARE(zeltools::FileReader().fileContent(file.fileName()), QString(text));
        QVERIFY(file.isOpen() && System::filenameAlreadyExists("a.txt", dir.path()));
        QVERIFY(System::folderExists(dir.path()) && !System::fileExists(dir.path()));
    }

    void validatesImages()
    {
        QCOMPARE(ImageValidator().validatedUrl("qrc:/img/logo.png"), QUrl("qrc:/img/logo.png"));
        for (const char* path : {"qrc:/img/none.png", "qrc:/img/nodot", ":/img/logo.png", ""})
            QVERIFY2(ImageValidator().validatedUrl(path).isEmpty(), path);
    }

    void converts() { QCOMPARE(zeltools::Dimensions::get()->celsiusToFahrenheit(36.6), 97.9); }

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

    void deletesObjects()
    {
        QPointer<QObject> now = new QObject, later = new QObject;
        std::make_unique<QObjectDeleter>(later, true);
        const QObjectDeleter tooLate(now, false);
        std::make_unique<QObjectDeleter>(now, false);
        QVERIFY(!now && later);
        QCoreApplication::sendPostedEvents(later, QEvent::DeferredDelete);
        QVERIFY(!later);
    }
};

QTEST_GUILESS_MAIN(TestUtilities)
#include "tst_utilities.moc"
