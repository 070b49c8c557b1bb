#pragma once

#include "simulationinterface/simulationprotocol.h"

#include <QByteArray>
#include <QtEndian>

namespace zeltools::simulatorkit
{

/// Splits the bytes of one direction of a link into the messages of whole frames and other bytes,
/// without dropping any. It holds less than one frame between two calls.
class FrameSplitter
{
public:
    static constexpr char startOfFrame = 0x51;
    static constexpr int headerSize_B = 3;

    /// The size of the frame at the beginning of the bytes; 0 while its header is incomplete.
    static int frameSize_B(const char* bytes, qint64 size_B)
    {
        return size_B < headerSize_B ? 0 : headerSize_B + qFromBigEndian<quint16>(bytes + 1);
    }

    /// Adds bytes that have arrived, and calls `onMessage` and `onRaw` with what they complete. If
    /// a frame begins with a wrong byte, all further bytes are raw.
    template <typename OnMessage, typename OnRaw>
    void add(const QByteArray& bytes, const OnMessage& onMessage, const OnRaw& onRaw)
    {
        m_bytes += bytes;
        int begin = 0;
        while (begin < m_bytes.size() && m_bytes[begin] == startOfFrame) {
            const int size_B = frameSize_B(m_bytes.constData() + begin, m_bytes.size() - begin);
            if (size_B == 0 || size_B > m_bytes.size() - begin)
                break;
            onMessage(m_bytes.mid(begin + headerSize_B, size_B - headerSize_B));
            begin += size_B;
        }
        m_bytes.remove(0, begin);
        if (!m_bytes.isEmpty() && m_bytes[0] != startOfFrame)
            end(onRaw);
    }

    /// Calls `onRaw` with the rest, in pieces of at most 65535 bytes.
    template <typename OnRaw>
    void end(const OnRaw& onRaw)
    {
        constexpr int piece_B = simulationinterface::SimulationProtocol::maximumPayload_B;
        for (int begin = 0; begin < m_bytes.size(); begin += piece_B)
            onRaw(m_bytes.mid(begin, piece_B));
        m_bytes.clear();
    }

private:
    QByteArray m_bytes;
};

} // namespace zeltools::simulatorkit
