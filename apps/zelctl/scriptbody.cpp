#include "scriptbody.h"

#include "commands.h"
#include "completionplaces.h"
#include "words.h"

namespace
{

/// Finds the command, the words between it and the cursor without the options, and the option
/// whose value is at the cursor.
constexpr auto s_walk = R"(    local command='' option='' word='' isEnded=''
    local -a places=()
    for word in "${before[@]}"; do
        if [[ -n $option ]]; then
            [[ $word == '=' ]] || option=
        elif [[ -n $isEnded || $word != -?* ]]; then
            case "$command $word ${#places[@]}" in
            %1) command="$command $word" ;;
            *) [[ -n $command ]] && places+=("$word") || command=$word ;;
            esac
        elif [[ $word == -- ]]; then
            isEnded=yes
        else
            case "$command $word" in
            %2) option=$word ;;
            esac
        fi
    done
)";

QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QStringLiteral("'\\''")) +
           QLatin1Char('\'');
}

/// The word and its description, as the described candidates of zsh have them.
QString described(const QString& word, const char* text)
{
    return quoted(word + QLatin1Char(':') + Zelctl::tr(text));
}

/// The lines that offer what may stand at the place; none for a text.
QString offers(const CompletionPlace& place, const QString& indent)
{
    QString lines;
    if (!place.words.isEmpty()) {
        lines += indent + QStringLiteral("_zelctl_words");
        for (const QString& word : place.words)
            lines += QLatin1Char(' ') + quoted(word);
        lines += QLatin1Char('\n');
    }
    if (place.hasFiles)
        lines += indent + QStringLiteral("_zelctl_files\n");
    if (place.hasFolders)
        lines += indent + QStringLiteral("_zelctl_folders\n");
    return lines;
}

QString branch(const QString& pattern, const QString& body)
{
    return QStringLiteral("        %1)\n%2            ;;\n").arg(pattern, body);
}

class ScriptParts
{
public:
    explicit ScriptParts(int firstIndex)
        : m_firstIndex(firstIndex)
    {
        QStringList names;
        for (const Command& command : commands()) {
            const QString name = QString::fromLatin1(command.name);
            if (name.contains(QLatin1Char(' ')))
                m_longNames += quoted(name + QStringLiteral(" 0"));
            else
                names += described(name, command.summary);
            add(CommandParser(command));
        }
        m_options += branch(QStringLiteral("''"),
                            QStringLiteral("            _zelctl_words --help --version\n"));
        m_places += branch(
            QStringLiteral("''"),
            QStringLiteral("            _zelctl_described %1\n").arg(names.join(QLatin1Char(' '))));
    }

    QString text() const
    {
        const QString bar = QStringLiteral(" | ");
        return QString::fromLatin1(s_walk).arg(m_longNames.join(bar), m_valued.join(bar)) +
               QStringLiteral("    if [[ -n $option ]]; then\n"
                              "        case \"$command $option\" in\n%1        esac\n"
                              "    elif [[ -z $isEnded && $current == -* ]]; then\n"
                              "        case $command in\n%2        esac\n"
                              "    else\n"
                              "        case $command in\n%3        esac\n"
                              "    fi\n}\n")
                   .arg(m_values, m_options, m_places);
    }

private:
    void add(const CommandParser& parser)
    {
        const QString indent(12, QLatin1Char(' '));
        const QString name = QString::fromLatin1(parser.command().name);
        QString options = indent + QStringLiteral("_zelctl_described");
        for (const CommandParser::Option& option : parser.description().options) {
            const QString word = QStringLiteral("--") + QString::fromLatin1(option.name);
            options += QLatin1Char(' ') + described(word, option.text);
            if (*option.valueName == '\0')
                continue;
            const QString pattern = quoted(name + QLatin1Char(' ') + word);
            m_valued += pattern;
            const QString offer = offers(valuePlace(parser, option), indent);
            if (!offer.isEmpty())
                m_values += branch(pattern, offer);
        }
        m_options += branch(quoted(name), options + QLatin1Char('\n'));
        QString places;
        const QVector<CompletionPlace> all = completionPlaces(parser);
        for (const CompletionPlace& place : all) {
            const QString offer = offers(place, indent + QStringLiteral("    "));
            if (!offer.isEmpty())
                places += indent + QStringLiteral("if [[ %1 ]]; then\n").arg(condition(place)) +
                          offer + indent + QStringLiteral("fi\n");
        }
        m_places += branch(quoted(name), places);
    }
    QString condition(const CompletionPlace& place) const
    {
        QString text = QStringLiteral("${#places[@]} == %1").arg(place.position);
        for (const auto& [position, word] : place.wordsBefore)
            text += QStringLiteral(" && ${places[%1]} == %2")
                        .arg(QString::number(position + m_firstIndex), quoted(word));
        return text;
    }

    const int m_firstIndex;
    QStringList m_longNames, m_valued;
    QString m_values, m_options, m_places;
};

} // namespace

QString scriptBody(int firstIndex)
{
    return ScriptParts(firstIndex).text();
}
