#include "system/ntppacket_p.h"

#include <QtEndian>

namespace zeltools::system::service
{

namespace
{

// Leap indicator 3 (the clock is not synchronised), version 4, mode 3 (client).
constexpr char s_clientHeader = '\xE3';
constexpr int s_transmitSeconds_B = 40; // offset in the packet
constexpr qint64 s_from1900To1970_s = 2208988800;
constexpr qint64 s_era_s = Q_INT64_C(1) << 32;

} // namespace

QByteArray NtpPacket::request()
{
    QByteArray request(size_B, '\0');
    request[0] = s_clientHeader;
    return request;
}

QDateTime NtpPacket::timeOf(const QByteArray& answer)
{
    if (answer.size() != size_B)
        return {};
    const auto seconds = qFromBigEndian<quint32>(answer.constData() + s_transmitSeconds_B);
    if (seconds == 0)
        return {};
    const qint64 since1900_s = seconds >= s_era_s / 2 ? seconds : seconds + s_era_s;
    return QDateTime::fromSecsSinceEpoch(since1900_s - s_from1900To1970_s, Qt::UTC);
}

} // namespace zeltools::system::service
