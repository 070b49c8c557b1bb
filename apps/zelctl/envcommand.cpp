#include "envcommand.h"

#include "cleanreplacement.h"
#include "commandparser.h"
#include "envfile.h"
#include "envlist.h"
#include "readfile.h"
#include "settings.h"
#include <zeltools/keyvaluefile.h>

#include <functional>

using zeltools::FileReplacement;

namespace
{

const QLatin1String s_list("list");
const QLatin1String s_get("get");
const QLatin1String s_set("set");
const QLatin1String s_unset("unset");

/// The number of words, from the file on, that an action needs; 0 for an unknown one.
int wordsOf(const QString& action)
{
    if (action == s_list)
        return 2;
    if (action == s_get || action == s_unset)
        return 3;
    return action == s_set ? 4 : 0;
}

QString unknown(const QString& path, const QString& name)
{
    return QStringLiteral("%1 is no switch, and not in %2").arg(name, path);
}

ExitStatus printValue(const QString& path, const Settings& settings, const QString& name)
{
    const std::optional<Setting> setting = settings.find(name);
    if (!setting)
        return fail(Failed, Settings::isSwitch(name) ? name + QStringLiteral(" has no value")
                                                     : unknown(path, name));
    return setting->reason.isEmpty() ? printLine(setting->value)
                                     : fail(Failed, faultMessage(path, *setting));
}

/// Edits the file by a function that returns whether it has changed the text.
ExitStatus edit(const QString& path, bool mayCreate, const std::function<bool(EnvFile&)>& change)
{
    FileReplacement file(path, FileReplacement::Edit);
    const FileContent content = readFile(file.path());
    if (file.errorString().isEmpty() && !content.error.isEmpty() && (content.exists || !mayCreate))
        return fail(Failed, content.error);
    EnvFile text(content.bytes);
    const bool isDone = change(text) ? replaceCleanly(file, text.text()) : file.sync();
    return isDone ? Done : fail(Failed, file.errorString());
}

ExitStatus set(const QString& path, const QString& name, const QString& value, bool isForced)
{
    if (!EnvFile::canHold(name, QStringLiteral("1")))
        return fail(Failed,
                    QStringLiteral("a line of the file cannot hold the name \"%1\"").arg(name));
    if (!isForced && !Settings::isSwitch(name))
        return fail(Failed, name + QStringLiteral(" is no switch; --force sets it all the same"));
    if (!EnvFile::canHold(name, value))
        return fail(Failed, QStringLiteral("a line of the file cannot hold the value \"%1\" of %2")
                                .arg(value, name));
    const QString reason = Settings::refusal(name, value);
    if (!reason.isEmpty())
        return fail(Failed, reason);
    return edit(path, true, [&](EnvFile& file) {
        const bool isChange = file.value(name) != value;
        if (isChange)
            file.set(name, value);
        return isChange;
    });
}

ExitStatus unset(const QString& path, const QString& name)
{
    bool isThere = false;
    const ExitStatus status = edit(path, false, [&](EnvFile& file) {
        isThere = file.value(name).has_value();
        file.unset(name);
        return isThere;
    });
    return status != Done || isThere || Settings::isSwitch(name)
               ? status
               : fail(Failed, unknown(path, name));
}

void addOptions(CommandParser& parser)
{
    parser.setDescription(
        "Shows and edits the environment file of a machine.\n\n"
        "  list            what the machine gets, and whether from the file, from the environment\n"
        "                  (here that of zelctl) or from the build (define); a value that the\n"
        "                  machine would refuse is marked as invalid, and an exit status of 1\n"
        "  get NAME        the value that the machine gets\n"
        "  set NAME VALUE  changes one line of the file, or appends it; creates a missing file\n"
        "                  (after \"--\" a VALUE may begin with \"-\")\n"
        "  unset NAME      removes the lines of that name\n"
        "  catalogue       all switches: name, type, category, flags (1 is visible, 2 and 4 are "
        "the\n"
        "                  application's), build default, description");
    parser.addArgument("FILE", "The environment file.",
                       "FILE list|get NAME|set NAME VALUE|unset NAME\n"
                       "       zelctl env [options] catalogue");
    parser.addOptions({
        {"force", "Sets also a name that is no switch known here."},
        {"json", "Prints the list or the catalogue as one JSON object."},
    });
}

} // namespace

ExitStatus runEnv(const QStringList& arguments)
{
    CommandParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parser.parse(arguments))
        return *status;
    const QStringList words = parser.arguments();
    const bool isJson = parser.isSet("json");
    if (words == QStringList(QStringLiteral("catalogue")))
        return printCatalogue(isJson);
    const QString path = words.value(0), action = words.value(1), name = words.value(2);
    if (path.isEmpty() || words.size() != wordsOf(action) || (isJson && action != s_list) ||
        (parser.isSet("force") && action != s_set))
        return fail(WrongUsage, QStringLiteral("see \"zelctl env --help\" for what env needs"));
    if (words.size() > 2 && name.isEmpty()) // a reader of the file takes it for a blank line
        return fail(WrongUsage, QStringLiteral("the name is empty"));
    if (action == s_set)
        return set(path, name, words[3], parser.isSet("force"));
    if (action == s_unset)
        return unset(path, name);
    const FileContent content = readFile(path);
    if (!content.error.isEmpty())
        return fail(Failed, content.error);
    const Settings settings(zeltools::keyvaluefile::parse(content.bytes));
    return action == s_list ? printList(path, settings, isJson) : printValue(path, settings, name);
}
