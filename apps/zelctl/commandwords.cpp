#include "commandwords.h"

#include "words.h"

#include <algorithm>

namespace
{

/// A usage such as "FILE get NAME", "SCRIPT [ADDRESS]" or "[A [B]]".
struct Usage
{
    QString text;
    QStringList words;
    int least = 0; ///< how many words there must be
    int most = 0;
    int action = -1; ///< the place of the word that is typed as it is, or -1
};

Usage parse(const QString& text, const CommandParser& parser)
{
    Usage usage;
    usage.text = text;
    const QString required = text.section(QLatin1Char('['), 0, 0);
    usage.least = static_cast<int>(CommandParser::wordsOf(required).size());
    usage.words = CommandParser::wordsOf(text);
    usage.most = static_cast<int>(usage.words.size());
    for (int i = 0; i < usage.most; ++i) {
        if (CommandParser::isTyped(usage.words[i]))
            usage.action = i;
    }
    // The name of a command may have two words.
    const QStringList values = parser.valueOf(usage.words.value(0)).words;
    if (!values.filter(QStringLiteral(" ")).isEmpty())
        ++usage.most;
    return usage;
}

bool isAction(const Usage& usage, const QStringList& words)
{
    return usage.action >= 0 && words.value(usage.action) == usage.words[usage.action];
}

bool fits(const Usage& usage, const QStringList& words)
{
    return words.size() >= usage.least && words.size() <= usage.most &&
           (usage.action < 0 || isAction(usage, words));
}

QString problemWithEmpty(const Usage& usage, const CommandParser& parser)
{
    const QStringList words = parser.arguments();
    for (int i = 0; i < words.size(); ++i) {
        const CommandParser::Kind kind = parser.valueOf(usage.words.value(i)).kind;
        if (words[i].isEmpty() && (kind == CommandParser::File || kind == CommandParser::Folder))
            return Zelctl::tr("%1 is empty").arg(usage.words[i]);
    }
    return QString();
}

QString problemWithCount(const Usage& usage, const CommandParser& parser)
{
    const QStringList words = parser.arguments();
    const QString form = QStringLiteral("zelctl %1 %2")
                             .arg(QString::fromLatin1(parser.command().name), usage.text)
                             .trimmed();
    return words.size() < usage.least
               ? Zelctl::tr("%1 is missing in \"%2\"").arg(usage.words[words.size()], form)
               : Zelctl::tr("unexpected argument \"%1\"; usage: %2").arg(words[usage.most], form);
}

QString problemWithAction(const std::vector<Usage>& usages, const QStringList& words)
{
    QStringList forms;
    int place = 0;
    for (const Usage& usage : usages) {
        forms.append(usage.text);
        place = std::max(place, usage.action);
    }
    const QString all = forms.join(QStringLiteral(", "));
    return words.size() > place
               ? Zelctl::tr("unknown action \"%1\"; the actions are: %2").arg(words[place], all)
               : Zelctl::tr("an action is missing; the actions are: %1").arg(all);
}

} // namespace

QString problemWithWords(const CommandParser& parser)
{
    const QStringList words = parser.arguments();
    std::vector<Usage> usages;
    for (const CommandParser::Row& row : parser.description().usages)
        usages.push_back(parse(QString::fromLatin1(row.name), parser));
    if (usages.empty())
        usages.push_back(parse(QString(), parser));
    // A word that is typed as it is comes before a value, which could be any word.
    std::stable_sort(usages.begin(), usages.end(), [&words](const Usage& a, const Usage& b) {
        return isAction(a, words) && !isAction(b, words);
    });
    const auto fitting = std::find_if(usages.begin(), usages.end(),
                                      [&words](const Usage& usage) { return fits(usage, words); });
    if (fitting != usages.end())
        return problemWithEmpty(*fitting, parser);
    const auto nearest = std::find_if(usages.begin(), usages.end(), [&words](const Usage& usage) {
        return usage.action < 0 || isAction(usage, words);
    });
    return nearest != usages.end() ? problemWithCount(*nearest, parser)
                                   : problemWithAction(usages, words);
}

QString problemWithOptions(const CommandParser& parser, const QString& action,
                           const ActionOptions& options)
{
    for (const auto& [option, actions] : options) {
        const QString all = QString::fromLatin1(actions);
        if (parser.isSet(option) && !all.split(QStringLiteral(", ")).contains(action))
            return Zelctl::tr("--%1 is only valid with %2").arg(QString::fromLatin1(option), all);
    }
    return QString();
}
