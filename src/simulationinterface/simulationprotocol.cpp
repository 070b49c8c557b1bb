#include "simulationinterface/simulationprotocol.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/simulationframe_p.h"

#include <utility>

namespace zeltools::simulationinterface
{

SimulationProtocol::SimulationProtocol(QObject* parent)
    : QObject(parent)
{
}

SimulationProtocol::~SimulationProtocol() = default;

std::optional<QByteArray> SimulationProtocol::serializeOpt(const QByteArray& data)
{
    QByteArray frame;
    return serialize(data, frame) ? std::make_optional(frame) : std::nullopt;
}

bool SimulationProtocol::serialize(const QByteArray& data, QByteArray& frame)
{
    if (data.size() > maximumPayload_B) {
        LogFormatter(LogLevel::Warning).log(Log::Simulation)
            << "static optional<QByteArray> "
               "zeltools::simulationinterface::SimulationProtocol::serializeOpt(const QByteArray&)"
            << "too long data";
        return false;
    }
    writeFrame<quint16>(data, frame);
    return true;
}

QVector<QByteArray> SimulationProtocol::deserialize(const QByteArray& data)
{
    QVector<QByteArray> messages;
    CompleteFrames frames = takeFrames(data);
    warnOf(frames.fault);
    for (QByteArray message; frames.takeMessage(message); message.clear())
        messages.append(message);
    return messages;
}

void SimulationProtocol::warnOf(FrameFault fault)
{
    if (fault == FrameFault::TooLong) {
        LogFormatter(LogLevel::Warning).log(Log::Simulation)
            << "Maximum message size exceeded, clearing rx buffer";
    } else if (fault == FrameFault::WrongStart) {
        LogFormatter(LogLevel::Warning).log(Log::Simulation)
            << "optional<QByteArray> "
               "zeltools::simulationinterface::readMessageOpt(const QByteArray&, int&)"
            << "Invalid start of frame, dropping data";
    }
}

// The incomplete frame is in one of four states when a chunk begins or ends:
//
//     m_received_B | m_payload | the chunk ended        | the next chunk
//     0            | empty     | with a frame           | begins with a start byte
//     1 or 2       | empty     | inside a header        | completes m_header
//     3            | empty     | with a header          | begins with the payload, if there is one
//     3            | not empty | inside a payload       | is appended to m_payload
//
// A frame that began in an earlier chunk becomes the split message. All others lie in the chunk as
// a whole and are copied only by CompleteFrames::takeMessage().
CompleteFrames SimulationProtocol::takeFrames(const QByteArray& data)
{
    CompleteFrames frames;
    if (qint64(m_received_B) + m_payload.size() + data.size() > maximumBuffered_B) {
        clear();
        frames.fault = FrameFault::TooLong;
        return frames;
    }
    const char* next = data.constData();
    const char* const end = next + data.size();
    bool isSplit = m_received_B > 0;
    frames.next = frames.end = next;
    while (completeHeader(next, end)) {
        if (static_cast<char>(m_header >> 16) != startOfFrame) {
            clear();
            frames.fault = FrameFault::WrongStart;
            break;
        }
        const int length = static_cast<quint16>(m_header);
        const int missing = length - m_payload.size();
        const int available = static_cast<int>(end - next);
        if (available < missing) {
            m_payload.reserve(length);
            m_payload.append(next, available);
            break;
        }
        if (isSplit)
            frames.splitMessage = std::exchange(m_payload, {}).append(next, missing);
        next += missing;
        frames.end = next;
        if (std::exchange(isSplit, false))
            frames.next = next;
        m_received_B = 0;
    }
    return frames;
}

// Returns whether the header and at least one byte behind it are there.
bool SimulationProtocol::completeHeader(const char*& next, const char* end)
{
    if (m_received_B == 0 && end - next > streamHeaderSize_B) { // the usual case, read at once
        m_header = qFromBigEndian<quint32>(next) >> 8;
        m_received_B = streamHeaderSize_B;
        next += streamHeaderSize_B;
        return true;
    }
    for (; m_received_B < streamHeaderSize_B && next != end; ++m_received_B)
        m_header = m_header << 8 | static_cast<quint8>(*next++);
    return m_received_B == streamHeaderSize_B && (next != end || !m_payload.isEmpty());
}

void SimulationProtocol::clear()
{
    m_received_B = 0;
    m_payload.clear();
}

} // namespace zeltools::simulationinterface
