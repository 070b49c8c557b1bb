// The service screen of a demo machine, in a window or as pictures.

#include "demomachine.h"
#include "fixedclock.h"
#include "fixedfacts.h"
#include "options.h"
#include "picturetaker.h"
#include "screen.h"
#include "startmeter.h"

#include <zeltools/logging/lognode.h>
#include <zeltools/monitoredthreads/monitor.h>
#include <zeltools/quick/library.h>

#include <QDir>
#include <QEventLoop>
#include <QGuiApplication>
#include <QLocale>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

using namespace std::chrono_literals;
using zeltools::quick::Access;

namespace
{

constexpr auto s_pace = 1s;
const QDateTime s_morning(QDate(2024, 3, 1), QTime(8, 0), Qt::UTC);

// Pictures shall not depend on the display, the language and the time zone of this computer.
void prepareForPictures()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QT_FONT_DPI", "96");
    qputenv("TZ", "UTC");
    qputenv("LC_ALL", "C.UTF-8");
    fixedclock::set(s_morning);
    fixedfacts::use();
}

// The machine makes the same drinks each time, then it waits in the middle of one.
void makeDrinks(CoffeeMachine& machine)
{
    machine.holdInBrewing();
    machine.start();
    constexpr qint64 step_ms = 10;
    while (!machine.isHeld()) {
        QCoreApplication::processEvents();
        fixedclock::advance(step_ms);
    }
    constexpr qint64 inBrewing_ms = 8000;
    fixedclock::advance(inBrewing_ms);
}

int s_warnings = 0;
QtMessageHandler s_messageHandler = nullptr;

void countWarnings(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        ++s_warnings;
    s_messageHandler(type, context, text);
}

// Returns whether the pictures are there and no page has a fault that QML warns of.
bool takePictures(const Options& options, const QString& folder)
{
    const QString pictureFolder = QDir(options.pictureFolder).absolutePath();
    QDir::setCurrent(folder); // The pages show paths below it.
    constexpr qint64 betweenLines_ms = 12345;
    const QMetaObject::Connection clock = QObject::connect(
        LogNode::instance(), &LogNode::logged, [] { fixedclock::advance(betweenLines_ms); });
    DemoMachine machine(QStringLiteral("machine"), s_pace);
    QObject::disconnect(clock);
    monitored_threads::Monitor::instance()->setLimits(1h, 1h); // A busy computer makes none late.
    makeDrinks(machine.coffeeMachine());
    s_messageHandler = qInstallMessageHandler(countWarnings);
    Screen screen(machine);
    return screen.window() != nullptr && PictureTaker(screen, pictureFolder).takeAll() &&
           s_warnings == 0;
}

int show(const Options& options, const QString& folder)
{
    DemoMachine machine(folder, s_pace);
    machine.coffeeMachine().start();
    Screen screen(machine);
    if (screen.window() == nullptr)
        return 1;
    screen.resize(options.size);
    screen.set("dark", !options.isLight);
    if (!options.language.isEmpty())
        screen.set("language", options.language);
    const std::unique_ptr<StartMeter> meter(
        options.isStartMeasured ? new StartMeter(screen.window()) : nullptr);
    screen.window()->show();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    const Options options = Options::parse(argc, argv);
    const bool arePicturesTaken = !options.pictureFolder.isEmpty();
    if (arePicturesTaken)
        prepareForPictures();
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("service"));
    QCoreApplication::setApplicationVersion(QStringLiteral("4.2.1"));

    if (!options.language.isEmpty() &&
        !zeltools::quick::Library().languages().contains(options.language)) {
        QTextStream(stderr) << "No such language: " << options.language << '\n';
        return 2;
    }

    const QTemporaryDir temporary;
    const QString folder = options.folder.isEmpty() ? temporary.path() : options.folder;
    if (!QDir().mkpath(folder)) {
        QTextStream(stderr) << "The folder " << folder << " cannot be created.\n";
        return 1;
    }
    Access::instance()->setLevel(options.level);
    Access::instance()->setUser(QStringLiteral("demo"));
    if (arePicturesTaken)
        return takePictures(options, folder) ? 0 : 1;
    return show(options, folder);
}
