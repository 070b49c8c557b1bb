// The cost of a folder of 10,000 files, for the user and for the event loop, and of a change in a
// tree.

#include "ratiotable.h"
#include "runloopuntil.h"
#include <zeltools/folderlistmodel.h>
#include <zeltools/hierarchical/hierarchicaldbobject.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

using tools::HierarchicalDbObject;
using tools::datamodel::FolderListModel;

namespace
{

constexpr int s_files = 10000;

QString fileName(const QTemporaryDir& folder, int number)
{
    // Out of order, and of a realistic length.
    return folder.filePath(QStringLiteral("picture-%1.jpg").arg(quint32(number) * 2654435761U));
}

void touch(const QString& name)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s cannot be written", qPrintable(name));
}

const QTemporaryDir& largeFolder()
{
    static const QTemporaryDir folder;
    static const bool isFilled = [] {
        for (int number = 0; number < s_files; ++number)
            touch(fileName(folder, number));
        return true;
    }();
    Q_UNUSED(isFilled)
    return folder;
}

void waitFor(const FolderListModel& model, int count)
{
    runLoopUntil([&] { return model.count() == count; });
}

void listModel(benchmark::State& state)
{
    const QString folder = largeFolder().path();
    for (auto _ : state) {
        FolderListModel model;
        model.setFolder(folder);
        waitFor(model, s_files);
    }
}

void walkByQt(benchmark::State& state)
{
    const QString folder = largeFolder().path();
    for (auto _ : state) {
        qint64 sum = 0;
        QDirIterator files(folder, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
        while (files.hasNext()) {
            files.next();
            const QFileInfo info = files.fileInfo();
            sum += info.size() + info.lastModified().toMSecsSinceEpoch();
        }
        benchmark::DoNotOptimize(sum);
    }
}

void walkBySystem(benchmark::State& state)
{
    const QByteArray path = QFile::encodeName(largeFolder().path());
    for (auto _ : state) {
        qint64 sum = 0;
        const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(path.constData()), closedir);
        while (const dirent* entry = readdir(folder.get())) {
            struct stat status = {};
            fstatat(dirfd(folder.get()), entry->d_name, &status, 0);
            sum += status.st_size + status.st_mtim.tv_sec;
        }
        benchmark::DoNotOptimize(sum);
    }
}

// The longest time between two turns of a loop that has something to do all the time.
qint64 longestGap_ns(const std::function<bool()>& isDone)
{
    qint64 longest_ns = 0;
    QElapsedTimer sinceTurn;
    QTimer timer;
    QEventLoop loop;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        longest_ns = qMax(longest_ns, sinceTurn.nsecsElapsed());
        sinceTurn.start();
        if (isDone())
            loop.quit();
    });
    sinceTurn.start();
    timer.start(0);
    loop.exec();
    return longest_ns;
}

void gapOfModel(benchmark::State& state)
{
    const QString folder = largeFolder().path();
    for (auto _ : state) {
        FolderListModel model;
        model.setFolder(folder);
        const qint64 gap_ns = longestGap_ns([&] { return model.count() == s_files; });
        state.SetIterationTime(double(gap_ns) / 1e9);
    }
}

void gapOfIdleLoop(benchmark::State& state)
{
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        const qint64 gap_ns = longestGap_ns([&] { return timer.elapsed() >= 40; });
        state.SetIterationTime(double(gap_ns) / 1e9);
    }
}

// Every second file goes, one at a time between those that stay: as many changes of rows.
void gapOfRemovals(benchmark::State& state)
{
    const QTemporaryDir folder;
    FolderListModel model;
    model.setFolder(folder.path());
    for (auto _ : state) {
        for (int number = 0; number < s_files; ++number)
            touch(folder.filePath(QString::number(10 * s_files + number)));
        model.refresh();
        waitFor(model, s_files);
        for (int number = 0; number < s_files; number += 2)
            QFile::remove(folder.filePath(QString::number(10 * s_files + number)));
        model.refresh();
        const qint64 gap_ns = longestGap_ns([&] { return model.count() == s_files / 2; });
        state.SetIterationTime(double(gap_ns) / 1e9);
    }
}

void reverse(benchmark::State& state)
{
    FolderListModel model;
    model.setFolder(largeFolder().path());
    waitFor(model, s_files);
    QEventLoop loop;
    QObject::connect(&model, &FolderListModel::layoutChanged, &loop, &QEventLoop::quit);
    for (auto _ : state) {
        model.setSortReversed(!model.sortReversed());
        loop.exec();
    }
}

/// A chain of objects, or one with all others below it.
class Tree
{
public:
    Tree(int count, bool isDeep)
    {
        m_last = &m_root;
        for (int i = 0; i < count; ++i) {
            HierarchicalDbObject* const parent = isDeep ? m_last : &m_root;
            m_last = new HierarchicalDbObject;
            parent->addChild(m_last);
        }
        m_root.resetModified();
    }
    HierarchicalDbObject& root() { return m_root; }
    HierarchicalDbObject& last() { return *m_last; }

private:
    HierarchicalDbObject m_root;
    HierarchicalDbObject* m_last;
};

void changeOf(benchmark::State& state, int count, bool isDeep)
{
    Tree tree(count, isDeep);
    for (auto _ : state) {
        tree.last().setModified();
        tree.last().resetModified();
    }
    if (tree.root().isModified())
        state.SkipWithError("a change was not forgotten");
}

void changeAgain(benchmark::State& state, int count, bool isDeep)
{
    Tree tree(count, isDeep);
    for (auto _ : state)
        tree.last().setModified();
}

// The least cost of an object: a signal of its own.
void emitSignals(benchmark::State& state, int count)
{
    std::vector<QObject> objects(static_cast<size_t>(count));
    for (auto _ : state) {
        for (QObject& object : objects) {
            Q_EMIT object.objectNameChanged(QString(), {});
            Q_EMIT object.objectNameChanged(QString(), {});
        }
    }
}

void makeTree(benchmark::State& state, int count, bool isDeep)
{
    for (auto _ : state)
        Tree(count, isDeep);
}

void makeObjects(benchmark::State& state, int count)
{
    for (auto _ : state) {
        QObject root;
        for (int i = 0; i < count; ++i)
            new QObject(&root);
    }
}

template <typename Body>
void addGap(const char* name, Body body)
{
    add(name, body)->UseManualTime()->Iterations(3); // not until gaps add up to much
}

void addAll()
{
    add("10,000 files, until they are rows/ZelTools", listModel);
    add("10,000 files, until they are rows/readdir and fstatat", walkBySystem);
    add("10,000 files, until they are rows/QDirIterator", walkByQt);
    addGap("Longest gap in the event loop/ZelTools lists 10,000 files", gapOfModel);
    addGap("Longest gap in the event loop/nothing is listed, 40 ms", gapOfIdleLoop);
    addGap("Longest gap in the event loop/every second of 10,000 files is gone", gapOfRemovals);
    add("10,000 rows in reverse order/ZelTools", reverse);
    add("10,000 rows in reverse order/readdir and fstatat", walkBySystem);
    const auto change = [](const char* name, int count, bool isDeep) {
        add(name, [=](benchmark::State& state) { changeOf(state, count, isDeep); });
    };
    change("setModified() and resetModified()/ZelTools, depth 10,000", 10000, true);
    add("setModified() and resetModified()/2 signals of each of 10,000 objects",
        [](benchmark::State& state) { emitSignals(state, 10000); });
    change("setModified() and resetModified()/ZelTools, depth 10", 10, true);
    change("setModified() and resetModified()/ZelTools, one of 100,000 children", 100000, false);
    add("setModified() and resetModified()/ZelTools, already modified, depth 10,000",
        [](benchmark::State& state) { changeAgain(state, 10000, true); });
    add("A tree of 100,000 made and deleted/ZelTools, wide",
        [](benchmark::State& state) { makeTree(state, 100000, false); });
    add("A tree of 100,000 made and deleted/ZelTools, deep",
        [](benchmark::State& state) { makeTree(state, 100000, true); });
    add("A tree of 100,000 made and deleted/QObject, wide",
        [](benchmark::State& state) { makeObjects(state, 100000); });
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    Path::instance()->init(folder.path() + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize(); // until then every Debug line is printed
    addAll();
    return RatioTable::run(argc, argv);
}
