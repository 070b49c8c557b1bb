#include "simulatorkit/simulatorscript.h"

#include "simulatorkit/linereader_p.h"

namespace zeltools::simulatorkit
{

using namespace std::chrono_literals;

namespace
{

using Action = SimulatorRow::Action;
using Trigger = SimulatorRow::Trigger;

constexpr const char* actionNames[] = {"answer", "raw", "half", "silence", "disconnect"};

bool hasText(Action action)
{
    return action == Action::Answer || action == Action::Raw || action == Action::Half;
}

// Takes up to nine digits from the beginning of the word.
std::optional<qint64> takeDigits(QByteArray& word, int& count)
{
    constexpr int maximumDigits = 9;
    qint64 number = 0;
    for (count = 0; count < word.size() && word[count] >= '0' && word[count] <= '9'; ++count) {
        if (count == maximumDigits)
            return std::nullopt;
        number = number * 10 + (word[count] - '0');
    }
    word.remove(0, count);
    return count > 0 ? std::make_optional(number) : std::nullopt;
}

std::chrono::milliseconds takeTime(LineReader& reader, std::chrono::milliseconds minimum = 0ms)
{
    const auto time = SimulatorScript::parseTime(reader.takeBare());
    if (!time)
        reader.failBefore(QStringLiteral("it is not a time of at most one day, such as 200ms"));
    else if (*time < minimum)
        reader.failBefore(QStringLiteral("the time is too short"));
    return time.value_or(minimum);
}

int takeCount(LineReader& reader)
{
    constexpr qint64 maximum = 1000000;
    QByteArray word = reader.takeBare();
    int digits = 0;
    const qint64 count = takeDigits(word, digits).value_or(0);
    if (count < 1 || count > maximum || digits > 7 || !word.isEmpty())
        reader.failBefore(QStringLiteral("it is not a number from 1 to 1000000"));
    return static_cast<int>(count);
}

void readTrigger(LineReader& reader, SimulatorRow& row, bool isFirstRow)
{
    if (reader.take("connected")) {
        row.trigger = Trigger::Connected;
    } else if (reader.take("every")) {
        row.trigger = Trigger::Period;
        row.period = takeTime(reader, 1ms);
    } else if (reader.take("also")) {
        row.trigger = Trigger::Also;
        if (isFirstRow)
            reader.failBefore(QStringLiteral("there is no row before this one"));
    } else if (!reader.take("when")) {
        reader.fail(QStringLiteral("a row begins with connected, when, every or also"));
    } else if (!reader.take("any")) {
        row.trigger = reader.take("begins") ? Trigger::Beginning : Trigger::Message;
        row.triggerText = reader.takeText();
    }
}

void readOptions(LineReader& reader, SimulatorRow& row)
{
    bool hasDelay = false;
    bool isRepeated = false;
    while (true) {
        if (row.maximumTriggers == 0 && row.trigger != Trigger::Also && reader.take("first")) {
            row.maximumTriggers = takeCount(reader);
        } else if (!hasDelay && reader.take("after")) {
            hasDelay = true;
            row.delay = takeTime(reader);
        } else if (!isRepeated && reader.take("repeat")) {
            isRepeated = true;
            row.repetitions = takeCount(reader);
            if (reader.take("each"))
                row.pause = takeTime(reader);
        } else {
            return;
        }
    }
}

void readAction(LineReader& reader, SimulatorRow& row)
{
    for (const char* const& name : actionNames) {
        if (!reader.take(name))
            continue;
        row.action = static_cast<Action>(&name - actionNames);
        if (hasText(row.action))
            row.text = reader.takeText();
        return reader.requireEnd();
    }
    reader.fail(QStringLiteral("it is neither an action nor an option that may stand here"));
}

QByteArray triggerText(const SimulatorRow& row)
{
    switch (row.trigger) {
    case Trigger::Connected:
        return "connected";
    case Trigger::Message:
        return "when " + quotedWord(row.triggerText);
    case Trigger::Beginning:
        return "when begins " + quotedWord(row.triggerText);
    case Trigger::AnyMessage:
        return "when any";
    case Trigger::Period:
        return "every " + QByteArray::number(qint64(row.period.count())) + "ms";
    case Trigger::Also:
        break;
    }
    return "also";
}

QByteArray rowText(const SimulatorRow& row)
{
    QByteArray text = triggerText(row);
    if (row.maximumTriggers > 0)
        text += " first " + QByteArray::number(row.maximumTriggers);
    if (row.delay > 0ms)
        text += " after " + QByteArray::number(qint64(row.delay.count())) + "ms";
    if (row.repetitions > 1)
        text += " repeat " + QByteArray::number(row.repetitions) + " each " +
                QByteArray::number(qint64(row.pause.count())) + "ms";
    text += QByteArray(" ") + actionNames[static_cast<int>(row.action)];
    if (hasText(row.action))
        text += ' ' + quotedWord(row.text);
    return text + '\n';
}

} // namespace

std::optional<SimulatorScript> SimulatorScript::parse(const QByteArray& content, QString& error)
{
    SimulatorScript script;
    LineReader reader(content);
    if (content.size() > maximumSize_B)
        reader.fail(QStringLiteral("the script is larger than 16 MiB"));
    for (reader.readHead("script"); reader.nextLine();) {
        if (script.rows.size() == maximumRows)
            reader.fail(QStringLiteral("the script has more than %1 rows").arg(maximumRows));
        SimulatorRow row;
        readTrigger(reader, row, script.rows.isEmpty());
        readOptions(reader, row);
        readAction(reader, row);
        script.rows.append(row);
    }
    error = reader.error();
    return error.isEmpty() ? std::make_optional(script) : std::nullopt;
}

QByteArray SimulatorScript::toText() const
{
    QByteArray text = "zelsim script 1\n";
    for (const SimulatorRow& row : rows)
        text += rowText(row);
    return text;
}

// The number is counted in billionths of its unit, so that it is rounded only once.
std::optional<std::chrono::milliseconds> SimulatorScript::parseTime(const QByteArray& word)
{
    constexpr qint64 billion = 1000000000;
    constexpr std::chrono::milliseconds day = 24h;
    QByteArray unit = word;
    int digits = 0;
    const auto whole = takeDigits(unit, digits);
    qint64 fraction = 0;
    if (whole && unit.startsWith('.')) {
        unit.remove(0, 1);
        const auto decimals = takeDigits(unit, digits);
        if (!decimals)
            return std::nullopt;
        for (fraction = *decimals; digits < 9; ++digits)
            fraction *= 10;
    }
    const qint64 unit_ms = unit == "ms" ? 1 : unit == "s" ? 1000 : unit == "min" ? 60000 : 0;
    if (!whole || unit_ms == 0 || *whole > day.count() / unit_ms)
        return std::nullopt;
    const std::chrono::milliseconds time(((*whole * billion + fraction) * unit_ms + billion / 2) /
                                         billion);
    return time <= day ? std::make_optional(time) : std::nullopt;
}

} // namespace zeltools::simulatorkit
