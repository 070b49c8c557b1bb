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
    if (data.size() > maximumPayload_B) {
        LogFormatter(LogLevel::Warning).log(Log::Simulation)
            << "static optional<QByteArray> "
               "zeltools::simulationinterface::SimulationProtocol::serializeOpt(const QByteArray&)"
            << "too long data";
        return std::nullopt;
    }
    return frame<quint16>(data);
}

QVector<QByteArray> SimulationProtocol::deserialize(const QByteArray& data)
{
    QVector<QByteArray> messages;
    if (qint64(m_received_B) + m_payload.size() + data.size() > maximumBuffered_B) {
        LogFormatter(LogLevel::Warning).log(Log::Simulation)
            << "Maximum message size exceeded, clearing rx buffer";
        clear();
        return messages;
    }
    const char* next = data.constData();
    const char* const end = next + data.size();
    while (completeHeader(next, end)) {
        if (static_cast<char>(m_header >> 16) != startOfFrame) {
            LogFormatter(LogLevel::Warning).log(Log::Simulation)
                << "optional<QByteArray> "
                   "zeltools::simulationinterface::readMessageOpt(const QByteArray&, int&)"
                << "Invalid start of frame, dropping data";
            clear();
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
        if (m_payload.isEmpty())
            messages.append(QByteArray(next, missing));
        else
            messages.append(std::exchange(m_payload, {}).append(next, missing));
        next += missing;
        m_received_B = 0;
    }
    return messages;
}

// Whether there is the header and at least one byte more.
bool SimulationProtocol::completeHeader(const char*& next, const char* end)
{
    for (; m_received_B < headerSize_B && next != end; ++m_received_B)
        m_header = m_header << 8 | static_cast<quint8>(*next++);
    return m_received_B == headerSize_B && (next != end || !m_payload.isEmpty());
}

void SimulationProtocol::clear()
{
    m_received_B = 0;
    m_payload.clear();
}

} // namespace zeltools::simulationinterface
