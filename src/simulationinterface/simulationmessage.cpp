#include "simulationinterface/simulationmessage.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "simulationinterface/simulationframe_p.h"

#include <algorithm>

namespace zeltools::simulationinterface
{

std::optional<QByteArray> SimulationMessage::encapsulateData(const QByteArray& data)
{
    QByteArray frame;
    writeFrame<qint32>(data, frame);
    return frame;
}

std::optional<QByteArray> SimulationMessage::fromIncomingDataOpt(const QByteArray& data,
                                                                 int& consumed)
{
    constexpr int headerSize_B = 5;
    consumed = 0;
    if (data.size() <= headerSize_B)
        return std::nullopt;
    if (data[0] != startOfFrame) {
        LogFormatter(LogLevel::Warning).log(Log::Simulation)
            << "static optional<QByteArray> zeltools::simulationinterface::SimulationMessage::"
               "fromIncomingDataOpt(const QByteArray&, int&)"
            << "Invalid start of frame, dropping data";
        consumed = data.size();
        return std::nullopt;
    }
    const auto length = qFromBigEndian<qint32>(data.constData() + 1);
    if (length > data.size() - headerSize_B)
        return std::nullopt;
    consumed = length + headerSize_B;
    return data.mid(headerSize_B, std::max(length, 0));
}

} // namespace zeltools::simulationinterface
