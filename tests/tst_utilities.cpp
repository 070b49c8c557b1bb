#include "accesstoken.h"
#include "dimensions.h"
#include "filereader.h"
#include "imagevalidator.h"
#include "platform.h"
#include "qobjectdeleter.h"
#include "random.h"
#include "support.h"
#include "system.h"

#include <QtTest>

#include <thread>

namespace
{

QByteArrayList syncedContents;
int globalSyncCount = 0;

} // namespace

// In place of the system's functions: they take notes, and leave the machine alone.
extern "C" Q_DECL_EXPORT int fsync(int descriptor)
{
    char content[64];
    const auto size = static_cast<int>(::pread(descriptor, content, sizeof content, 0));
    syncedContents << QByteArray(content, qMax(size, 0));
    return 0;
}

extern "C" Q_DECL_EXPORT void sync() noexcept
{
    ++globalSyncCount;
}

class TestUtilities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void syncs();
    void looksAtFiles();
    void validatesImages();
    void convertsDegrees();
    void drawsFromOneEngine();
    void deletesObjects();
};

void TestUtilities::syncs()
{
    support::LineRecorder recorder;
    const QTemporaryDir dir;
    QFile file(dir.filePath("file"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    file.write("still in the buffer");
    System::syncFile(file);
    QVERIFY(file.isOpen());
    file.close();
    System::syncFile(file);
    QVERIFY(!file.isOpen());
    QCOMPARE(file.size(), 19);
    System::syncFile(QStringLiteral("/nowhere/file"));
    QCOMPARE(recorder.takeMessages(),
             QStringList("void System::syncFile(QFile&) Failed to open file "
                         "\"/nowhere/file\" for sync"));
    QCOMPARE(syncedContents.join('|'),
             QByteArray(platform::isBoard ? "still in the buffer|still in the buffer" : ""));

    delete new System::FileSystemSyncer;
    QCOMPARE(globalSyncCount, platform::isBoard ? 1 : 0);
}

void TestUtilities::looksAtFiles()
{
    const QTemporaryDir dir;
    const QString file = dir.filePath("a.txt");
    support::writeFile(file, "one\r\n\ntwo \n");
    QVERIFY(System::fileExists(file) && !System::folderExists(file));
    QVERIFY(System::folderExists(dir.path()) && !System::fileExists(dir.path()));
    QVERIFY(System::filenameAlreadyExists("a.txt", dir.path()));
    QVERIFY(!System::filenameAlreadyExists(dir.path(), "a.txt"));

    zeltools::FileReader reader;
    QCOMPARE(reader.fileContent(file), QString("one\r\n\ntwo \n"));
    QVERIFY(reader.fileContent(dir.filePath("absent")).isNull());
    QVERIFY(reader.fileContent(dir.path()).isNull());
}

void TestUtilities::validatesImages()
{
    ImageValidator validator;
    QCOMPARE(validator.validatedUrl("qrc:/img/logo.png"), QUrl("qrc:/img/logo.png"));
    for (const char* path : {"qrc:/img/none.png", "qrc:/img/nodot", "QRC:/img/logo.png",
                             ":/img/logo.png", "file:///proc/self/../mounts", ""})
        QVERIFY2(validator.validatedUrl(path).isEmpty(), path);
}

void TestUtilities::convertsDegrees()
{
    const zeltools::Dimensions* const dimensions = zeltools::Dimensions::get();
    QCOMPARE(dimensions->celsiusToFahrenheit(36.6), 97.9);
    QCOMPARE(dimensions->celsiusToFahrenheit(-40), -40.0);
    QCOMPARE(dimensions->celsiusToFahrenheit(-32.25 / 1.8), -0.3); // away from zero
}

void TestUtilities::drawsFromOneEngine()
{
    constexpr int count = 500000; // enough for the threads to meet
    std::mt19937 expected = utils::randomGenerator();
    expected.discard(2ULL * count);
    QSet<int> characters;
    std::thread other([] {
        for (int i = 0; i < count; ++i)
            utils::randomTypeDistributed<int, 0, 2147483647>();
    });
    for (int i = 0; i < count; ++i)
        characters << utils::randomTypeDistributed<char, 0, 127>();
    other.join();
    QVERIFY(utils::randomGenerator() == expected); // no draw was lost to the other thread
    QCOMPARE(characters.size(), 128);

    const tools::AccessToken token;
    QVERIFY(!token.match(tools::AccessToken()));
    utils::randomGenerator() = expected;
    QVERIFY(token.match(tools::AccessToken())); // the engine was set back
}

void TestUtilities::deletesObjects()
{
    const QPointer<QObject> now = new QObject;
    const QPointer<QObject> later = new QObject;
    {
        const QObjectDeleter deleteNow(now, false);
        const QObjectDeleter deleteLater(later, true);
        const QObjectDeleter deleteNothing(nullptr, true);
    }
    QVERIFY(now.isNull() && !later.isNull());
    QCoreApplication::sendPostedEvents(later, QEvent::DeferredDelete);
    QVERIFY(later.isNull());

    auto parent = std::make_unique<QObject>();
    const QObjectDeleter tooLate(new QObject(parent.get()), false);
    parent.reset();
}

QTEST_GUILESS_MAIN(TestUtilities)
#include "tst_utilities.moc"
