#include "simulationinterface/tcpclientsimulationinterface.h"

#include "simulationinterface/tcpsocket_p.h"

#include <QSignalBlocker>

#include <chrono>

namespace zeltools::simulationinterface
{

using namespace std::chrono_literals;

TcpClientSimulationInterface::TcpClientSimulationInterface(
    const SimulationInterfaceAddress& address, QObject* parent)
    : SimulationInterface(parent)
    , m_socket(TcpSocket::share(new QTcpSocket))
    , m_reconnectTimer(this)
    , m_address(TcpSimulationInterfaceCommon::parseAddress(address.address))
{
    if (!m_address)
        return;
    m_reconnectTimer.setInterval(3000ms);
    connectSignals();
    tryToConnect();
    m_reconnectTimer.start();
}

TcpClientSimulationInterface::~TcpClientSimulationInterface()
{
    m_socket->close(this);
}

bool TcpClientSimulationInterface::isAddressValid() const
{
    return m_address.has_value();
}

bool TcpClientSimulationInterface::connected() const
{
    return (*m_socket)->state() == QAbstractSocket::ConnectedState;
}

QByteArray TcpClientSimulationInterface::incomingData()
{
    return m_socket->readAvailable();
}

bool TcpClientSimulationInterface::writeSerializedData(const QByteArray& frame)
{
    return connected() && m_socket->write(frame);
}

void TcpClientSimulationInterface::connectSignals()
{
    connect(&m_reconnectTimer, &QTimer::timeout, this, &TcpClientSimulationInterface::tryToConnect);
    connect(m_socket->get(), &QTcpSocket::connected, this,
            &TcpClientSimulationInterface::beginConnection);
    connect(
        m_socket->get(), &QTcpSocket::disconnected, this,
        [this] {
            m_reconnectTimer.start();
            Q_EMIT connectedChanged();
        },
        Qt::QueuedConnection);
    connect(m_socket->get(), &QTcpSocket::readyRead, this, [this] {
        const std::shared_ptr<TcpSocket> kept = m_socket;
        kept->processWith(*this);
    });
}

void TcpClientSimulationInterface::beginConnection()
{
    const std::shared_ptr<TcpSocket> kept = m_socket;
    if (kept->isConnectedToItself()) {
        const QSignalBlocker blocker(kept->get()); // The endpoint was never connected.
        (*kept)->abort();
        return;
    }
    m_reconnectTimer.stop();
    dropIncompleteFrame();
    Q_EMIT connectedChanged();
}

void TcpClientSimulationInterface::tryToConnect()
{
    // The socket would log a warning for a second attempt while one is pending, and would drop the
    // unread bytes of the previous connection.
    if ((*m_socket)->state() == QAbstractSocket::UnconnectedState && !m_socket->isBeingProcessed())
        (*m_socket)->connectToHost(m_address->first, m_address->second);
}

} // namespace zeltools::simulationinterface
