#pragma once

#include <QByteArray>
#include <QtEndian>

#include <cstring>
#include <optional>
#include <utility>

namespace zeltools::simulationinterface
{

constexpr char startOfFrame = 0x51;
constexpr int streamHeaderSize_B = 3; // of the frames of SimulationProtocol

/// Resizes the array and returns its bytes, which are undefined. The array keeps its memory unless
/// it shares it with another one.
inline char* resizeUninitialized(QByteArray& array, int size)
{
    if (array.isDetached())
        array.resize(size);
    else
        array = QByteArray(size, Qt::Uninitialized);
    return array.data();
}

/// Sets `frame` to the start byte, the size of the payload as a big-endian `Length`, which must be
/// able to hold it, and the payload.
template <typename Length>
void writeFrame(const QByteArray& payload, QByteArray& frame)
{
    constexpr int headerSize_B = 1 + sizeof(Length);
    char* const bytes = resizeUninitialized(frame, headerSize_B + payload.size());
    bytes[0] = startOfFrame;
    qToBigEndian(static_cast<Length>(payload.size()), bytes + 1);
    std::memcpy(bytes + headerSize_B, payload.constData(), size_t(payload.size()));
}

/// The reason for which bytes of a simulator are dropped.
enum class FrameFault { None, WrongStart, TooLong };

/// The frames that a chunk of a stream completes. The object reads the bytes of the chunk, which
/// must outlive it.
class CompleteFrames
{
public:
    /// Sets `message` to the next message. Returns false after the last one.
    bool takeMessage(QByteArray& message)
    {
        if (splitMessage) {
            message = *std::exchange(splitMessage, std::nullopt);
            return true;
        }
        if (next == end)
            return false;
        const int length = qFromBigEndian<quint16>(next + 1);
        std::memcpy(resizeUninitialized(message, length), next + streamHeaderSize_B,
                    size_t(length));
        next += streamHeaderSize_B + length;
        return true;
    }

    std::optional<QByteArray> splitMessage; ///< The first message, if it began in an earlier chunk.
    const char* next = nullptr;             ///< The next frame that lies in the chunk as a whole.
    const char* end = nullptr;              ///< The end of the last one.
    FrameFault fault = FrameFault::None;    ///< The bytes behind the last frame were dropped.
};

} // namespace zeltools::simulationinterface
