#include "commandhelp.h"

#include "commands.h"
#include "words.h"

namespace
{

constexpr int s_width = 79;
constexpr int s_longestName = 24; // a longer one has a line for itself

QString spaces(int count)
{
    return QString(count, QLatin1Char(' '));
}

/// A title and rows of names and texts in two columns. Rows without a text are left out.
class Section
{
public:
    void add(const QString& name, const QString& text)
    {
        if (!text.isEmpty())
            m_rows.append({name, text});
    }
    void add(const std::vector<CommandParser::Row>& rows)
    {
        for (const CommandParser::Row& row : rows)
            add(QString::fromLatin1(row.name), Zelctl::tr(row.text));
    }
    QString text(const char* title) const
    {
        if (m_rows.isEmpty())
            return QString();
        int width = 0;
        for (const auto& [name, text] : m_rows)
            width = name.size() > s_longestName ? width : qMax(width, int(name.size()));
        QString lines = QStringLiteral("\n%1:\n").arg(Zelctl::tr(title));
        for (const auto& [name, text] : m_rows) {
            lines += spaces(2) + name;
            lines += name.size() > width ? QLatin1Char('\n') + spaces(width + 4)
                                         : spaces(width + 2 - int(name.size()));
            lines += wrapped(text, width + 4) + QLatin1Char('\n');
        }
        return lines;
    }

private:
    QVector<QPair<QString, QString>> m_rows;
};

QString rows(const char* title, const std::vector<CommandParser::Row>& rows)
{
    Section section;
    section.add(rows);
    return section.text(title);
}

QString examples(const std::vector<CommandParser::Row>& examples)
{
    QString text =
        examples.empty() ? QString() : QStringLiteral("\n%1:\n").arg(Zelctl::tr("Examples"));
    for (const CommandParser::Row& example : examples)
        text += QStringLiteral("  %1\n      %2\n")
                    .arg(QString::fromLatin1(example.name), wrapped(Zelctl::tr(example.text), 6));
    return text;
}

QString withOptions(const QString& command)
{
    return QStringLiteral("zelctl %1 [options]").arg(command);
}

} // namespace

QString wrapped(const QString& text, int indent)
{
    QString lines;
    int column = indent;
    const QStringList words = text.split(QLatin1Char(' '));
    for (const QString& word : words) {
        if (column > indent && column + 1 + word.size() > s_width) {
            lines += QLatin1Char('\n') + spaces(indent);
            column = indent;
        } else if (column > indent) {
            lines += QLatin1Char(' ');
            ++column;
        }
        lines += word;
        column += int(word.size());
    }
    return lines;
}

QString programHelp()
{
    Section section;
    for (const Command& command : commands())
        section.add(QString::fromLatin1(command.name), Zelctl::tr(command.summary));
    return Zelctl::tr("Usage: zelctl COMMAND [options]") + QLatin1Char('\n') +
           section.text(QT_TRANSLATE_NOOP("zelctl", "Commands")) + QLatin1Char('\n') +
           wrapped(Zelctl::tr("\"zelctl help COMMAND\" explains a command, and \"zelctl "
                              "--version\" prints the version.")) +
           QLatin1Char('\n');
}

QString commandHelp(const CommandParser& parser)
{
    const CommandParser::Description& description = parser.description();
    const QString usage = Zelctl::tr("Usage: %1");
    QString text =
        usage.arg(usageLines(parser).join(QLatin1Char('\n') + spaces(int(usage.size()) - 2))) +
        QLatin1Char('\n');
    const QStringList paragraphs = Zelctl::tr(description.text).split(QStringLiteral("\n\n"));
    for (const QString& paragraph : paragraphs)
        text += QLatin1Char('\n') + wrapped(paragraph) + QLatin1Char('\n');
    text += rows(QT_TRANSLATE_NOOP("zelctl", "Actions"), description.usages);
    Section options, values;
    for (const CommandParser::Value& value : description.values)
        values.add(QString::fromLatin1(value.name), valueText(value));
    for (const CommandParser::Option& option : description.options)
        options.add(optionSyntax(option), Zelctl::tr(option.text));
    return text + options.text(QT_TRANSLATE_NOOP("zelctl", "Options")) +
           values.text(QT_TRANSLATE_NOOP("zelctl", "Values")) +
           rows(QT_TRANSLATE_NOOP("zelctl", "Environment"), description.environment) +
           rows(QT_TRANSLATE_NOOP("zelctl", "Files"), description.files) +
           rows(QT_TRANSLATE_NOOP("zelctl", "Exit status"), exitStatuses(description)) +
           examples(description.examples);
}

QString optionSyntax(const CommandParser::Option& option)
{
    const QString name = QString::fromLatin1(option.name);
    const QString words =
        (name == QLatin1String("help") ? QStringLiteral("-h, --") : QStringLiteral("--")) + name;
    return *option.valueName == '\0'
               ? words
               : words + QLatin1Char(' ') + QString::fromLatin1(option.valueName);
}

QStringList usageLines(const CommandParser& parser)
{
    const QString name = QString::fromLatin1(parser.command().name);
    QStringList lines;
    for (const CommandParser::Row& row : parser.description().usages) {
        const QString usage = QLatin1Char(' ') + QString::fromLatin1(row.name);
        const QString longName = name + usage.section(QLatin1Char(' '), 0, 1);
        // The options of a command of two words stand behind both.
        lines.append(findCommand(longName) != nullptr
                         ? withOptions(longName) + usage.mid(longName.size() - name.size())
                         : withOptions(name) + usage);
    }
    return lines.isEmpty() ? QStringList(withOptions(name)) : lines;
}

QString valueText(const CommandParser::Value& value)
{
    QString text = Zelctl::tr(value.text);
    if (text.isEmpty())
        return text;
    if (value.kind == CommandParser::OneOf)
        text += QStringLiteral(": ") + value.words.join(QStringLiteral(", "));
    return text + QLatin1Char('.');
}

std::vector<CommandParser::Row> exitStatuses(const CommandParser::Description& description)
{
    const auto textOr = [](const char* text, const char* otherwise) {
        return *text == '\0' ? otherwise : text;
    };
    return {
        {"0", textOr(description.done, QT_TRANSLATE_NOOP("zelctl", "All is done."))},
        {"1",
         textOr(description.failed,
                QT_TRANSLATE_NOOP("zelctl", "It failed; one line on stderr gives the reason."))},
        {"2", QT_TRANSLATE_NOOP("zelctl", "The command line is wrong. Nothing has been done.")}};
}
