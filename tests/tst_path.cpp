#include "path.h"

#include "support.h"
#include "support/machines.h"

#include <QtTest>

/// Runs every test on the desktop and on the board, each time in a new folder.
class TestPath : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Path> m_path;
    bool m_isBoard = false; // in this row

private Q_SLOTS:
    void initTestCase_data() { support::addMachineRows(); }
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_dir->path()) && QDir().mkpath("app/bin/dbus"));
        QFETCH_GLOBAL(bool, isBoard);
        m_isBoard = isBoard;
        zeltools::Machine machine = support::machine(isBoard);
        machine.canTestDir = "can";
        machine.dbusConfigurationFile = "bus.conf";
        m_path.reset(); // only one may exist
        m_path = std::make_unique<support::Opened<Path>>(machine);
        m_path->init("app/bin", "default", "default");
    }

    void createsItsFolders()
    {
        QVERIFY(m_path->fixKestrelPermanentFilesLink());
        for (const char* folder :
             {"../app/bin/kestrel_app/permanent_files", "databases/arbor",
              "databases/autoconfigbackup", "databases/configbackup", "databases/credits",
              "databases/plume", "res/download", "res/images/defaultImages", "res/playlistUpdate",
              "res/sales", "res/software", "res/videos/defaultVideos", "temp", "touchsimulator",
              "zel/logs/debug", "zel/logs/events", "zel/touchtest"})
            QVERIFY2(QDir("share").exists(folder), folder);
        QCOMPARE(m_path->canTestDir, QString("app/bin/../../share/cantest/"));

        support::writeFile("medium", ""); // a file, which holds no folder
        QVERIFY(QDir().mkdir("can"));
        m_path->init("app/bin", "medium/", "default");
        QVERIFY(m_path->fixDefaultVideosPath());
        const QString root = m_isBoard ? "app/bin/../../share/" : "medium/";
        QCOMPARE(m_path->defaultVideosDir, root + "res/videos/defaultVideos/");
        QCOMPARE(m_path->environmentFile, QString("app/bin/../../launcher/environment"));
        QCOMPARE(m_path->canTestDir, QString("can/"));
        std::make_unique<Path>(); // a second object does not replace the first
        QCOMPARE(Path::instance(), m_path.get());
    }

    void linksMachineData()
    {
        const QString link = "app/bin/databases/machine";
        QVERIFY(m_path->fixMachineDataLink() && QFile::remove(link) == m_isBoard);
        QVERIFY(QDir().mkpath("app/bin/databases") && QFile::link("/nowhere", link));
        QVERIFY(m_path->fixMachineDataLink() && m_path->fixMachineDataLink());
        QCOMPARE(QFileInfo(link).symLinkTarget(),
                 m_isBoard ? m_dir->filePath("share/databases/machine") : "/nowhere");
        QVERIFY(QFile::remove(link) && QDir().mkpath(link + "/data"));
        QVERIFY(m_path->fixMachineDataLink() == !m_isBoard && QFile::exists(link + "/data"));
    }

    void copiesTheBusConfiguration()
    {
        support::writeFile("bus.conf", "old");
        m_path->copyDbusConfigFile(); // the source is missing
        QCOMPARE(support::readFile("bus.conf"), QByteArray("old"));
        support::writeFile("app/bin/dbus/zel.conf", "new");
        m_path->copyDbusConfigFile();
        QCOMPARE(support::readFile("bus.conf"), QByteArray(m_isBoard ? "new" : "old"));
    }

    void deletesNothingElse()
    {
        QVERIFY(QDir().mkpath("folder/b") && QDir().mkpath("a/file") && QDir().mkpath("b/file"));
        QVERIFY(QFile::link("../a", "folder/link") && QFile::link("../../a", "folder/b/link"));
        for (const char* refused : {"", "folder/..", "folder/."})
            QCOMPARE(m_path->deleteFileOrFolder(refused), !m_isBoard);
        QVERIFY(m_path->deleteFileOrFolder("folder/link/../b"));
        QVERIFY(QFile::exists("folder/b") && QFile::exists("b") == !m_isBoard);
        QVERIFY(m_path->deleteFileOrFolder("folder/link/"));
        QVERIFY(QFile::exists("folder/link") == !m_isBoard && QFile::exists("folder/b/link/file"));
        QVERIFY(m_path->deleteFileOrFolder("folder") && m_path->deleteFileOrFolder("absent"));
        QVERIFY(QFile::exists("folder") == !m_isBoard && QFile::exists("a/file"));
    }
};

QTEST_GUILESS_MAIN(TestPath)
#include "tst_path.moc"
