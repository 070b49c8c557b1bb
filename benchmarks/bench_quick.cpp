// The time until the first row of 10,000 events, and the cost of a live log on the screen for a
// thread that logs.

#include "ratiotable.h"
#include "runloopuntil.h"
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>
#include <zeltools/quick/eventhistorymodel.h>
#include <zeltools/quick/logmodel.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QStringListModel>
#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>

using zeltools::quick::EventHistoryModel;
using zeltools::quick::LogModel;

namespace
{

constexpr int s_events = 10000;
constexpr int s_lines = 1000; // between two updates of the model

QString eventsFile()
{
    return LogManager::instance()->filePath(LogManager::Events);
}

void writeEvents()
{
    QFile file(eventsFile());
    if (!file.open(QIODevice::WriteOnly))
        qFatal("the events file cannot be written");
    for (int i = 0; i < s_events; ++i)
        file.write("15/11/2026 03:37:40:123| DispensedDrinkEvent| Espresso " +
                   QByteArray::number(i) + " with 7.5 g of coffee\n");
}

QByteArray readEvents()
{
    QFile file(eventsFile());
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the events file cannot be read");
    return file.readAll();
}

void showFirstRow(const QAbstractItemModel& model, int role)
{
    benchmark::DoNotOptimize(model.data(model.index(0, 0), role).toString());
}

void readByModel(int rowsPerPage)
{
    EventHistoryModel model;
    model.setRowsPerPage(rowsPerPage);
    runLoopUntil([&] { return model.count() == rowsPerPage; });
    showFirstRow(model, EventHistoryModel::TextRole);
}

void readPlainly()
{
    const QStringListModel model(QString::fromUtf8(readEvents()).split(QLatin1Char('\n')));
    showFirstRow(model, Qt::DisplayRole);
}

// Only the logging counts. The model takes the lines in between, which an idle thread of the screen
// does at the same time.
void logLines(benchmark::State& state)
{
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < s_lines; ++i)
            LogFormatter(LogLevel::Info).log(Log::CanBus)
                << "The board answers after" << i << "ms, which is" << 1.5 << "times the usual";
        state.SetIterationTime(double(timer.nsecsElapsed()) / 1e9);
        QCoreApplication::processEvents();
    }
}

void logLinesToModel(benchmark::State& state)
{
    const LogModel model;
    logLines(state);
}

void addAll()
{
    const std::string events = "10,000 events, until the first row is there/";
    add((events + "ZelTools, all of them on a page").c_str(),
        [](auto& state) { repeat(state, [] { readByModel(s_events); }); });
    add((events + "ZelTools, 100 on a page").c_str(),
        [](auto& state) { repeat(state, [] { readByModel(100); }); });
    add((events + "readAll, split and QStringListModel").c_str(),
        [](auto& state) { repeat(state, readPlainly); });
    add((events + "readAll only").c_str(),
        [](auto& state) { repeat(state, [] { benchmark::DoNotOptimize(readEvents()); }); });
    const std::string lines = "1,000 lines to stderr and file/";
    add((lines + "ZelTools with a LogModel").c_str(), logLinesToModel)->UseManualTime();
    add((lines + "ZelTools without").c_str(), logLines)->UseManualTime();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    Path::instance()->init(folder.path() + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
    LogManager::initialize();
    LogManager::instance()->enableLogToFile(true);
    writeEvents();
    addAll();
    return RatioTable::run(argc, argv);
}
