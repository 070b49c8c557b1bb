#include "path.h"

#include "logging/zelassert.h"
#include "platform.h"
#include "support.h"

#include <QDirIterator>
#include <QtTest>

namespace
{

QString assertion;

// What lies at the ends of the tree below the current folder: files, links and empty folders.
QString leaves()
{
    QStringList names;
    QDirIterator all(".", QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QFileInfo info(all.next());
        if (!info.isDir() || info.isSymLink() || QDir(info.filePath()).isEmpty())
            names << info.filePath().mid(2);
    }
    names.sort();
    return names.join(' ');
}

} // namespace

class TestPath : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isSingle();
    void init();
    void buildsTexts();
    void createsItsFolders();
    void linksMachineData();
    void deletes_data();
    void deletes();

private:
    QScopedPointer<QTemporaryDir> m_dir;
};

void TestPath::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(QDir::setCurrent(m_dir->path()) && QDir().mkpath("app/bin"));
}

void TestPath::isSingle()
{
    QVERIFY(!Path::exists());
    Path* const path = Path::instance();
    QVERIFY(Path::exists());
    installZelAssertionHandler([](const char* where, const char* what, const char*, int) {
        assertion = QString("%1: %2").arg(where, what);
    });
    std::make_unique<Path>();
    QCOMPARE(assertion, QString("path == nullptr: Constructor was already called !"));
    QCOMPARE(Path::instance(), path);
}

void TestPath::buildsTexts()
{
    Path* const path = Path::instance();
    path->init("app/bin/", "default", "other/");
    QCOMPARE(path->debugLogsDir, QString("app/bin//../../share/zel/logs/debug/"));
    QCOMPARE(path->environmentFile, QString("app/bin//../../launcher/environment"));
    QCOMPARE(path->videosDir, QString("app/bin//../../share/res/videos/"));
    QCOMPARE(path->defaultImagesDir, QString("other/res/images/defaultImages/"));
    path->init("app/bin", "Default", "default"); // another word: taken as it stands
    QCOMPARE(path->videosDir, QString("Defaultres/videos/"));

    QVERIFY(QFile("medium").open(QIODevice::WriteOnly)); // a file: holds no folder
    path->init("app/bin", "medium/", "default");
    QVERIFY(path->fixDefaultVideosPath());
    QCOMPARE(path->defaultVideosDir, platform::isBoard ? path->resDir + "videos/defaultVideos/"
                                                       : "medium/res/videos/defaultVideos/");
}

void TestPath::createsItsFolders()
{
    Path::instance()->init(m_dir->filePath("app/bin"), "default", "default");
    QVERIFY(Path::instance()->fixKestrelPermanentFilesLink());
    QCOMPARE(leaves(), QString("app/bin/kestrel_app/permanent_files share/databases/arbor "
                               "share/databases/autoconfigbackup share/databases/configbackup "
                               "share/databases/credits share/databases/plume share/res/download "
                               "share/res/images/defaultImages share/res/playlistUpdate "
                               "share/res/sales share/res/software share/res/videos/defaultVideos "
                               "share/temp share/touchsimulator share/zel/logs/debug "
                               "share/zel/logs/events share/zel/touchtest"));
}

void TestPath::linksMachineData()
{
    Path* const path = Path::instance();
    path->init(m_dir->filePath("app/bin"), "default", "default");
    const QString link("app/bin/databases/machine");
    const QString target = platform::isBoard ? m_dir->filePath("share/databases/machine") : "";
    QVERIFY(path->fixMachineDataLink() && path->fixMachineDataLink());
    QCOMPARE(QFileInfo(link).symLinkTarget(), target);
    if (!platform::isBoard)
        return;
    QVERIFY(QFile::remove(link) && QFile::link("/nowhere", link));
    QVERIFY(path->fixMachineDataLink());
    QCOMPARE(QFileInfo(link).symLinkTarget(), target);
    QVERIFY(QFile::remove(link) && QDir().mkpath(link + "/data"));
    QVERIFY(!path->fixMachineDataLink());
    QVERIFY(QFile::exists(link + "/data"));
}

void TestPath::deletes_data()
{
    QTest::addColumn<QString>("victim");
    QTest::addColumn<QString>("left"); // on the board

    QTest::newRow("a file") << "folder/file"
                            << "app/bin folder/link kept/file";
    QTest::newRow("a folder with all in it") << "folder"
                                             << "app/bin kept/file";
    QTest::newRow("a link, not what is behind it") << "folder/link/"
                                                   << "app/bin folder/file kept/file";
    QTest::newRow("a folder beside the one behind a link") << "folder/link/../kept"
                                                           << "app/bin folder/file folder/link";
    QTest::newRow("nothing") << "absent"
                             << "app/bin folder/file folder/link kept/file";
    QTest::newRow("no path that ends above itself") << "folder/.."
                                                    << "refused";
    QTest::newRow("no empty path") << ""
                                   << "refused";
}

void TestPath::deletes()
{
    QFETCH(QString, victim);
    QFETCH(QString, left);
    QVERIFY(QDir().mkdir("folder") && QDir().mkdir("kept") &&
            QFile::link("../kept", "folder/link"));
    support::writeFile("folder/file", "x");
    support::writeFile("kept/file", "x");
    const QString before = leaves();
    const bool isRefused = platform::isBoard && left == "refused";
    QCOMPARE(Path::instance()->deleteFileOrFolder(victim), !isRefused);
    QCOMPARE(leaves(), isRefused || !platform::isBoard ? before : left);
}

QTEST_GUILESS_MAIN(TestPath)
#include "tst_path.moc"
