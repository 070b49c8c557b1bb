#pragma once

#include <QByteArray>
#include <QDateTime>

namespace zeltools::system::service
{

/// The packets of the network time protocol, version 4, without extensions.
class NtpPacket
{
public:
    static constexpr int size_B = 48;

    /// A client's request.
    static QByteArray request();
    /// The time at which the server has sent the answer, in UTC and whole seconds. It is invalid
    /// for another size than that of a packet and for 0 seconds, which stand for an unknown time.
    ///
    /// The server counts 32 bits of seconds. With the top bit set they begin in 1900, otherwise on
    /// 7 February 2036 at 06:28:16, so that the times lie between 1968 and 2104. The system clock
    /// does not help here: it begins at 1970 after each start on a machine without a battery for
    /// it.
    static QDateTime timeOf(const QByteArray& answer);
};

} // namespace zeltools::system::service
