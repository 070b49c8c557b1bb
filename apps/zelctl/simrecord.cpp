#include "simactions.h"
#include "stopsignals.h"
#include <zeltools/simulatorkit/linkrecorder.h>

#include <QCoreApplication>

using namespace zeltools::simulatorkit;

ExitStatus recordLink(const QString& simulator, const QString& machine, const QString& path,
                      bool isJson)
{
    LinkRecorder recorder;
    QObject::connect(&recorder, &LinkRecorder::problemOccurred,
                     [](const QString& problem) { fail(Failed, problem); });
    const StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stopped, [] { QCoreApplication::exit(); });
    const QString error = recorder.start(machine, simulator, path);
    if (!error.isEmpty())
        return fail(Failed, error);
    for (const LinkSide side : {LinkSide::Machine, LinkSide::Simulator}) {
        const QString address = recorder.listeningAddress(side);
        if (!address.isEmpty() && printAddress(true, address, isJson) != Done)
            return Failed;
    }
    QCoreApplication::exec();
    recorder.stop();
    return recorder.fileError().isEmpty() ? Done : Failed;
}
