#include "simulatorkit/simulatorrecording.h"

#include "simulatorkit/linereader_p.h"

namespace zeltools::simulatorkit
{

using Kind = SimulatorEvent::Kind;

namespace
{

constexpr const char* sideNames[] = {"machine", "simulator"};
constexpr const char* kindNames[] = {"connected", "disconnected", "message", "raw"};

bool hasBytes(Kind kind)
{
    return kind == Kind::Message || kind == Kind::Raw;
}

bool areDigits(const QByteArray& text, int minimum, int maximum)
{
    for (const char c : text) {
        if (c < '0' || c > '9')
            return false;
    }
    return text.size() >= minimum && text.size() <= maximum;
}

std::chrono::microseconds takeTime(LineReader& reader)
{
    const QByteArray word = reader.takeBare();
    const int point = word.indexOf('.');
    const QByteArray whole = point < 0 ? word : word.left(point);
    const QByteArray decimals = point < 0 ? "0" : word.mid(point + 1);
    if (!areDigits(whole, 1, 12) || !areDigits(decimals, 1, 3)) {
        reader.failBefore(QStringLiteral("it is not a number of milliseconds"));
        return {};
    }
    return std::chrono::microseconds(whole.toLongLong() * 1000 +
                                     decimals.leftJustified(3, '0').toInt());
}

template <typename Enum, size_t count>
Enum takeName(LineReader& reader, const char* const (&names)[count])
{
    for (const char* const& name : names) {
        if (reader.take(name))
            return static_cast<Enum>(&name - names);
    }
    reader.fail(QStringLiteral("unknown word"));
    return {};
}

// Reads a row of the given number of milliseconds since the row before it, or later.
SimulatorEvent readEvent(LineReader& reader, std::chrono::microseconds earliest, bool& isConnected)
{
    SimulatorEvent event;
    event.line = reader.line();
    event.time = takeTime(reader);
    if (event.time < earliest)
        reader.failBefore(QStringLiteral("the time is earlier than in the row before"));
    event.side = takeName<LinkSide>(reader, sideNames);
    event.kind = takeName<Kind>(reader, kindNames);
    if (isConnected == (event.kind == Kind::Connected))
        reader.failBefore(isConnected ? QStringLiteral("the connection exists already")
                                      : QStringLiteral("there is no connection"));
    if (hasBytes(event.kind))
        event.bytes = reader.takeText();
    reader.requireEnd();
    isConnected = event.kind != Kind::Disconnected;
    return event;
}

} // namespace

std::optional<SimulatorRecording> SimulatorRecording::parse(const QByteArray& content,
                                                            QString& error)
{
    SimulatorRecording recording;
    LineReader reader(content);
    if (content.size() > maximumSize_B)
        reader.fail(QStringLiteral("the recording is larger than 256 MiB"));
    std::chrono::microseconds time{};
    bool isConnected = false;
    for (reader.readHead("recording"); reader.nextLine();) {
        if (recording.endLine != 0) {
            reader.fail(QStringLiteral("there are rows behind the end"));
        } else if (reader.take("end")) {
            reader.requireEnd();
            recording.endLine = reader.line();
        } else if (recording.events.size() == maximumEvents) {
            reader.fail(QStringLiteral("the recording has more than %1 rows").arg(maximumEvents));
        } else {
            recording.events.append(readEvent(reader, time, isConnected));
            time = recording.events.last().time;
        }
    }
    if (recording.endLine == 0)
        reader.fail(QStringLiteral("the recording is cut: its end is missing"));
    error = reader.error();
    return error.isEmpty() ? std::make_optional(recording) : std::nullopt;
}

QByteArray SimulatorRecording::toText() const
{
    QByteArray text = headRow();
    for (const SimulatorEvent& event : events)
        text += event.toRow();
    return text + endRow();
}

QByteArray SimulatorRecording::headRow()
{
    return "zelsim recording 1\n";
}

QByteArray SimulatorRecording::endRow()
{
    return "end\n";
}

QByteArray SimulatorEvent::toRow() const
{
    QByteArray row = QByteArray::number(qint64(time.count() / 1000));
    const int decimals = static_cast<int>(time.count() % 1000);
    if (decimals != 0) {
        row += '.' + QByteArray::number(decimals).rightJustified(3, '0');
        while (row.endsWith('0'))
            row.chop(1);
    }
    row += QByteArray(" ") + sideNames[static_cast<int>(side)] + ' ' +
           kindNames[static_cast<int>(kind)];
    if (hasBytes(kind))
        row += ' ' + quotedWord(bytes);
    return row + '\n';
}

} // namespace zeltools::simulatorkit
