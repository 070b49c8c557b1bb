#include "declarativestatemachine/recordingwords_p.h"

#include "declarativestatemachine/recordedargument_p.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zeltools::declarativestatemachine
{

namespace
{

constexpr qint64 maximumTime_ms = 1000000000000; // 31 years

bool isDigits(const QByteArray& text)
{
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Reads "12" or "0.25"; -1 for anything else.
qint64 microsecondsOf(const QByteArray& text)
{
    const auto point = text.indexOf('.');
    const QByteArray whole = point < 0 ? text : text.left(point);
    const QByteArray decimals = point < 0 ? QByteArray("0") : text.mid(point + 1);
    const bool isRight = isDigits(whole) && isDigits(decimals) && decimals.size() <= 3;
    bool isRead = false;
    const qint64 milliseconds = whole.toLongLong(&isRead);
    if (!isRight || !isRead || milliseconds > maximumTime_ms)
        return -1;
    return milliseconds * 1000 + decimals.leftJustified(3, '0').toInt();
}

} // namespace

RecordingWords::RecordingWords(QVector<QuotedWord> words)
    : m_words(std::move(words))
{
}

bool RecordingWords::isAt(const char* bare) const
{
    return isAtBare() && m_words[m_next].text == bare;
}

bool RecordingWords::skip(const char* bare)
{
    const bool isThere = isAt(bare);
    m_next += isThere ? 1 : 0;
    return isThere;
}

bool RecordingWords::take(const char* bare)
{
    return skip(bare) || fail(QStringLiteral("\"%1\"").arg(QLatin1String(bare)));
}

bool RecordingWords::takeText(QString& text)
{
    if (!isAtQuoted())
        return fail(QStringLiteral("a text in quotes"));
    text = fromUtf8(m_words[m_next++].text);
    return true;
}

bool RecordingWords::takeNumber(qint64& number, qint64 least, qint64 most)
{
    bool isRead = isAtBare() && isDigits(m_words[m_next].text);
    if (isRead)
        number = m_words[m_next].text.toLongLong(&isRead);
    if (!isRead || number < least || number > most)
        return fail(QStringLiteral("a number from %1 to %2").arg(least).arg(most));
    ++m_next;
    return true;
}

bool RecordingWords::takeTime(std::chrono::microseconds& time, std::chrono::microseconds earliest)
{
    time = std::chrono::microseconds(isAtBare() ? microsecondsOf(m_words[m_next].text) : -1);
    if (time.count() < 0)
        return fail(QStringLiteral("a time in milliseconds"));
    if (time < earliest)
        return fail(QStringLiteral("a time that is not before the one above"));
    ++m_next;
    return true;
}

bool RecordingWords::takeStart(QDateTime& start)
{
    const QString text = isAtBare() ? QString::fromLatin1(m_words[m_next].text) : QString();
    start = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!start.isValid() || start.toUTC().toString(Qt::ISODateWithMs) != text)
        return fail(QStringLiteral("a time of day such as 2024-03-01T08:30:00.000Z"));
    ++m_next;
    return true;
}

bool RecordingWords::takeState(MachineRecording::State& state)
{
    qint64 copy = 1;
    const bool isTaken = takeText(state.name) &&
                         (!skip("copy") || takeNumber(copy, 1, std::numeric_limits<int>::max()));
    state.copy = static_cast<int>(copy);
    return isTaken;
}

bool RecordingWords::takeTransition(MachineRecording::Entry& entry)
{
    qint64 number = 0;
    const bool isTaken = takeState(entry.transition.source) && take("transition") &&
                         takeNumber(number, 1, std::numeric_limits<int>::max()) && take("by") &&
                         takeText(entry.trigger);
    entry.transition.number = static_cast<int>(number);
    return isTaken;
}

bool RecordingWords::takeArguments(QVector<MachineRecording::Argument>& arguments)
{
    if (!skip("with"))
        return true;
    do {
        if (m_next + 1 >= m_words.size() || !isAtBare())
            return fail(QStringLiteral("a type and a value"));
        const QByteArray type = m_words[m_next++].text;
        const QuotedWord& word = m_words[m_next];
        const bool isOther = type == "other" && word.isQuoted;
        const QVariant value = argumentValue(type, word.text, word.isQuoted);
        if (!isOther && !value.isValid())
            return fail(QStringLiteral("a value of the type before it"));
        arguments.append({isOther ? word.text : type, value});
        ++m_next;
    } while (!isAtEnd());
    return true;
}

bool RecordingWords::takeEnd()
{
    return isAtEnd() || fail(QStringLiteral("the end of the line"));
}

bool RecordingWords::fail(const QString& expected)
{
    m_expected = expected;
    return false;
}

QString RecordingWords::fault() const
{
    if (isAtEnd())
        return QStringLiteral("end of the line: expected %1").arg(m_expected);
    return QStringLiteral("column %1: expected %2").arg(m_words[m_next].column).arg(m_expected);
}

} // namespace zeltools::declarativestatemachine
