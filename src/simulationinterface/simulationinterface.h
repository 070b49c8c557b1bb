#pragma once

#include <zeltools/simulationinterface/simulationcounters.h>
#include <zeltools/simulationinterface/simulationprotocol.h>

namespace zeltools::simulationinterface
{

class WarningLimit;

/// A channel to a simulator for messages of at most 65535 bytes, framed by SimulationProtocol.
/// Derived classes transport the bytes.
///
/// A channel belongs to the thread that created it. It may be deleted inside its own signals; after
/// its destructor has begun it emits none. When a simulator disconnects, its incomplete frame is
/// dropped.
///
/// The bytes of a simulator cause at most ten Warnings a minute, and one more with the number of
/// the others.
class ZELTOOLS_EXPORT SimulationInterface : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool connected READ connected NOTIFY connectedChanged)

public:
    explicit SimulationInterface(QObject* parent);
    ~SimulationInterface() override;

    /// Without a valid address the channel never opens.
    virtual bool isAddressValid() const = 0;
    /// Whether a simulator is on the other end, so that messages can be sent.
    virtual bool connected() const = 0;
    /// Reads and removes all bytes that have arrived.
    virtual QByteArray incomingData() = 0;
    /// Sends one frame without blocking. Returns false if not all of it was accepted.
    virtual bool writeSerializedData(const QByteArray& frame) = 0;

    /// The raw address of this end as it really is: "tcpserver/127.0.0.1/40123" if the system has
    /// chosen the port. It is empty if the address is invalid or if a server does not listen.
    virtual QString localAddress() const;
    /// The IP address and the port of the connected simulator, such as "127.0.0.1/51234". It is
    /// empty without a connection and for AF_UNIX.
    virtual QString peerAddress() const;
    /// Ends the connection without blocking. Written bytes that the kernel takes immediately still
    /// reach the simulator. Messages that have arrived may still be emitted. A server then waits
    /// for the next one, and a client connects again.
    virtual void closeConnection();

    /// Sends one message without blocking. Returns false, and the message is lost, if it is too
    /// long or if writeSerializedData() does not accept it.
    bool write(const QByteArray& data);

    /// The traffic of this object since its construction.
    SimulationCounters counters() const { return m_counters; }

public Q_SLOTS:
    /// Emits dataReceived() for each message that the arrived bytes complete.
    void processIncomingData();

Q_SIGNALS:
    /// Emitted for each whole message, without its frame.
    void dataReceived(const QByteArray& data);
    /// Announces a possible change of connected().
    void connectedChanged();

protected:
    /// Drops an incomplete frame. Derived classes call it when a connection begins, before its
    /// bytes are processed.
    void dropIncompleteFrame();
    /// Counts a frame that was accepted for sending or lost, and returns `isAccepted`. Derived
    /// classes call it in writeSerializedData().
    bool countWritten(const QByteArray& frame, bool isAccepted);
    /// Counts a connection that a server closes immediately.
    void countRefusedConnection() { ++m_counters.connectionsRefused; }

private:
    SimulationProtocol m_protocol;
    SimulationCounters m_counters;
    // The limit belongs to the endpoint and not to the connection, so that a simulator that
    // connects again does not evade it.
    WarningLimit* const m_faultWarnings;
};

} // namespace zeltools::simulationinterface
