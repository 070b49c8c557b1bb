#include "folderlistmodel.h"
#include "interpose.h"
#include "support.h"

#include <QAbstractItemModelTester>
#include <QtTest>

#include <mutex>
#include <random>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace tools::datamodel;
using Tester = QAbstractItemModelTester;

// The disk does not answer while another thread holds this.
static std::recursive_mutex s_disk;

INTERPOSED DIR* opendir(const char* path)
{
    s_disk.lock();
    DIR* const folder = original<decltype(opendir)>("opendir")(path);
    if (folder == nullptr)
        s_disk.unlock();
    return folder;
}

INTERPOSED int closedir(DIR* folder)
{
    s_disk.unlock();
    return original<decltype(closedir)>("closedir")(folder);
}

// Returns an entry twice, as when a file is replaced while its folder is read.
INTERPOSED dirent* readdir(DIR* folder)
{
    static dirent* again = nullptr;
    if (again != nullptr)
        return std::exchange(again, nullptr);
    dirent* const entry = original<decltype(readdir)>("readdir")(folder);
    again = entry != nullptr && qstrcmp(entry->d_name, "twice") == 0 ? entry : nullptr;
    return entry;
}

namespace
{

/// A folder, a model of it and a journal of the model's signals.
class Fixture : public QObject
{
public:
    Fixture()
    {
        const auto note = [this](const QString& what) {
            return [this, what](const QModelIndex&, int first, int last) {
                journal += QString("%1 %2-%3").arg(what).arg(first).arg(last);
            };
        };
        connect(&model, &FolderListModel::rowsInserted, note("insert"));
        connect(&model, &FolderListModel::rowsRemoved, note("remove"));
        connect(&model, &FolderListModel::rowsMoved, note("move"));
        connect(&model, &FolderListModel::layoutChanged, [this] { journal += "layout"; });
        connect(&model, &FolderListModel::dataChanged,
                [=](const QModelIndex& first, const QModelIndex& last, const auto& roles) {
                    if (roles.contains(FolderListModel::SizeRole)) // or only the time
                        note("size")({}, first.row(), last.row());
                });
        model.setFolder(dir.path());
    }

    QString path(const QString& name) const { return dir.filePath(name); }
    void write(const QString& name, int size = 0) const
    {
        support::writeFile(path(name), QByteArray(size, 'x'));
    }
    void run(const QString& command) const
    {
        QCOMPARE(QProcess::execute("sh", {"-c", "cd $0 && " + command, dir.path()}), 0);
    }
    QVariant data(int row, int role) const { return model.index(row).data(role); }
    QString names() const
    {
        QStringList names;
        for (int row = 0; row < model.count(); ++row)
            names += data(row, Qt::DisplayRole).toString();
        return names.join(' ');
    }
    // The names as Qt reads them from the disk.
    QString expected() const
    {
        const auto kinds = (model.showFolders() ? QDir::AllDirs : QDir::NoDot) |
                           (model.showFiles() ? QDir::Files : QDir::NoDot);
        const auto order = model.sortReversed() ? QDir::Reversed : QDir::Name;
        return QDir(dir.path())
            .entryList(model.nameFilters(), kinds | QDir::NoDotAndDotDot,
                       QDir::DirsFirst | QDir::IgnoreCase | order)
            .join(' ');
    }

    const QTemporaryDir dir;
    FolderListModel model;
    const Tester tester{&model, Tester::FailureReportingMode::QtTest};
    QStringList journal;
};

} // namespace

class TestFolderListModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void staysLikeTheFolder()
    {
        Fixture f;
        std::mt19937 random(7);
        const auto any = [&random](int count) { return int(random() % uint(count)); };
        for (int round = 0; round < 25; ++round) {
            QVector<QPair<QPersistentModelIndex, QString>> held;
            for (int row = 0; row < f.model.count(); ++row)
                held.append({f.model.index(row), f.data(row, Qt::DisplayRole).toString()});
            for (int change = any(100); change > 0; --change) {
                const QString name = QString("%1.%2").arg(any(300), 3).arg("tLx"[any(3)]);
                if (QFileInfo::exists(f.path(name)))
                    QFile::remove(f.path(name)) || QDir().rmdir(f.path(name));
                else
                    any(6) == 0 ? void(QDir().mkpath(f.path(name))) : f.write(name);
            }
            f.model.setShowFolders(any(4) != 0);
            f.model.setShowFiles(any(4) != 0);
            f.model.setSortReversed(any(4) == 0);
            f.model.setNameFilters(any(4) == 0 ? QStringList{"*.T", "1??.l"} : QStringList());
            f.model.refresh(); // there are more files than are followed
            QTRY_COMPARE(f.names(), f.expected());
            for (const auto& [index, name] : qAsConst(held))
                QVERIFY(!index.isValid() || f.model.data(index) == name);
        }
        QVERIFY(f.journal.contains("layout") && !f.journal.filter("move").isEmpty());
    }

    void makesTheFewestChanges()
    {
        Fixture f;
        connect(&f.model, &FolderListModel::rowsInserted, [&] {
            f.model.refresh(); // between two changes of rows
            QTest::qWait(20);
        });
        const QVector<QPair<std::function<void()>, QString>> rows{
            {[&] {
                 f.write("b.2"), f.write("c.1"), f.write("d.5"), f.write("e.4"), f.write("f.3");
             },
             "insert 0-4"},
            {[&] { f.write("a.6"), f.write("e2"), f.write("e3"); }, "insert 0-0 insert 5-6"},
            {[&] { f.write("b.2", 4), f.write("c.1", 9), f.write("e2", 1); }, "size 1-2 size 5-5"},
            {[&] { f.model.setSortField(FolderListModel::SortBySize); }, "move 5-5 move 1-2"},
            {[&] { f.model.setSortField(FolderListModel::SortByName); }, "move 6-7 move 7-7"},
            {[&] { f.run("rm e2 e3 && mv a.6 g.6"); }, "remove 5-6 remove 0-0 insert 5-5"},
            {[&] { f.model.setSortField(FolderListModel::SortBySuffix); },
             "move 0-0 move 3-3 move 2-2"}};
        for (const auto& [change, expected] : rows) {
            {
                const std::lock_guard whole(s_disk); // Half of a change is not read.
                f.journal.clear();
                change();
            }
            QTRY_COMPARE(f.journal.join(' '), expected);
        }
        QCOMPARE(f.names(), "c.1 b.2 f.3 e.4 d.5 g.6");
        QCOMPARE(f.data(1, FolderListModel::SizeRole), 4);
    }

    void showsOddEntries()
    {
        Fixture f;
        f.write("two.dots.txt", 3);
        f.run("mkdir deep.er && mkfifo pipe && touch twice .hidden $(printf 'bad\\377\\376') && "
              "ln -s . here && ln -s nowhere broken && ln -s loop loop && ln -s two.dots.txt file");
        support::LineRecorder lines;
        QTRY_COMPARE(f.names(), "deep.er here broken file loop pipe twice two.dots.txt");
        QCOMPARE(lines.take().size(), 1); // for the name that is left out
        QCOMPARE(f.data(7, FolderListModel::PathRole), f.path("two.dots.txt"));
        QCOMPARE(f.data(7, FolderListModel::BaseNameRole), "two.dots");
        QCOMPARE(f.data(7, FolderListModel::SuffixRole), "txt");
        QCOMPARE(f.data(7, FolderListModel::ModifiedRole),
                 QFileInfo(f.path("two.dots.txt")).lastModified());
        QVERIFY(f.data(0, FolderListModel::IsFolderRole).toBool());
        f.run("mkdir -p real/folder && touch real/file && ln -s real/folder link");
        f.model.setFolder(f.path("link/.././/"));
        QTRY_COMPARE(f.names(), "folder file"); // as the kernel resolves ".."
        QCOMPARE(f.data(1, FolderListModel::PathRole), f.path("link/../file"));
    }

    // As when a log file is rotated, a new file gets its name while somebody still reads the old
    // one.
    void followsFilesAndJoinsManyChanges()
    {
        Fixture f;
        f.write("log");
        // The file changes before it is followed.
        connect(&f.model, &FolderListModel::rowsInserted, [&] { f.write("log", 3); });
        QTRY_COMPARE(f.data(0, FolderListModel::SizeRole), 3);
        QFile old(f.path("log"));
        QVERIFY(old.open(QIODevice::ReadOnly));
        f.write(".new", 5);
        f.run("mv .new log");
        QTRY_COMPARE(f.data(0, FolderListModel::SizeRole), 5);
        QElapsedTimer timer;
        timer.start();
        for (int size = 1; size <= 300; ++size) {
            f.write("log", size);
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(f.data(0, FolderListModel::SizeRole), 300);
        QVERIFY2(f.journal.size() <= timer.elapsed() / 100 + 4, qPrintable(f.journal.join(' ')));
    }

    void waitsForTheFolder()
    {
        Fixture f;
        const QString folder = f.path("a/b/c");
        support::LineRecorder lines;
        f.model.setFolder(QUrl::fromLocalFile(folder).toString() + "/");
        QCOMPARE(f.model.folder(), folder);
        for (int round = 0; round < 3; ++round) {
            QTRY_COMPARE(f.model.status(), FolderListModel::Unreadable);
            QCOMPARE(lines.take().size(), 1);
            QVERIFY(f.names().isEmpty() && QDir().mkpath(folder));
            f.write("a/b/c/file");
            QTRY_COMPARE(f.names(), "file");
            QCOMPARE(f.model.status(), FolderListModel::Ready);
            f.run("cd a/b && mv c d && mkdir c");
            f.model.refresh();
            QTRY_COMPARE(f.names(), "");
            f.write("a/b/c/other");
            QTRY_COMPARE(f.names(), "other");
            QDir(f.path("a")).removeRecursively();
        }
        QTRY_COMPARE(f.model.status(), FolderListModel::Unreadable);
        f.model.setFolder("");
        QCOMPARE(f.model.status(), FolderListModel::NoFolder);
    }

    void dropsLateListings()
    {
        Fixture large, f;
        for (int i = 0; i < 3000; ++i)
            large.write(QString::number(i));
        f.write("only");
        for (unsigned long delay_ms = 0; delay_ms < 80; delay_ms += 4) {
            f.model.setFolder(large.dir.path());
            QCoreApplication::processEvents(); // The listing begins,
            QThread::msleep(delay_ms);         // and its end may be in the event queue.
            f.model.setFolder(f.dir.path());
            QCOMPARE(f.names(), "");
            QTRY_COMPARE(f.names(), "only");
            FolderListModel dying;
            dying.setFolder(large.dir.path());
            QTest::qWait(delay_ms);
        }
        // Receivers set the folder between the changes of the rows and after them.
        const auto restore = [&] {
            if (f.model.count() > 1 && f.model.folder() == large.dir.path()) {
                f.model.setFolder(f.dir.path());
                QTest::qWait(10);
            }
        };
        connect(&f.model, &FolderListModel::countChanged, restore);
        f.model.setFolder(large.dir.path());
        QTRY_COMPARE(f.names(), "only");
        connect(&f.model, &FolderListModel::rowsInserted, restore);
        f.model.setFolder(large.dir.path());
        QTRY_COMPARE(f.names(), "only");
        Fixture other;
        connect(&f.model, &FolderListModel::modelReset, [] { QTest::qWait(50); });
        f.model.setFolder(other.dir.path());
        QTRY_COMPARE(f.model.status(), FolderListModel::Ready);
    }

    void endsWhileADiskHangs() // This program ends.
    {
        s_disk.lock();
        FolderListModel model;
        model.setFolder("/");
        QCoreApplication::processEvents();
    }
};

QTEST_GUILESS_MAIN(TestFolderListModel)
#include "tst_folderlistmodel.moc"
