#include "path.h"

#include "support.h"
#include <zeltools/platform.h>

#include <QtTest>

using platform::isBoard;

class TestPath : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(QDir::setCurrent(m_dir.path()) && QDir().mkpath("app/bin")); }

    void createsItsFolders()
    {
        m_path.init("app/bin", "default", "default");
        QVERIFY(m_path.fixKestrelPermanentFilesLink());
        for (const char* folder :
             {"../app/bin/kestrel_app/permanent_files", "databases/arbor",
              "databases/autoconfigbackup", "databases/configbackup", "databases/credits",
              "databases/plume", "res/download", "res/images/defaultImages", "res/playlistUpdate",
              "res/sales", "res/software", "res/videos/defaultVideos", "temp", "touchsimulator",
              "zel/logs/debug", "zel/logs/events", "zel/touchtest"})
            QVERIFY2(QDir("share").exists(folder), folder);

        support::writeFile("medium", ""); // a file: holds no folder
        m_path.init("app/bin", "medium/", "default");
        QVERIFY(m_path.fixDefaultVideosPath());
        const QString root = isBoard ? "app/bin/../../share/" : "medium/";
        QCOMPARE(m_path.defaultVideosDir, root + "res/videos/defaultVideos/");
        QCOMPARE(m_path.environmentFile, QString("app/bin/../../launcher/environment"));
        std::make_unique<Path>(); // a second one takes nothing over
        QCOMPARE(Path::instance(), &m_path);
    }

    void linksMachineData()
    {
        const QString link = "app/bin/databases/machine";
        QVERIFY(m_path.fixMachineDataLink() && QFile::remove(link) == isBoard);
        QVERIFY(QDir().mkpath("app/bin/databases") && QFile::link("/nowhere", link));
        QVERIFY(m_path.fixMachineDataLink() && m_path.fixMachineDataLink());
        QCOMPARE(QFileInfo(link).symLinkTarget(),
                 isBoard ? m_dir.filePath("share/databases/machine") : "/nowhere");
        QVERIFY(QFile::remove(link) && QDir().mkpath(link + "/data"));
        QVERIFY(m_path.fixMachineDataLink() == !isBoard && QFile::exists(link + "/data"));
    }

    void deletesNothingElse()
    {
        QVERIFY(QDir().mkpath("folder/b") && QDir().mkpath("a/file") && QDir().mkpath("b/file"));
        QVERIFY(QFile::link("../a", "folder/link") && QFile::link("../../a", "folder/b/link"));
        for (const char* refused : {"", "folder/..", "folder/."})
            QCOMPARE(m_path.deleteFileOrFolder(refused), !isBoard);
        QVERIFY(m_path.deleteFileOrFolder("folder/link/../b"));
        QVERIFY(QFile::exists("folder/b") && QFile::exists("b") == !isBoard);
        QVERIFY(m_path.deleteFileOrFolder("folder/link/"));
        QVERIFY(QFile::exists("folder/link") == !isBoard && QFile::exists("folder/b/link/file"));
        QVERIFY(m_path.deleteFileOrFolder("folder") && m_path.deleteFileOrFolder("absent"));
        QVERIFY(QFile::exists("folder") == !isBoard && QFile::exists("a/file"));
    }

private:
    QTemporaryDir m_dir;
    Path m_path;
};

QTEST_GUILESS_MAIN(TestPath)
#include "tst_path.moc"
