#pragma once

#include <zeltools/simulatorkit/simulatorrecording.h>

#include <QByteArray>
#include <QString>

namespace zeltools::simulatorkit
{

/// The bytes that the partner of a replayer has sent and the replayer has not compared yet.
class PartnerBytes
{
public:
    explicit PartnerBytes(LinkSide partner)
        : m_partner(partner)
    {
    }

    void append(const QByteArray& bytes) { m_bytes += bytes; }
    /// Drops bytes from the beginning.
    void remove(int size_B) { m_bytes.remove(0, size_B); }

    int size_B() const { return m_bytes.size(); }
    bool isEmpty() const { return m_bytes.isEmpty(); }
    QByteArray left(int size_B) const { return m_bytes.left(size_B); }
    /// Whether the first bytes are a whole frame.
    bool hasFrame() const;
    /// Whether the first byte cannot begin a frame.
    bool isWrong() const;
    /// The message of the first frame, if there is one.
    QByteArray message() const;

    /// Says what has come: `"grind" came`, `raw "xy" came` or `nothing came`, or, without bytes,
    /// that the partner has disconnected.
    QString text() const;

    bool hasPartnerLeft = false; ///< No more bytes will come.

private:
    const LinkSide m_partner;
    QByteArray m_bytes;
};

/// The row without its time, and with only the beginning of long bytes.
QString shortRow(SimulatorEvent event);
/// Says that these bytes have come: `raw "xy" came`.
QString rawCame(const QByteArray& bytes);

} // namespace zeltools::simulatorkit
