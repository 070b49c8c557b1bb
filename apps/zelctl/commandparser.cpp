#include "commandparser.h"

void CommandParser::setDescription(const char* description)
{
    m_parser.setApplicationDescription(QString::fromLatin1(description));
}

void CommandParser::addArgument(const char* name, const char* description, const char* syntax)
{
    m_parser.addPositionalArgument(QString::fromLatin1(name), QString::fromLatin1(description),
                                   QString::fromLatin1(syntax));
}

void CommandParser::addOptions(std::initializer_list<Option> options)
{
    for (const Option& option : options)
        m_parser.addOption(
            {QString::fromLatin1(option.name), QString::fromLatin1(option.description),
             QString::fromLatin1(option.valueName), QString::fromLatin1(option.defaultValue)});
}

std::optional<ExitStatus> CommandParser::parse(const QStringList& words)
{
    const QString help = QStringLiteral("help");
    m_parser.addOption({{QStringLiteral("h"), help}, QStringLiteral("Shows this help.")});
    const bool isParsed = m_parser.parse(words);
    if (m_parser.isSet(help))
        return print(m_parser.helpText());
    if (!isParsed)
        return fail(WrongUsage, m_parser.errorText());
    // A malformed text is decoded to this character. No file would be found by it.
    if (words.join(QString()).contains(QChar::ReplacementCharacter))
        return fail(WrongUsage, QStringLiteral("the arguments are not UTF-8"));
    return std::nullopt;
}
