#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/simulationprotocol.h"
#include "simulationinterface/tcpsocket_p.h"

namespace zeltools::simulationinterface
{

namespace
{

constexpr int maximumUnread_B = 64 * 1024;
constexpr qint64 maximumUnsent_B = qint64(64) * 1024 * 1024;

// All but the last byte of the longest frame may be kept when a socket's buffer is taken: no stream
// of good frames must ever be too much for the protocol.
static_assert(3 + SimulationProtocol::maximumPayload_B - 1 + maximumUnread_B <=
              SimulationProtocol::maximumBuffered_B);

} // namespace

SharedSocket shareSocket(QTcpSocket* socket)
{
    socket->setReadBufferSize(maximumUnread_B);
    return {socket, [](QTcpSocket* unused) { unused->deleteLater(); }};
}

void closeSocket(QTcpSocket& socket, const QObject* listener)
{
    socket.disconnect(listener);
    socket.flush();
    socket.abort();
}

QByteArray readAvailable(QTcpSocket& socket)
{
    QByteArray bytes(static_cast<int>(socket.bytesAvailable()), Qt::Uninitialized);
    if (!bytes.isEmpty())
        bytes.truncate(static_cast<int>(socket.read(bytes.data(), bytes.size())));
    return bytes;
}

bool writeFrame(QTcpSocket& socket, const QByteArray& frame, bool& isStalled)
{
    const bool wasStalled = isStalled;
    isStalled = socket.bytesToWrite() + frame.size() > maximumUnsent_B;
    if (!isStalled)
        return socket.write(frame.constData(), frame.size()) == frame.size();
    if (!wasStalled) {
        LogFormatter(LogLevel::Warning).log(Log::Simulation)
            << "The simulator does not read, dropping data";
    }
    return false;
}

} // namespace zeltools::simulationinterface
