#include "simulatorkit/partnerbytes_p.h"

#include "simulatorkit/framesplitter_p.h"

namespace zeltools::simulatorkit
{

using Kind = SimulatorEvent::Kind;

namespace
{

// The words of the row of such an event from a number on.
QString cameText(Kind kind, const QByteArray& bytes, int firstWord)
{
    SimulatorEvent event;
    event.kind = kind;
    event.bytes = bytes;
    return shortRow(event).section(QLatin1Char(' '), firstWord) + QStringLiteral(" came");
}

} // namespace

bool PartnerBytes::hasFrame() const
{
    const int frame_B = FrameSplitter::frameSize_B(m_bytes.constData(), m_bytes.size());
    return !isWrong() && frame_B > 0 && frame_B <= m_bytes.size();
}

bool PartnerBytes::isWrong() const
{
    return !m_bytes.isEmpty() && m_bytes[0] != FrameSplitter::startOfFrame;
}

QByteArray PartnerBytes::message() const
{
    const int frame_B = FrameSplitter::frameSize_B(m_bytes.constData(), m_bytes.size());
    return m_bytes.mid(FrameSplitter::headerSize_B, frame_B - FrameSplitter::headerSize_B);
}

QString PartnerBytes::text() const
{
    if (hasFrame())
        return cameText(Kind::Message, message(), 2);
    if (!m_bytes.isEmpty())
        return rawCame(m_bytes);
    if (!hasPartnerLeft)
        return QStringLiteral("nothing came");
    return m_partner == LinkSide::Machine ? QStringLiteral("the machine disconnected")
                                          : QStringLiteral("the simulator disconnected");
}

QString shortRow(SimulatorEvent event)
{
    constexpr int maximum_B = 60;
    const bool isCut = event.bytes.size() > maximum_B;
    event.bytes.truncate(maximum_B);
    const QByteArray row = event.toRow();
    const int begin = row.indexOf(' ') + 1;
    return QString::fromUtf8(row.mid(begin, row.size() - begin - 1)) +
           QLatin1String(isCut ? "..." : "");
}

QString rawCame(const QByteArray& bytes)
{
    return cameText(Kind::Raw, bytes, 1);
}

} // namespace zeltools::simulatorkit
