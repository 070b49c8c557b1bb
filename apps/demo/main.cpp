// A machine application in miniature. It starts like a real one, makes drinks until a log file
// rotates, and shows which lines reached which file. The exit status is 0 only if all are right.

#include "bundle.h"
#include "crashes.h"
#include "cycles.h"
#include "diagnosis.h"
#include "drinkcycle.h"
#include "linetally.h"
#include "logfolder.h"
#include "settings.h"
#include "simulation.h"
#include "stall.h"
#include "stalledmachine.h"
#include "stalledthread.h"
#include "switches.h"

#include <zeltools/libraryversion.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>
#include <zeltools/windowstools.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

namespace
{

void startLogging(const QString& folder)
{
    Path::instance()->init(folder + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize();
    qInstallMessageHandler(LogManager::qtMessageHandler);

    LogManager* manager = LogManager::instance();
    manager->enableLogToFile(true);
    manager->setAppLogFileMaximumSizeMiB(16.0 / 1024); // so small that it rotates soon
    manager->enableModulesDebuggingFromEnvVars();
    manager->disableModuleDebugging(Log::Payment); // The table relies on these four.
    manager->disableModuleDebugging(Log::CanBus);
    manager->enableModuleDebugging(Log::Beverage); // also without an environment file
    manager->enableModuleDebugging(Log::GrinderRegulation);
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::ApplicationStartEvent).noquote()
        << LogManager::APP_STARTED_MSG;
}

bool makeDrinksUntilRotation(LineTally& tally)
{
    const QString predecessor = LogManager::instance()->appLogFilePath() + QLatin1String(".1");
    constexpr int mostDrinks = 1000;
    for (int drink = 1; drink <= mostDrinks; ++drink) {
        makeDrink(drink, tally);
        QCoreApplication::processEvents(); // With LOG_FROM_MAIN_THREAD=1, lines wait for the event
                                           // loop.
        if (QFile::exists(predecessor))
            return true;
    }
    return false;
}

void printHistory(QTextStream& out)
{
    LogManager* manager = LogManager::instance();
    constexpr int eventsPerPage = 8;
    manager->updateEventsText(LogManager::DispensedDrinkFilter, QString(), QString(), 0,
                              eventsPerPage);
    out << "\nDispensed drinks, page 0 of " << manager->eventsPagesCount() << ":\n";
    const QStringList events = manager->eventsTextList();
    for (const QString& line : events)
        out << "  " << line << '\n';
}

// Returns whether every line of the drinks is where it belongs, and the settings are saved.
bool makeDrinks(QTextStream& out)
{
    LineTally tally;
    LogFolder logFolder;
    const bool hasRotated = makeDrinksUntilRotation(tally);
    LogManager::instance()->flush(); // LOG_DELIVERY=buffered may be set.
    LogManager::instance()->syncLogs();
    printHistory(out);
    const bool areFilesShown = logFolder.show(out);
    const bool isSaved = changeSettings(out) && changeAndSaveSwitches(out);
    tally.readFiles(Path::instance()->debugLogsDir, Path::instance()->eventLogsDir);
    LogManager::instance()->finalizeLogFiles();
    out << '\n' << tally.table() << '\n';
    return hasRotated && areFilesShown && isSaved && tally.isComplete();
}

struct Options
{
    QString folder;
    QString environment;
    QString diagram;
    QString clock;
};

// Returns whether everything went right.
bool runMachine(const Options& options, QTextStream& out)
{
    out << "ZelTools " << zeltools::libraryVersion().toString() << '\n';
    loadSwitches(options.environment, out);
    const bool isRecovered = showStall(options.diagram, out);
    startLogging(options.folder);
    linkSwitches();
    WindowsTools::installSignalHandlers();
    const bool haveCyclesRun = runCycles(options.diagram, out);
    bool isSimulated = askBoiler(out);
    if (!options.clock.isEmpty())
        isSimulated = followClock(options.clock, out) && isSimulated;
    const bool isDiagnosed =
        showKernelLog(out) && showCallStack(out) && showStalledThread(out) && showCrashes(out);
    const bool areLinesRight = makeDrinks(out);
    const bool isBundled = showBundle(options.folder, out);
    return isRecovered && haveCyclesRun && isSimulated && isDiagnosed && areLinesRight && isBundled;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("demo"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A machine application in miniature."));
    parser.addHelpOption();
    const QString directory = QStringLiteral("dir");
    const QString environment = QStringLiteral("environment");
    const QString diagram = QStringLiteral("diagram");
    const QString clock = QStringLiteral("clock");
    const QString machine = QStringLiteral("machine");
    parser.addOptions({
        {directory,
         QStringLiteral("Keep the machine's folders in <DIR>, which must be empty or new."),
         QStringLiteral("DIR")},
        {environment, QStringLiteral("Load the switches from <FILE>; see apps/demo/environment."),
         QStringLiteral("FILE")},
        {diagram, QStringLiteral("Write pictures of the drink's state machine to <DIR>."),
         QStringLiteral("DIR")},
        {clock, QStringLiteral("Let `zelctl clock` set the clock over the link <ADDRESS>."),
         QStringLiteral("ADDRESS")},
    });
    QCommandLineOption machineOption(machine, QString(), QStringLiteral("MODE"));
    machineOption.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(machineOption);
    parser.process(application);
    if (isCrashingMachine(parser.value(machine)))
        return runCrashingMachine(parser.value(machine), parser.value(directory));
    if (parser.isSet(machine)) // This process is one of those that showStall() starts.
        return runStalledMachine(parser.value(machine), parser.value(directory));

    QTextStream out(stdout);
    const QTemporaryDir temporary;
    const QString folder = parser.isSet(directory) ? parser.value(directory) : temporary.path();
    if (!QDir().mkpath(folder) || !QDir(folder).isEmpty()) {
        QTextStream(stderr) << folder << " is not an empty folder\n";
        return 1;
    }

    const bool isRight = runMachine(
        {folder, parser.value(environment), parser.value(diagram), parser.value(clock)}, out);
    out << (isRight ? "Every line is where it belongs.\n"
                    : "FAILED: something is missing, misplaced or went wrong.\n");
    return isRight ? 0 : 1;
}
