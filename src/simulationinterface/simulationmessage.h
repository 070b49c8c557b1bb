#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>

#include <optional>

namespace zeltools::simulationinterface
{

/// A second framing for callers that have whole buffers: the byte 0x51, the length of the payload
/// as a signed big-endian integer of four bytes, and the payload. It keeps no state; the endpoints
/// of this library do not use it.
struct ZELTOOLS_EXPORT SimulationMessage
{
    /// The frame of the data, which always has a value.
    static std::optional<QByteArray> encapsulateData(const QByteArray& data);

    /// The message of the frame at the beginning of the buffer. `consumed` is the number of bytes
    /// that the caller must drop, and 0 if the frame is incomplete.
    ///
    /// If the buffer does not begin with 0x51, there is no message, the whole buffer is consumed,
    /// and a Warning is logged. A frame with an empty payload is returned only when a byte follows
    /// it, on purpose. A negative length gives an empty message and the `consumed` value of the
    /// length plus 5: if that is below 1, the peer is faulty, and the caller must discard the
    /// buffer.
    static std::optional<QByteArray> fromIncomingDataOpt(const QByteArray& data, int& consumed);
};

} // namespace zeltools::simulationinterface
