#pragma once

#include <QByteArray>
#include <QtEndian>

#include <cstring>
#include <optional>
#include <utility>

namespace zeltools::simulationinterface
{

constexpr char startOfFrame = 0x51;

/// Gives the array this size and returns its bytes, which are undefined. They are in the memory
/// that it had, as long as nobody else keeps that.
inline char* renew(QByteArray& array, int size)
{
    if (array.isDetached())
        array.resize(size);
    else
        array = QByteArray(size, Qt::Uninitialized);
    return array.data();
}

/// Makes `frame` the start of frame, the size of the payload as a `Length`, which must be able to
/// hold it, the higher bytes first, and the payload.
template <typename Length>
void writeFrame(const QByteArray& payload, QByteArray& frame)
{
    constexpr int headerSize_B = 1 + sizeof(Length);
    char* const bytes = renew(frame, headerSize_B + payload.size());
    bytes[0] = startOfFrame;
    qToBigEndian(static_cast<Length>(payload.size()), bytes + 1);
    std::memcpy(bytes + headerSize_B, payload.constData(), size_t(payload.size()));
}

/// What a simulator's bytes are dropped for.
enum class FrameFault { None, WrongStart, TooMuch };

/// The frames of a stream that a chunk of it completes. Belongs to the chunk, whose bytes it reads.
class CompleteFrames
{
public:
    /// Gives the next message, in place of what `message` holds, or false after the last one.
    bool takeMessage(QByteArray& message)
    {
        if (begun) {
            message = *std::exchange(begun, std::nullopt);
            return true;
        }
        if (next == end)
            return false;
        const int length = qFromBigEndian<quint16>(next + 1);
        std::memcpy(renew(message, length), next + headerSize_B, size_t(length));
        next += headerSize_B + length;
        return true;
    }

    std::optional<QByteArray> begun; ///< whose first bytes came with an earlier chunk
    const char* next = nullptr;
    const char* end = nullptr;
    FrameFault fault = FrameFault::None; ///< which cost the bytes behind the last frame

private:
    static constexpr int headerSize_B = 3;
};

} // namespace zeltools::simulationinterface
