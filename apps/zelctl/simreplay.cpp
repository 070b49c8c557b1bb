#include "readfile.h"
#include "simactions.h"
#include "stopsignals.h"
#include "words.h"

#include <QCoreApplication>

using namespace zeltools::simulatorkit;

ExitStatus replayRecording(const QString& path, const QString& address,
                           const LinkReplayer::Options& options, bool isJson)
{
    FileContent file = readFile(path, SimulatorRecording::maximumSize_B);
    if (!file.error.isEmpty())
        return fail(Failed, file.error);
    QString error;
    auto recording = SimulatorRecording::parse(file.bytes, error);
    if (!recording)
        return fail(Failed, path + QStringLiteral(": ") + error);
    file.bytes.clear();

    LinkReplayer replayer(*std::move(recording), options);
    QObject::connect(&replayer, &LinkReplayer::finished, [](const QString& difference) {
        QCoreApplication::exit(difference.isEmpty() ? Done : fail(Failed, difference));
    });
    const StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stopped, [] {
        QCoreApplication::exit(fail(Failed, Zelctl::tr("the replay was stopped")));
    });
    error = replayer.start(address);
    if (!error.isEmpty())
        return fail(Failed, error);
    if (printAddress(replayer.isListening(), replayer.address(), isJson) != Done)
        return Failed;
    return static_cast<ExitStatus>(QCoreApplication::exec());
}
