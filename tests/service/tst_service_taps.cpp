#include "demomachine.h"
#include "screen.h"

#include "quick/access.h"
#include "support.h"
#include "windowstools.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <climits>
#include <memory>

#include <unistd.h>

using zeltools::quick::Access;

namespace
{

const char* const s_pages[]{"overview", "events", "log",   "switches", "machine",
                            "threads",  "kernel", "files", "time",     "support"};

QAtomicInt s_warnings;
QtMessageHandler s_handler = nullptr;

void countWarnings(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        ++s_warnings;
    s_handler(type, context, text);
}

/// The resources of the process that must not grow over time.
struct Possessions
{
    int objects;
    int descriptors;
    qint64 memory_KiB;
};

qint64 residentMemory_KiB()
{
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The memory of the process is not known");
    return file.readAll().split(' ')[1].toLongLong() * sysconf(_SC_PAGESIZE) / 1024;
}

int objectsBelow(const QObject* object)
{
    int count = 1;
    for (const QObject* child : object->children())
        count += objectsBelow(child);
    if (const auto* const item = qobject_cast<const QQuickItem*>(object)) {
        const auto items = item->childItems();
        for (const QQuickItem* child : items) {
            if (child->parent() != object)
                count += objectsBelow(child);
        }
    }
    return count;
}

} // namespace

/// An impatient person in front of the screen: taps, drags and keys at random, for 20 seconds or
/// ZEL_TAPS_SECONDS, while the machine works and logs. ZEL_TAPS_SEED repeats a run.
class TestServiceTaps : public QObject
{
    Q_OBJECT

public:
    // A tap on the button that closes the screen does not end the test.
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() != QEvent::Close)
            return QObject::eventFilter(object, event);
        event->ignore();
        return true;
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("QTEST_FUNCTION_TIMEOUT")) // Qt's own is five minutes.
            QVERIFY2(usageTime_ms() < 240000, "Set QTEST_FUNCTION_TIMEOUT for such a long run");
        // Switching the time zone would switch that of this computer.
        WindowsTools::setCommandRunner([](const QString&, const QString&, int*) { return true; });
        m_machine = std::make_unique<DemoMachine>(m_folder.path(), std::chrono::milliseconds(40));
        s_handler = qInstallMessageHandler(countWarnings);
        m_screen = std::make_unique<Screen>(*m_machine);
        QVERIFY(m_screen->window());
        Access::instance()->setLevel(Access::Technician);
        Access::instance()->setUser("random");
        m_screen->resize({800, 480});
        m_screen->window()->installEventFilter(this);
        m_screen->window()->show();
        m_machine->coffeeMachine().start();
        connect(m_screen->window(), &QQuickWindow::afterAnimating, this,
                [this] { m_frame.start(); });
        connect(m_screen->window(), &QQuickWindow::frameSwapped, this,
                &TestServiceTaps::countFrame);
    }

    void nothingGrowsAndNothingWarns()
    {
        const qint64 time_ms = usageTime_ms();
        const quint32 seed = qEnvironmentVariableIsSet("ZEL_TAPS_SEED")
                                 ? qEnvironmentVariable("ZEL_TAPS_SEED").toUInt()
                                 : QRandomGenerator::global()->generate();
        m_random.seed(seed);
        useFor(time_ms * 2 / 5);
        const Possessions before = possessions();
        useFor(time_ms * 3 / 5);
        const Possessions after = possessions();
        qInfo("Seed %u: %d taps, drags and keys, %d frames, the slowest %lld ms; objects %d, then "
              "%d; descriptors %d, then %d; memory %lld KiB, then %lld KiB",
              seed, m_actions, m_frames, m_slowest_ms, before.objects, after.objects,
              before.descriptors, after.descriptors, before.memory_KiB, after.memory_KiB);
        QCOMPARE(s_warnings.loadRelaxed(), 0);
        QVERIFY(m_frames > 10 * time_ms / 1000);
        QVERIFY2(m_slowFrames < m_frames / 50, qPrintable(QString::number(m_slowFrames)));
        // A page has some objects more or less by what it shows at the moment.
        QVERIFY(after.objects < before.objects + 50);
        QVERIFY(after.descriptors <= before.descriptors + 1);
        if (IS_MEMORY_MEASURED) // A sanitizer keeps freed memory.
            QVERIFY(after.memory_KiB < before.memory_KiB + 8192);
    }

    void cleanupTestCase()
    {
        m_screen.reset();
        m_machine.reset();
    }

private:
    static qint64 usageTime_ms()
    {
        const int time_s = qEnvironmentVariableIntValue("ZEL_TAPS_SECONDS");
        return qint64(time_s > 0 ? time_s : 20) * 1000;
    }

    void useFor(qint64 time_ms)
    {
        QElapsedTimer timer;
        timer.start();
        for (int turn = 0; !timer.hasExpired(time_ms); ++turn) {
            constexpr int actionsPerPage = 25;
            if (turn % actionsPerPage == 0)
                showPage(turn / actionsPerPage);
            act();
            QTest::qWait(m_random.bounded(12));
        }
    }

    // The host changes more than the page while dialogs are open.
    void showPage(int number)
    {
        constexpr const char* languages[]{"en", "ar", "de", "it"};
        m_screen->set("page", s_pages[number % 10]);
        m_screen->set("language", languages[number % 4]);
        m_screen->set("accessLevel", number % 7 == 6 ? Access::ReadOnly : Access::Technician);
        m_screen->set("dark", number % 4 < 2);
        m_screen->resize(number % 8 < 4 ? QSize(800, 480) : QSize(1280, 800));
    }

    void act()
    {
        ++m_actions;
        const int kind = m_random.bounded(10);
        if (kind < 6)
            QTest::mouseClick(m_screen->window(), Qt::LeftButton, {}, anyPoint());
        else if (kind < 8)
            drag(anyPoint(), anyPoint());
        else
            pressKey();
    }

    void drag(QPoint from, QPoint to)
    {
        QWindow* const window = m_screen->window();
        constexpr int steps = 5;
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        for (int step = 1; step <= steps; ++step)
            QTest::mouseMove(window, from + (to - from) * step / steps, 4);
        QTest::mouseRelease(window, Qt::LeftButton, {}, to);
    }

    void pressKey()
    {
        constexpr Qt::Key keys[]{Qt::Key_Tab,    Qt::Key_Return, Qt::Key_Escape, Qt::Key_Backspace,
                                 Qt::Key_Space,  Qt::Key_Up,     Qt::Key_Down,   Qt::Key_PageDown,
                                 Qt::Key_Delete, Qt::Key_1,      Qt::Key_A,      Qt::Key_E};
        QTest::keyClick(m_screen->window(), keys[m_random.bounded(12)]);
    }

    QPoint anyPoint()
    {
        const QSize size = m_screen->window()->size();
        return {m_random.bounded(size.width()), m_random.bounded(size.height())};
    }

    // On one and the same page, after what is to be deleted is deleted.
    Possessions possessions()
    {
        showPage(0);
        for (const char* page : {"support", "overview"}) {
            m_screen->set("page", page);
            QTest::keyClick(m_screen->window(), Qt::Key_Escape);
            QTest::qWait(500);
        }
        m_screen->collectGarbage();
        QTest::qWait(100);
        return {objectsBelow(m_screen->window()) + objectsBelow(m_screen->window()->contentItem()),
                descriptors(), residentMemory_KiB()};
    }

    // The fewest of some time: threads open files for a moment.
    static int descriptors()
    {
        int fewest = INT_MAX;
        for (int i = 0; i < 20; ++i) {
            QTest::qWait(25);
            const int count = QDir("/proc/self/fd")
                                  .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
                                  .size();
            fewest = std::min(fewest, count);
        }
        return fewest;
    }

    void countFrame()
    {
        ++m_frames;
        constexpr qint64 slow_ms = 200; // which a person sees
        m_slowest_ms = std::max(m_slowest_ms, m_frame.elapsed());
        m_slowFrames += m_frame.hasExpired(slow_ms) ? 1 : 0;
    }

    QTemporaryDir m_folder;
    std::unique_ptr<DemoMachine> m_machine;
    std::unique_ptr<Screen> m_screen;
    QRandomGenerator m_random;
    QElapsedTimer m_frame;
    int m_actions = 0;
    int m_frames = 0;
    int m_slowFrames = 0;
    qint64 m_slowest_ms = 0;
};

QTEST_MAIN(TestServiceTaps)
#include "tst_service_taps.moc"
