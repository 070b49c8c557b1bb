#include "declarativestatemachine/machinerecording.h"
#include "declarativestatemachine/recordingtext_p.h"
#include "declarativestatemachine/recordingwords_p.h"

#include <limits>
#include <utility>

namespace zeltools::declarativestatemachine
{

namespace
{

using Entry = MachineRecording::Entry;

constexpr int maximumLineSize_B = 300000;

class RecordingReader
{
public:
    explicit RecordingReader(const QByteArray& text)
        : m_text(text)
    {
    }

    bool read()
    {
        if (m_text.size() > maximumTextSize_B) {
            m_reason = QStringLiteral("the recording is larger than 16 MiB");
            return false;
        }
        const bool isRead = readHead() && readEntries() && readEnd();
        if (!isRead && m_reason.isEmpty())
            m_reason = m_words.fault();
        return isRead;
    }

    QString error() const
    {
        return m_line > 0 ? QStringLiteral("line %1: %2").arg(m_line).arg(m_reason) : m_reason;
    }
    const MachineRecording& recording() const { return m_recording; }

private:
    bool readHead()
    {
        return nextLine() && m_words.take("zeltools") && m_words.take("machine") &&
               m_words.take("recording") && m_words.take("1") && nextLine() &&
               m_words.take("machine") && m_words.takeText(m_recording.machine) && nextLine() &&
               (!m_words.skip("start") || (m_words.takeStart(m_recording.start) && nextLine())) &&
               m_words.take("duration") && m_words.takeTime(m_recording.duration, {}) &&
               nextLine() && m_words.take("dropped") &&
               m_words.takeNumber(m_recording.dropped, 0, std::numeric_limits<qint64>::max()) &&
               nextLine() && readActive();
    }

    bool readActive()
    {
        m_recording.wasRunning = m_words.skip("running");
        if (!m_recording.wasRunning)
            return true;
        if (!nextLine())
            return false;
        while (m_words.skip("active")) {
            MachineRecording::ActiveState active;
            if (!m_words.takeState(active.state) || !m_words.take("since") ||
                !m_words.takeTime(active.since, {}) || !isRoomIn(m_recording.activeBefore))
                return false;
            m_recording.activeBefore.append(active);
            m_latest = qMax(m_latest, active.since);
            if (!nextLine())
                return false;
        }
        return true;
    }

    bool readEntries()
    {
        while (!m_words.isAt("unfinished") && !m_words.isAt("end")) {
            Entry entry;
            if (!readEntry(entry) || !isRoomIn(m_recording.entries))
                return false;
            m_recording.entries.append(entry);
            m_latest = entry.time;
            if (!nextLine())
                return false;
        }
        return true;
    }

    bool readEntry(Entry& entry)
    {
        if (!m_words.takeTime(entry.time, m_latest))
            return false;
        if (entry.time > m_recording.duration)
            return fail(QStringLiteral("the time is after the end of the recording"));
        entry.beginsStep = !m_words.skip("+");
        if (!entry.beginsStep && m_recording.entries.isEmpty())
            return fail(QStringLiteral("the first entry continues a step"));
        return readHappened(entry);
    }

    bool readHappened(Entry& entry)
    {
        if (m_words.skip("started")) {
            entry.kind = Entry::Started;
            return true;
        }
        if (m_words.isAt("stopped") || m_words.isAt("finished")) {
            entry.kind = Entry::Stopped;
            entry.isFinished = m_words.skip("finished");
            return entry.isFinished || m_words.take("stopped");
        }
        if (m_words.isAt("left") || m_words.isAt("entered")) {
            entry.kind = m_words.skip("left") ? Entry::Left : Entry::Entered;
            m_words.skip("entered");
            return m_words.takeState(entry.transition.source);
        }
        if (m_words.skip("fired")) {
            entry.kind = Entry::Fired;
            return m_words.takeTransition(entry) && m_words.takeArguments(entry.arguments);
        }
        entry.kind = Entry::Guard;
        if (!m_words.skip("guard"))
            return m_words.fail(
                QStringLiteral("started, stopped, finished, guard, left, fired or entered"));
        if (!m_words.takeTransition(entry))
            return false;
        entry.isAccepted = m_words.skip("accepted");
        return (entry.isAccepted || m_words.take("refused")) &&
               m_words.takeArguments(entry.arguments);
    }

    bool readEnd()
    {
        m_recording.isStepUnfinished = m_words.skip("unfinished");
        if (m_recording.isStepUnfinished && !nextLine())
            return false;
        if (!m_words.take("end") || !m_words.takeEnd())
            return false;
        if (m_latest > m_recording.duration)
            return fail(QStringLiteral("a state was entered after the end of the recording"));
        return m_next == m_text.size() || fail(QStringLiteral("text behind the end"));
    }

    // Goes to the next line that has words. The one before must have been read whole.
    bool nextLine()
    {
        if (m_line > 0 && !m_words.takeEnd())
            return false;
        for (;;) {
            ++m_line;
            const int end = static_cast<int>(m_text.indexOf('\n', m_next));
            if (end < 0)
                return fail(QStringLiteral("the recording is cut: its line \"end\" is missing"));
            if (end - m_next > maximumLineSize_B)
                return fail(QStringLiteral("the line is longer than 300,000 bytes"));
            auto words = splitQuotedWords(m_text.mid(m_next, end - m_next), m_reason);
            if (!words)
                return false;
            m_next = end + 1;
            if (words->isEmpty())
                continue;
            m_words = RecordingWords(std::move(*words));
            return true;
        }
    }

    template <typename List>
    bool isRoomIn(const List& list)
    {
        return list.size() < MachineRecording::maximumEntries ||
               fail(QStringLiteral("there are more than 100,000 entries"));
    }

    bool fail(const QString& reason)
    {
        m_reason = reason;
        return false;
    }

    const QByteArray& m_text;
    int m_next = 0; // the beginning of the next line
    int m_line = 0;
    RecordingWords m_words;
    QString m_reason;
    std::chrono::microseconds m_latest{0};
    MachineRecording m_recording;
};

} // namespace

std::optional<MachineRecording> MachineRecording::fromText(const QByteArray& text, QString& error)
{
    RecordingReader reader(text);
    const bool isRead = reader.read();
    error = isRead ? QString() : reader.error();
    return isRead ? std::optional(reader.recording()) : std::nullopt;
}

} // namespace zeltools::declarativestatemachine
