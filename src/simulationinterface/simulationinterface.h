#pragma once

#include <zeltools/simulationinterface/simulationprotocol.h>

namespace zeltools::simulationinterface
{

/// An open channel to a simulator that carries messages of at most 65535 bytes, framed by
/// SimulationProtocol. Derived classes carry the bytes.
///
/// Belongs to the thread that made it. It may be deleted inside its own signals; once its
/// destructor has begun it emits none. An incomplete frame of a simulator that has gone is dropped.
///
/// Of the Warnings that the bytes of a simulator cause, a minute brings ten at most and one more
/// with the count of the others.
class ZELTOOLS_EXPORT SimulationInterface : public QObject
{
    Q_OBJECT

public:
    explicit SimulationInterface(QObject* parent);
    ~SimulationInterface() override;

    /// Without a valid address the channel never opens.
    virtual bool isAddressValid() const = 0;
    virtual bool connected() const = 0;
    /// Takes all bytes that have arrived.
    virtual QByteArray incomingData() = 0;
    /// Sends one frame; false when not all of it was accepted. Does not block.
    virtual bool writeSerializedData(const QByteArray& frame) = 0;

    /// Sends one message. It is lost while there is no connection, and when it is too long.
    void write(const QByteArray& data);

public Q_SLOTS:
    /// Emits dataReceived() for each message that is complete with the bytes that have arrived.
    void processIncomingData();

Q_SIGNALS:
    void dataReceived(const QByteArray& data);
    /// connected() may have changed.
    void connectedChanged();

protected:
    /// Derived classes call it when a connection begins, before its bytes are processed.
    void dropIncompleteFrame();

private:
    bool mayWarn();
    void endMinuteOfWarnings();

    SimulationProtocol m_protocol;
    int m_faults = 0; // in the minute that began with the first of them
};

} // namespace zeltools::simulationinterface
