#include "commandparser.h"

#include "commandhelp.h"
#include "commandwords.h"
#include "words.h"

namespace
{

/// The messages of QCommandLineParser, whose own translations are not installed with zelctl.
[[maybe_unused]] constexpr const char* s_problems[]{
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown option '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown options: %1."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Missing value after '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unexpected value after '%1'."),
};

} // namespace

QStringList CommandParser::wordsOf(const QString& usage)
{
    return QString(usage)
        .remove(QLatin1Char('['))
        .remove(QLatin1Char(']'))
        .split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

CommandParser::CommandParser(const Command& command)
    : m_command(command)
{
    // Otherwise a word such as "-path" would be the short options p, a, t and h, the help.
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    command.describe(*this);
    addOptions({{"help", QT_TRANSLATE_NOOP("zelctl", "Shows this help.")}});
}

void CommandParser::addOptions(std::initializer_list<Option> options)
{
    for (const Option& option : options) {
        QStringList names(QString::fromLatin1(option.name));
        if (names.first() == QLatin1String("help"))
            names.prepend(QStringLiteral("h"));
        m_parser.addOption({names, QString(), QString::fromLatin1(option.valueName),
                            QString::fromLatin1(option.defaultValue)});
        m_description.options.push_back(option);
    }
}

void CommandParser::setExitStatuses(const char* done, const char* failed)
{
    m_description.done = done;
    m_description.failed = failed;
}

CommandParser::Value CommandParser::valueOf(const QString& name) const
{
    for (const Value& value : m_description.values) {
        if (name == QLatin1String(value.name))
            return value;
    }
    if (name.contains(QLatin1Char('|')))
        return {"", "", OneOf, name.split(QLatin1Char('|'))};
    return {"", ""};
}

QStringList CommandParser::names(const char* option) const
{
    const QChar comma(QLatin1Char(','));
    return isSet(option) ? values(option).join(comma).split(comma) : QStringList();
}

std::optional<ExitStatus> CommandParser::parse(const QStringList& words)
{
    const bool isParsed = m_parser.parse(words);
    if (isSet("help"))
        return print(commandHelp(*this));
    // A malformed text is decoded to this character. No file would be found by it.
    const bool isUtf8 = !words.join(QString()).contains(QChar::ReplacementCharacter);
    const QString misuse = !isParsed ? m_parser.errorText().chopped(1) // its full stop
                           : isUtf8  ? problem()
                                     : Zelctl::tr("the arguments are not UTF-8");
    if (misuse.isEmpty())
        return std::nullopt;
    return refuse(misuse);
}

QString CommandParser::problem() const
{
    for (const Option& option : m_description.options) {
        const QString name = QString::fromLatin1(option.name);
        if (*option.valueName != '\0' && !option.isRepeatable && m_parser.values(name).size() > 1)
            return Zelctl::tr("--%1 is given more than once").arg(name);
    }
    return problemWithWords(*this);
}
