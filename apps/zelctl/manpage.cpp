#include "manpage.h"

#include "commandhelp.h"
#include "commands.h"
#include "words.h"

#include <QDateTime>

namespace
{

/// Escapes the characters that would become typographic ones, and a full stop that would begin a
/// request at the start of a line.
QString roff(QString text)
{
    constexpr std::pair<char, const char*> escapes[]{
        {'\\', "\\e"},  {'-', "\\-"},   {'"', "\\(dq"}, {'\'', "\\(aq"},
        {'`', "\\(ga"}, {'^', "\\(ha"}, {'~', "\\(ti"},
    };
    for (const auto& [character, escape] : escapes)
        text.replace(QLatin1Char(character), QLatin1String(escape));
    if (text.startsWith(QLatin1Char('.')))
        text.prepend(QStringLiteral("\\&"));
    return text.replace(QStringLiteral(" ."), QStringLiteral(" \\&."));
}

/// Text in lines, as man pages have it.
QString lines(const QString& text)
{
    return wrapped(roff(text)) + QLatin1Char('\n');
}

QString bold(const QString& text)
{
    return QStringLiteral("\\fB") + roff(text) + QStringLiteral("\\fR");
}

/// A usage or an option: values are underlined, all else is bold.
QString syntax(const QString& text)
{
    QStringList words = text.split(QLatin1Char(' '));
    for (QString& word : words) {
        const bool isTyped =
            CommandParser::isTyped(word) && !word.startsWith(QLatin1Char('[')); // as in "[options]"
        word = isTyped ? bold(word) : QStringLiteral("\\fI") + roff(word) + QStringLiteral("\\fR");
    }
    return words.join(QLatin1Char(' '));
}

QString row(const QString& name, const QString& text)
{
    return text.isEmpty() ? QString() : QStringLiteral(".TP\n%1\n").arg(name) + lines(text);
}

QString section(const char* title, const QString& content)
{
    return content.isEmpty() ? QString()
                             : QStringLiteral(".SH %1\n").arg(Zelctl::tr(title)) + content;
}

QString section(const char* title, const std::vector<CommandParser::Row>& rows)
{
    QString content;
    for (const CommandParser::Row& each : rows)
        content += row(bold(QString::fromLatin1(each.name)), Zelctl::tr(each.text));
    return section(title, content);
}

QString page(const QString& name, const char* summary, const QString& content)
{
    bool isSet = false;
    const qint64 epoch_s = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&isSet);
    const QDateTime now =
        isSet ? QDateTime::fromSecsSinceEpoch(epoch_s, Qt::UTC) : QDateTime::currentDateTimeUtc();
    return QStringLiteral(".\\\" Written by \"zelctl help --man\".\n"
                          ".TH %1 1 %2 \"ZelTools %3\" \"ZelTools\"\n.SH NAME\n")
               .arg(roff(name.toUpper()), now.date().toString(Qt::ISODate),
                    QStringLiteral(ZELCTL_VERSION)) +
           wrapped(roff(name) + QStringLiteral(" \\- ") + roff(Zelctl::tr(summary).chopped(1))) +
           QLatin1Char('\n') + content;
}

QString reference(const QString& command)
{
    return bold(manPageName(command)) + QStringLiteral("(1)");
}

QString synopsis(const CommandParser& parser)
{
    const QString name = QStringLiteral("zelctl ") + QString::fromLatin1(parser.command().name);
    QStringList lines;
    const QStringList usages = usageLines(parser);
    for (const QString& usage : usages)
        lines +=
            bold(name) + QLatin1Char(' ') + syntax(usage.mid(name.size() + 1)) + QLatin1Char('\n');
    return lines.join(QStringLiteral(".br\n"));
}

QString description(const CommandParser::Description& command)
{
    QStringList paragraphs = Zelctl::tr(command.text).split(QStringLiteral("\n\n"));
    for (QString& paragraph : paragraphs)
        paragraph = lines(paragraph);
    QString text = paragraphs.join(QStringLiteral(".PP\n"));
    for (const CommandParser::Row& usage : command.usages)
        text += row(syntax(QString::fromLatin1(usage.name)), Zelctl::tr(usage.text));
    return text;
}

QString options(const CommandParser::Description& command)
{
    QString text;
    for (const CommandParser::Option& option : command.options)
        text += row(syntax(optionSyntax(option)), Zelctl::tr(option.text));
    QString values;
    for (const CommandParser::Value& value : command.values)
        values += row(syntax(QString::fromLatin1(value.name)), valueText(value));
    return values.isEmpty() ? text
                            : text + QStringLiteral(".SS %1\n").arg(Zelctl::tr("Values")) + values;
}

QString examples(const CommandParser::Description& command)
{
    QString text;
    for (const CommandParser::Row& example : command.examples)
        text += QStringLiteral("%1%2.PP\n.nf\n.RS 4\n%3\n.RE\n.fi\n")
                    .arg(text.isEmpty() ? QString() : QStringLiteral(".PP\n"),
                         lines(Zelctl::tr(example.text)), roff(QString::fromLatin1(example.name)));
    return text;
}

QString seeAlso(const QString& page)
{
    QStringList pages{reference(QString())};
    for (const Command& command : commands()) {
        const QString name = QString::fromLatin1(command.name);
        const bool isRelated =
            name.startsWith(page + QLatin1Char(' ')) || page.startsWith(name + QLatin1Char(' '));
        if (page.isEmpty() || isRelated)
            pages += reference(name);
    }
    return pages.mid(page.isEmpty() ? 1 : 0).join(QStringLiteral(",\n")) + QLatin1Char('\n');
}

} // namespace

QString programManPage()
{
    QString content = section(QT_TRANSLATE_NOOP("zelctl", "SYNOPSIS"),
                              QStringLiteral("\\fBzelctl\\fR \\fICOMMAND\\fR "
                                             "[\\fIoptions\\fR]\n"));
    QString names;
    for (const Command& command : commands())
        names += row(reference(QString::fromLatin1(command.name)), Zelctl::tr(command.summary));
    content += section(
        QT_TRANSLATE_NOOP("zelctl", "DESCRIPTION"),
        lines(Zelctl::tr("zelctl works with the files of a machine that uses the library ZelTools: "
                         "its logs, reports, switches and encrypted files; and with the simulators "
                         "beside it. Each command has a page of its own.")) +
            names);
    content += section(QT_TRANSLATE_NOOP("zelctl", "OPTIONS"),
                       {{"-h, --help", QT_TRANSLATE_NOOP("zelctl", "Lists the commands.")},
                        {"-v, --version", QT_TRANSLATE_NOOP("zelctl", "Prints the version.")}});
    content += section(QT_TRANSLATE_NOOP("zelctl", "EXIT STATUS"), exitStatuses({}));
    return page(QStringLiteral("zelctl"),
                QT_TRANSLATE_NOOP("zelctl", "Companion of the library ZelTools."),
                content + section(QT_TRANSLATE_NOOP("zelctl", "SEE ALSO"), seeAlso(QString())));
}

QString commandManPage(const CommandParser& parser)
{
    const CommandParser::Description& command = parser.description();
    const QString name = QString::fromLatin1(parser.command().name);
    return page(manPageName(name), parser.command().summary,
                section(QT_TRANSLATE_NOOP("zelctl", "SYNOPSIS"), synopsis(parser)) +
                    section(QT_TRANSLATE_NOOP("zelctl", "DESCRIPTION"), description(command)) +
                    section(QT_TRANSLATE_NOOP("zelctl", "OPTIONS"), options(command)) +
                    section(QT_TRANSLATE_NOOP("zelctl", "EXIT STATUS"), exitStatuses(command)) +
                    section(QT_TRANSLATE_NOOP("zelctl", "ENVIRONMENT"), command.environment) +
                    section(QT_TRANSLATE_NOOP("zelctl", "FILES"), command.files) +
                    section(QT_TRANSLATE_NOOP("zelctl", "EXAMPLES"), examples(command)) +
                    section(QT_TRANSLATE_NOOP("zelctl", "SEE ALSO"), seeAlso(name)));
}

QString manPageName(const QString& command)
{
    return command.isEmpty() ? QStringLiteral("zelctl")
                             : QStringLiteral("zelctl-") +
                                   QString(command).replace(QLatin1Char(' '), QLatin1Char('-'));
}
