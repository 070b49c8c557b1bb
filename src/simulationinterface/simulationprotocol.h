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

/// Splits the stream of a simulation channel into messages and wraps messages into frames: the byte
/// 0x51, the length of the payload as two big-endian bytes, and the payload. The frames have no
/// checksum and no end marker. Each channel needs an object of its own, which belongs to one
/// thread.
///
/// A message is copied once, however the stream is split, and at most one incomplete frame is kept.
class ZELTOOLS_EXPORT SimulationProtocol : public QObject
{
    Q_OBJECT

public:
    /// The longest message: its length is sent in two bytes.
    static constexpr int maximumPayload_B = 65535;
    /// The maximum size of a chunk together with the incomplete frame before it.
    static constexpr int maximumBuffered_B = 0x20003;

    explicit SimulationProtocol(QObject* parent = nullptr);
    ~SimulationProtocol() override;

    /// The frame of the data; no value, with a Warning, for more than maximumPayload_B.
    static std::optional<QByteArray> serializeOpt(const QByteArray& data);

    /// Adds the next chunk of the stream and returns the messages that it completes, in their
    /// order.
    ///
    /// If a frame begins with another byte than 0x51, all available bytes are dropped with a
    /// Warning, including good frames after it: the protocol does not search for the next 0x51. If
    /// a chunk exceeds maximumBuffered_B, it is dropped with a Warning together with the incomplete
    /// frame.
    ///
    /// A header is read only when four bytes are available, on purpose. An empty message (51 00 00)
    /// at the end of the stream is therefore returned only with the byte that follows it.
    QVector<QByteArray> deserialize(const QByteArray& data);

Q_SIGNALS:
    /// Never emitted: deserialize() returns the messages.
    void messageReceived(const QByteArray& message);

private:
    friend class SimulationInterface;

    static bool serialize(const QByteArray& data, QByteArray& frame);
    static void warnOf(FrameFault fault);
    CompleteFrames takeFrames(const QByteArray& data); // the caller logs the Warning
    bool completeHeader(const char*& next, const char* end);
    void clear();

    // The incomplete frame. Its payload becomes the message, so that it is copied once.
    quint32 m_header = 0; // its last byte is the lowest
    int m_received_B = 0; // of the header
    QByteArray m_payload;
};

} // namespace zeltools::simulationinterface
