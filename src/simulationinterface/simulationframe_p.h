#pragma once

#include <QByteArray>
#include <QtEndian>

#include <cstring>

namespace zeltools::simulationinterface
{

constexpr char startOfFrame = 0x51;

/// The start of frame, the size of the payload as a `Length`, which must be able to hold it, the
/// higher bytes first, and the payload.
template <typename Length>
QByteArray frame(const QByteArray& payload)
{
    constexpr int headerSize_B = 1 + sizeof(Length);
    QByteArray frame(headerSize_B + payload.size(), Qt::Uninitialized);
    char* const bytes = frame.data();
    bytes[0] = startOfFrame;
    qToBigEndian(static_cast<Length>(payload.size()), bytes + 1);
    std::memcpy(bytes + headerSize_B, payload.constData(), size_t(payload.size()));
    return frame;
}

} // namespace zeltools::simulationinterface
