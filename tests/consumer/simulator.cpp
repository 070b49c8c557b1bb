#include <zeltools/envvar/envvarstore.h>
#include <zeltools/simulationinterface/createinterface.h>
#include <zeltools/simulatorkit/simulator.h>

#include <QCoreApplication>

#include <memory>

using namespace zeltools::simulationinterface;
using namespace zeltools::simulatorkit;

// A simulator greets a machine in the same process.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    // The library's own switches are known although this host names none.
    if (zeltools::envvar::EnvVarStore::instance().vars().size() != 96)
        return 2;

    QString error;
    const auto script =
        SimulatorScript::parse("zelsim script 1\nconnected answer \"hello\"\n", error);
    const std::unique_ptr<SimulationInterface> link(
        createInterface(QStringLiteral("tcpserver/127.0.0.1/0"), nullptr));
    const Simulator simulator(script.value(), *link);
    const std::unique_ptr<SimulationInterface> machine(createInterface(
        link->localAddress().replace(QLatin1String("server"), QLatin1String("client")), nullptr));
    QObject::connect(
        machine.get(), &SimulationInterface::dataReceived,
        [](const QByteArray& message) { QCoreApplication::exit(message == "hello" ? 0 : 1); });
    return QCoreApplication::exec();
}
