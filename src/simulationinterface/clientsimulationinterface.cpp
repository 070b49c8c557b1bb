#include "simulationinterface/clientsimulationinterface.h"

#include "simulationinterface/linksocket_p.h"

#include <QSignalBlocker>

#include <chrono>

namespace zeltools::simulationinterface
{

using namespace std::chrono_literals;

ClientSimulationInterface::ClientSimulationInterface(QObject* parent)
    : SimulationInterface(parent)
    , m_socket(LinkSocket::share(new QTcpSocket))
    , m_reconnectTimer(this)
{
    m_reconnectTimer.setInterval(3000ms);
}

ClientSimulationInterface::~ClientSimulationInterface()
{
    m_socket->close(this);
}

bool ClientSimulationInterface::connected() const
{
    return (*m_socket)->state() == QAbstractSocket::ConnectedState;
}

QByteArray ClientSimulationInterface::incomingData()
{
    return m_socket->readAvailable();
}

bool ClientSimulationInterface::writeSerializedData(const QByteArray& frame)
{
    return countWritten(frame, connected() && m_socket->write(frame));
}

QString ClientSimulationInterface::peerAddress() const
{
    return connected() ? m_socket->peerAddress() : QString();
}

void ClientSimulationInterface::closeConnection()
{
    const std::shared_ptr<LinkSocket> kept = m_socket;
    if (connected())
        kept->close();
}

void ClientSimulationInterface::start()
{
    connectSignals();
    m_reconnectTimer.start();
    tryToConnect(); // An AF_UNIX endpoint may be connected, or even deleted, in this call.
}

void ClientSimulationInterface::connectSignals()
{
    connect(&m_reconnectTimer, &QTimer::timeout, this, &ClientSimulationInterface::tryToConnect);
    connect(m_socket->get(), &QTcpSocket::connected, this,
            &ClientSimulationInterface::beginConnection);
    connect(
        m_socket->get(), &QTcpSocket::disconnected, this,
        [this] {
            m_reconnectTimer.start();
            Q_EMIT connectedChanged();
        },
        Qt::QueuedConnection);
    connect(m_socket->get(), &QTcpSocket::readyRead, this, [this] {
        const std::shared_ptr<LinkSocket> kept = m_socket;
        kept->processWith(*this);
    });
}

void ClientSimulationInterface::beginConnection()
{
    const std::shared_ptr<LinkSocket> kept = m_socket;
    if (kept->isConnectedToItself()) {
        const QSignalBlocker blocker(kept->get()); // The endpoint was never connected.
        (*kept)->abort();
        return;
    }
    m_reconnectTimer.stop();
    dropIncompleteFrame();
    Q_EMIT connectedChanged();
}

void ClientSimulationInterface::tryToConnect()
{
    // The socket would log a warning for a second attempt while one is pending, and would drop the
    // unread bytes of the previous connection.
    if ((*m_socket)->state() == QAbstractSocket::UnconnectedState && !m_socket->isBeingProcessed())
        openConnection(**m_socket);
}

} // namespace zeltools::simulationinterface
