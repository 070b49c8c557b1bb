#include "commands.h"
#include "completionplaces.h"
#include "shellcompletion.h"
#include "words.h"

namespace
{

/// fish knows the options of a command line, but not which words are values of options.
constexpr auto s_start = R"(# Completion of zelctl in fish, written by "zelctl completion fish".

# Prints the command, and the words between it and the cursor without the options.
function __zelctl_places
    set -l command ''
    set -l option ''
    set -l ended ''
    set -l places
    for word in (commandline -opc)[2..-1]
        if test -n "$option"
            set option ''
        else if test -n "$ended"; or not string match -qr -- '^-.' $word
            switch "$command $word "(count $places)
                case %1
                    set command "$command $word"
                case '*'
                    test -n "$command"; and set -a places $word; or set command $word
            end
        else if test "$word" = --
            set ended yes
        else
            switch "$command $word"
                case %2
                    set option $word
            end
        end
    end
    string join \n -- "$command" $places
end

# Whether so many words stand between the command and the cursor. Further arguments are pairs of the
# position of one of these words and the word.
function __zelctl_at -a command position
    set -l places (__zelctl_places)
    test "$places[1]" = "$command" -a (count $places) -eq (math $position + 1); or return 1
    for i in (seq 3 2 (count $argv))
        set -l place (math $argv[$i] + 2)
        set -l word (math $i + 1)
        test "$places[$place]" = "$argv[$word]"; or return 1
    end
end

function __zelctl_in -a command
    test (__zelctl_places)[1] = "$command"
end

complete -c zelctl -f
complete -c zelctl -n '__zelctl_in ""' -s h -l help%3complete -c zelctl -n '__zelctl_in ""' -s v -l version%4)";

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QStringLiteral("\\'")) +
           QLatin1Char('\'');
}

/// The start of a line that completes under a condition, which is a command of fish.
QString completeIf(const QString& condition)
{
    return QStringLiteral("complete -c zelctl -n ") + quoted(condition);
}

QString described(const char* text)
{
    return QStringLiteral(" -d ") + quoted(Zelctl::tr(text)) + QLatin1Char('\n');
}

/// The arguments that offer what may stand at the place; fish expands the words once more.
QString offers(const CompletionPlace& place)
{
    QStringList words;
    for (const QString& word : place.words)
        words += quoted(word);
    if (place.hasFolders)
        words += QStringLiteral("(__fish_complete_directories (commandline -ct) '')");
    QString text = place.hasFiles ? QStringLiteral(" -F") : QString();
    if (!words.isEmpty())
        text += QStringLiteral(" -a ") + quoted(words.join(QLatin1Char(' ')));
    return text;
}

QString options(const CommandParser& parser)
{
    QString lines;
    const QString condition =
        QStringLiteral("__zelctl_in ") + quoted(QString::fromLatin1(parser.command().name));
    for (const CommandParser::Option& option : parser.description().options) {
        const QString name = QString::fromLatin1(option.name);
        lines += completeIf(condition) + QStringLiteral(" -l ") + name;
        if (name == QLatin1String("help"))
            lines += QStringLiteral(" -s h");
        const CompletionPlace place = valuePlace(parser, option);
        if (*option.valueName != '\0')
            lines +=
                (place.hasFiles ? QStringLiteral(" -r") : QStringLiteral(" -x")) + offers(place);
        lines += described(option.text);
    }
    return lines;
}

QString places(const CommandParser& parser)
{
    QString lines;
    const QVector<CompletionPlace> all = completionPlaces(parser);
    for (const CompletionPlace& place : all) {
        QString condition = QStringLiteral("__zelctl_at %1 %2")
                                .arg(quoted(QString::fromLatin1(parser.command().name)))
                                .arg(place.position);
        for (const auto& [position, word] : place.wordsBefore)
            condition += QStringLiteral(" %1 %2").arg(QString::number(position), quoted(word));
        const QString offer = offers(place);
        if (!offer.isEmpty())
            lines += completeIf(condition) + offer + QLatin1Char('\n');
    }
    return lines;
}

} // namespace

QString fishCompletion()
{
    QStringList longNames, valued;
    QString lines;
    for (const Command& command : commands()) {
        const QString name = QString::fromLatin1(command.name);
        if (name.contains(QLatin1Char(' ')))
            longNames += quoted(name + QStringLiteral(" 0"));
        else
            lines += completeIf(QStringLiteral("__zelctl_at \"\" 0")) + QStringLiteral(" -a ") +
                     name + described(command.summary);
        const CommandParser parser(command);
        lines += options(parser) + places(parser);
        for (const CommandParser::Option& option : parser.description().options) {
            if (*option.valueName != '\0')
                valued += quoted(name + QStringLiteral(" --") + QString::fromLatin1(option.name));
        }
    }
    const QLatin1Char space(' ');
    return QString::fromLatin1(s_start).arg(
               longNames.join(space), valued.join(space),
               described(QT_TRANSLATE_NOOP("zelctl", "Lists the commands.")),
               described(QT_TRANSLATE_NOOP("zelctl", "Prints the version."))) +
           lines;
}
