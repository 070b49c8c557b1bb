#include "linkedgrinder.h"

#include "timedgrinder.h"

#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/simulationinterface/createinterface.h>

using tools::EventGroupHandler;
using namespace std::chrono_literals;
using namespace zeltools::envvar;
using zeltools::simulationinterface::createInterface;
using zeltools::simulationinterface::SimulationInterface;

EnvVarString switches::grinder("GRINDER", "Address of the grinder, e.g. tcpclient/127.0.0.1/8140",
                               General, Visible, nullptr);

namespace
{

bool isGround(const QVariant& answer)
{
    LogFormatter(LogLevel::Info).log(Log::GrinderRegulation)
        << "The grinder answers" << answer.toString();
    return answer.toByteArray() == "ground";
}

} // namespace

//! [constructor]
LinkedGrinder::LinkedGrinder(const QString& address)
    : m_link(createInterface(address, nullptr))
    , m_request(3, 2s) // attempts, and the time that each waits for an answer
{
    m_request.setConnectionScope(EventGroupHandler::ConnectionScope::Handler);
    connect(&m_request, &EventGroupHandler::success, this, &Grinder::ground);
    connect(&m_request, &EventGroupHandler::failure, this, &Grinder::jammed);
    if (m_link == nullptr)
        return;
    connect(m_link.get(), &SimulationInterface::connectedChanged, this, [this] {
        if (m_link->connected())
            Q_EMIT ready();
    });
}
//! [constructor]

LinkedGrinder::~LinkedGrinder() = default;

//! [grind]
void LinkedGrinder::grind(int dose_g)
{
    const auto ask = [this, dose_g] { m_link->write("grind " + QByteArray::number(dose_g)); };
    const auto listen = [this](EventGroupHandler* request) {
        return std::make_shared<QMetaObject::Connection>(
            connect(m_link.get(), &SimulationInterface::dataReceived, request,
                    [request](const QByteArray& answer) { request->checkResult(answer); }));
    };
    m_request.addEvent(tools::EventSteps{ask, listen, isGround});
    m_request.start();
}
//! [grind]

//! [make]
std::unique_ptr<Grinder> makeGrinder()
{
    if (switches::grinder().isEmpty())
        return std::make_unique<TimedGrinder>();
    return std::make_unique<LinkedGrinder>(switches::grinder());
}
//! [make]
