#pragma once

#include <QtGlobal>

namespace zeltools::simulationinterface
{

/// The traffic of an endpoint since it was made, over all of its connections.
struct SimulationCounters
{
    quint64 framesSent = 0; ///< Accepted for sending; the end of a connection may still lose some.
    quint64 bytesSent = 0;  ///< The bytes of these frames.
    quint64 framesReceived = 0; ///< Messages that were emitted.
    quint64 bytesReceived = 0;  ///< All bytes that have arrived, also those of incomplete frames.
    quint64 framesRefused = 0;  ///< Lost in write() or writeSerializedData().
    quint64 resynchronizations = 0; ///< How often bytes were dropped that are not a frame.
    quint64 connectionsRefused = 0; ///< Closed by a server because of another one or of the peer.
};

} // namespace zeltools::simulationinterface
