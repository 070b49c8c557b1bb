#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QObject>
#include <QVector>

#include <optional>

namespace zeltools::simulationinterface
{

class CompleteFrames;
enum class FrameFault;

/// Cuts the stream of a simulation channel into messages and wraps messages into frames: the byte
/// 0x51, the length of the payload in two bytes, the higher one first, and the payload. There is no
/// checksum and no end marker. One object for each channel, used by one thread.
///
/// A message is copied once, however the stream is cut, and no more than one incomplete frame is
/// kept.
class ZELTOOLS_EXPORT SimulationProtocol : public QObject
{
    Q_OBJECT

public:
    static constexpr int maximumPayload_B = 65535;
    /// Of a chunk together with what was kept before it.
    static constexpr int maximumBuffered_B = 0x20003;

    explicit SimulationProtocol(QObject* parent = nullptr);
    ~SimulationProtocol() override;

    /// The frame; nothing, with a Warning, for a payload of more than maximumPayload_B.
    static std::optional<QByteArray> serializeOpt(const QByteArray& data);

    /// Takes the next chunk of the stream and returns the messages that are complete with it, in
    /// their order.
    ///
    /// A frame that begins with another byte than 0x51 costs, with a Warning, all bytes that are
    /// there, the good frames behind it included: there is no search for the next 0x51. A chunk
    /// that makes more than maximumBuffered_B costs, with a Warning, itself and what was kept.
    ///
    /// Nothing is looked at before there are four bytes, on purpose. So an empty message (51 00 00)
    /// that is the last in the stream comes out only with the byte that follows it.
    QVector<QByteArray> deserialize(const QByteArray& data);

Q_SIGNALS:
    /// Never emitted: deserialize() returns the messages.
    void messageReceived(const QByteArray& message);

private:
    static constexpr int headerSize_B = 3;

    friend class SimulationInterface;

    static bool serialize(const QByteArray& data, QByteArray& frame);
    static void warnOf(FrameFault fault);
    CompleteFrames takeFrames(const QByteArray& data); // which leaves the Warning to the caller
    bool completeHeader(const char*& next, const char* end);
    void clear();

    // The incomplete frame; the payload is what the message will be, so that it is copied once.
    quint32 m_header = 0; // its last byte is the lowest
    int m_received_B = 0; // of the header
    QByteArray m_payload;
};

} // namespace zeltools::simulationinterface
