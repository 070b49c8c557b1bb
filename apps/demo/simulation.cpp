#include "simulation.h"

#include <zeltools/simulationinterface/createinterface.h>
#include <zeltools/system/simulateddatetimemanager.h>

#include <QEventLoop>
#include <QTcpServer>
#include <QTimer>

#include <chrono>
#include <memory>

using zeltools::simulationinterface::createInterface;
using zeltools::simulationinterface::SimulationInterface;
using zeltools::system::SimulatedDateTimeManager;

namespace
{

using namespace std::chrono_literals;

constexpr auto s_timeout = 10s;
constexpr int s_isDone = 1;

// Returns false after a timeout.
bool runLoop(QEventLoop& loop)
{
    QTimer::singleShot(s_timeout, &loop, [&] { loop.exit(0); });
    return loop.exec() == s_isDone;
}

QString freeAddress()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return QStringLiteral("127.0.0.1/%1").arg(server.serverPort());
}

} // namespace

bool askBoiler(QTextStream& out)
{
    const QString address = freeAddress();
    const std::unique_ptr<SimulationInterface> machine(
        createInterface(QLatin1String("tcpserver/") + address, nullptr));
    const std::unique_ptr<SimulationInterface> boiler(
        createInterface(QLatin1String("tcpclient/") + address, nullptr));
    QObject::connect(boiler.get(), &SimulationInterface::dataReceived,
                     [&](const QByteArray& question) {
                         if (question == "temperature")
                             boiler->write("92.5");
                     });

    QEventLoop loop;
    double temperature = 0;
    QObject::connect(machine.get(), &SimulationInterface::connectedChanged, &loop, [&] {
        if (machine->connected())
            machine->write("temperature");
    });
    QObject::connect(machine.get(), &SimulationInterface::dataReceived, &loop,
                     [&](const QByteArray& answer) {
                         temperature = answer.toDouble();
                         loop.exit(s_isDone);
                     });
    const bool hasAnswered = runLoop(loop);
    out << "\nThe simulated boiler has " << temperature << " degrees.\n";
    return hasAnswered;
}

bool followClock(const QString& address, QTextStream& out)
{
    SimulatedDateTimeManager clock(address);
    out << "\nThe clock waits for its simulator, " << address << ".\n";
    out.flush();
    QEventLoop loop;
    QObject::connect(&clock, &SimulatedDateTimeManager::dateTimeChanged, &loop, [&] {
        // The signal at the end of each minute does not count.
        if (qAbs(clock.currentDateTime().secsTo(QDateTime::currentDateTime())) > 1)
            loop.exit(s_isDone);
    });
    const bool isSet = runLoop(loop);
    const QDateTime now = clock.currentDateTime(), next = now.addDays(1);
    out << "It shows " << now.toString(Qt::ISODate) << ", and is asked to show "
        << next.toString(Qt::ISODate) << ".\n";
    out.flush();
    clock.setDateTime(next, true);
    return isSet;
}
