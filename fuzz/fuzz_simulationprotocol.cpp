// Compares both framings of the simulation links with a plain parser, which keeps all bytes in one
// buffer and looks at it as a whole.

#include "fuzz.h"
#include <zeltools/logging/lognode.h>
#include <zeltools/simulationinterface/simulationmessage.h>
#include <zeltools/simulationinterface/simulationprotocol.h>

#include <algorithm>

using namespace zeltools::simulationinterface;

namespace
{

int byteAt(const QByteArray& data, int index)
{
    return static_cast<uchar>(data[index]);
}

QVector<QByteArray> takeFromBuffer(QByteArray& buffer, const QByteArray& chunk)
{
    QVector<QByteArray> messages;
    if (buffer.size() + chunk.size() > 131075) {
        buffer.clear();
        return messages;
    }
    buffer += chunk;
    int taken = 0;
    while (buffer.size() - taken > 3) {
        if (byteAt(buffer, taken) != 0x51) {
            taken = buffer.size();
            break;
        }
        const int length = byteAt(buffer, taken + 1) * 256 + byteAt(buffer, taken + 2);
        if (buffer.size() - taken < length + 3)
            break;
        messages.append(buffer.mid(taken + 3, length));
        taken += length + 3;
    }
    buffer.remove(0, taken);
    return messages;
}

// Takes the next chunk from the input. Its first byte states its length and how often it is
// repeated.
QByteArray takeChunk(QByteArray& input)
{
    const int head = byteAt(input, 0);
    const QByteArray chunk = input.mid(1, head % 32);
    input.remove(0, 1 + chunk.size());
    return head < 128 ? chunk : chunk.repeated(1 << ((head - 128) / 10));
}

void checkStream(QByteArray input)
{
    SimulationProtocol protocol;
    QByteArray buffer;
    while (!input.isEmpty()) {
        const QByteArray chunk = takeChunk(input);
        const QVector<QByteArray> messages = protocol.deserialize(chunk);
        require(messages == takeFromBuffer(buffer, chunk));
        if (!messages.isEmpty()) {
            const auto frame = SimulationProtocol::serializeOpt(messages.last());
            require(SimulationProtocol().deserialize(*frame + 'Q') ==
                    messages.mid(messages.size() - 1));
        }
    }
}

void checkMessage(const QByteArray& data)
{
    int consumed = -1;
    const std::optional<QByteArray> message =
        SimulationMessage::fromIncomingDataOpt(data, consumed);
    if (data.size() <= 5 || byteAt(data, 0) != 0x51) {
        require(!message && consumed == (data.size() <= 5 ? 0 : data.size()));
        return;
    }
    qint64 length = 0;
    for (int i = 1; i <= 4; ++i)
        length = length * 256 + byteAt(data, i);
    if (length >= qint64(1) << 31)
        length -= qint64(1) << 32;
    if (data.size() <= length + 4) {
        require(!message && consumed == 0);
        return;
    }
    require(message == data.mid(5, static_cast<int>(std::max<qint64>(length, 0))));
    require(consumed == length + 5);
    if (length >= 0)
        require(data.startsWith(*SimulationMessage::encapsulateData(*message)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    LogNode::instance(); // prints nothing as long as nobody listens
    const QByteArray bytes = toBytes(data, size);
    checkStream(bytes);
    checkMessage(bytes);
    return 0;
}
