#include "readfile.h"
#include "simactions.h"
#include "stopsignals.h"
#include "words.h"
#include <zeltools/logging/lognode.h>
#include <zeltools/simulationinterface/createinterface.h>
#include <zeltools/simulationinterface/serversimulationinterface.h>
#include <zeltools/simulatorkit/simulator.h>

#include <QCoreApplication>

#include <memory>

using namespace zeltools::simulatorkit;
using namespace zeltools::simulationinterface;

namespace
{

void endAfterFirstConnection(SimulationInterface& link)
{
    QObject::connect(&link, &SimulationInterface::connectedChanged, &link,
                     [&link, wasConnected = false]() mutable {
                         if (wasConnected && !link.connected())
                             QCoreApplication::exit(Done);
                         wasConnected = link.connected();
                     });
}

} // namespace

ExitStatus printAddress(bool isListening, const QString& address, bool isJson)
{
    if (isJson)
        return printJson(jsonObject({{isListening ? "listening" : "connecting", address}}));
    // Scripts wait for these words, so they are not translated.
    return printLine(
        (isListening ? QStringLiteral("listening on ") : QStringLiteral("connecting to ")) +
        address);
}

ExitStatus serveScript(const QString& path, const QString& address, bool isOnce, bool isJson)
{
    const FileContent file = readFile(path, SimulatorScript::maximumSize_B);
    if (!file.error.isEmpty())
        return fail(Failed, file.error);
    QString error;
    const auto script = SimulatorScript::parse(file.bytes, error);
    if (!script)
        return fail(Failed, path + QStringLiteral(": ") + error);

    const std::unique_ptr<SimulationInterface> link(createInterface(address, nullptr));
    const auto* const server = qobject_cast<ServerSimulationInterface*>(link.get());
    if (server != nullptr && !server->listenError().isEmpty())
        return fail(Failed,
                    Zelctl::tr("cannot listen on %1: %2").arg(address, server->listenError()));
    if (isOnce)
        endAfterFirstConnection(*link);
    const StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stopped, [] { QCoreApplication::exit(Done); });
    QObject::connect(LogNode::instance(), &LogNode::logged, link.get(),
                     [](LogLevel::Level level, const auto&, const QString& line) {
                         if (level >= LogLevel::Warning)
                             fail(Failed, line);
                     });
    const Simulator simulator(*script, *link);
    if (printAddress(server != nullptr, server != nullptr ? link->localAddress() : address,
                     isJson) != Done)
        return Failed;
    return static_cast<ExitStatus>(QCoreApplication::exec());
}
