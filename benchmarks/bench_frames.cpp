// The processor time of a frame while a page of the service screen with 10,000 rows scrolls by a
// row and a bit, beside a plain list of texts and a window in which one rectangle moves. The
// windows have 1280x800 pixels and no display, and are drawn by the software renderer.

#include "ratiotable.h"
#include "runloopuntil.h"
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QFile>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>

#include <time.h>

namespace
{

constexpr int s_rows = 10000;

void logRows()
{
    constexpr int atOnce = 500; // The model of the page takes them when the loop runs.
    for (int i = 0; i < s_rows; ++i) {
        LogFormatter(LogLevel::Info).log(Log::CanBus)
            << "The board answers after" << i << "ms, which is twice the usual time";
        if (i % atOnce == 0)
            QCoreApplication::processEvents();
    }
}

void makeFiles(const QString& folder)
{
    for (int i = 0; i < s_rows; ++i) {
        QFile file(folder + QStringLiteral("/recipe-%1.json").arg(i));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("the files cannot be made");
    }
}

QQuickItem* findItem(QQuickItem* item, const QString& name)
{
    if (item->objectName() == name)
        return item;
    const QList<QQuickItem*> children = item->childItems();
    for (QQuickItem* child : children) {
        if (QQuickItem* const found = findItem(child, name))
            return found;
    }
    return nullptr;
}

double processorTime_s()
{
    constexpr double nanoseconds = 1e9;
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / nanoseconds;
}

/// A window with an item of the given name, whose property contentY grows from frame to frame.
class Scene
{
public:
    Scene(const QByteArray& content, const char* item)
    {
        m_engine.addImportPath(QML_PATH);
        m_engine.loadData("import QtQuick 2.15\nimport QtQuick.Window 2.15\n"
                          "import ZelTools.Service 1.0\n"
                          "Window { width: 1280; height: 800; visible: true\n" +
                          content + "}");
        m_window = qobject_cast<QQuickWindow*>(m_engine.rootObjects().value(0));
        if (m_window == nullptr)
            qFatal("the window cannot be made");
        QObject::connect(m_window, &QQuickWindow::frameSwapped, m_window, [this] { ++m_frames; });
        runLoopUntil([&] {
            m_item = findItem(m_window->contentItem(), QLatin1String(item));
            return m_item != nullptr;
        });
    }

    int rowsCount() const { return m_item->property("count").toInt(); }

    /// Returns the processor time of one frame.
    double drawFrame()
    {
        constexpr int way = 400;    // how many steps it goes before it turns
        constexpr double step = 67; // a row and a bit
        const int place = std::abs(m_steps++ % (2 * way) - way);
        const int frames = m_frames;
        const double start_s = processorTime_s();
        m_item->setProperty("contentY", step * place);
        runLoopUntil([&] { return m_frames > frames; });
        return processorTime_s() - start_s;
    }

private:
    QQmlApplicationEngine m_engine;
    QQuickWindow* m_window = nullptr;
    QQuickItem* m_item = nullptr;
    int m_frames = 0;
    int m_steps = 0;
};

/// A row a scene: the processor time of the slowest of so many frames.
void addTable(const std::string& group, int frames,
              const std::vector<std::pair<std::string, Scene*>>& scenes)
{
    for (const auto& [name, scene] : scenes) {
        add((group + '/' + name).c_str(),
            [frames, scene = scene](benchmark::State& state) {
                for (auto _ : state) {
                    double slowest_s = 0;
                    for (int i = 0; i < frames; ++i)
                        slowest_s = std::max(slowest_s, scene->drawFrame());
                    state.SetIterationTime(slowest_s);
                }
            })
            ->UseManualTime()
            ->Iterations(frames == 1 ? 60 : 1);
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    const QTemporaryDir files;
    makeFiles(files.path());
    Path::instance()->init(folder.path() + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize();

    Scene log("Service { anchors.fill: parent; page: \"log\" }", "log.list");
    Scene list("Service { anchors.fill: parent; page: \"files\"; folders: [\"" +
                   files.path().toUtf8() + "\"] }",
               "files.list");
    Scene plain("ListView { objectName: \"plain\"; anchors.fill: parent; model: 10000\n"
                "delegate: Text { height: 56; text: \"The board answers after \" + index } }",
                "plain");
    Scene rectangle("Rectangle { objectName: \"moving\"; width: 1280; height: 56; color: \"red\"\n"
                    "property real contentY; y: contentY % 700 }",
                    "moving");
    logRows();
    runLoopUntil([&] { return log.rowsCount() >= s_rows && list.rowsCount() >= s_rows; });
    const std::vector<std::pair<std::string, Scene*>> scenes{
        {"ZelTools, the log", &log},
        {"ZelTools, a folder", &list},
        {"ListView with a text in each row", &plain},
        {"a rectangle that moves", &rectangle}};
    constexpr int framesOfASecond = 60;
    addTable("a frame", 1, scenes);
    addTable("the slowest of 60 frames", framesOfASecond, scenes);
    return RatioTable::run(argc, argv);
}
