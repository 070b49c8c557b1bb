#pragma once

#include <QtGlobal>

namespace zeltools::simulationinterface
{

/// The traffic of an endpoint since it was made, over all of its connections.
struct SimulationCounters
{
    quint64 framesSent = 0; ///< accepted for sending; the end of a connection may still lose some
    quint64 bytesSent = 0;  ///< of these frames
    quint64 framesReceived = 0; ///< messages that were emitted
    quint64 bytesReceived = 0;
    quint64 framesRefused = 0;      ///< lost in write() or writeSerializedData()
    quint64 resynchronizations = 0; ///< how often bytes were dropped that are no frame
    quint64 connectionsRefused = 0; ///< closed by a server because of another one or of the peer
};

} // namespace zeltools::simulationinterface
