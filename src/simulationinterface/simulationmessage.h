#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>

#include <optional>

namespace zeltools::simulationinterface
{

/// Another framing, for callers that have whole buffers: the byte 0x51, the length of the payload
/// as a signed integer of four bytes, the highest first, and the payload. It keeps no state; the
/// endpoints of this library do not use it.
struct ZELTOOLS_EXPORT SimulationMessage
{
    /// The frame; there always is one.
    static std::optional<QByteArray> encapsulateData(const QByteArray& data);

    /// The message of the frame that the buffer begins with. `consumed` is the number of bytes
    /// that the caller must drop from it, 0 when the frame is not complete.
    ///
    /// Nothing, and the whole buffer consumed, with a Warning, when it does not begin with 0x51. A
    /// frame with an empty payload comes out only when a byte follows it, on purpose. A negative
    /// length gives an empty message and makes `consumed` 5 more than it: below 1 the peer is at
    /// fault, and the caller must not go on with this buffer.
    static std::optional<QByteArray> fromIncomingDataOpt(const QByteArray& data, int& consumed);
};

} // namespace zeltools::simulationinterface
