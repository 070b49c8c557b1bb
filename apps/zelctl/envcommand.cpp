#include "envcommand.h"

#include "cleanreplacement.h"
#include "commandparser.h"
#include "commandwords.h"
#include "envlist.h"
#include "folder.h"
#include "readfile.h"
#include "settings.h"
#include "table.h"
#include "words.h"
#include <zeltools/keyvaluefile.h>
#include <zeltools/keyvaluelines.h>

#include <functional>

using zeltools::FileReplacement;
using zeltools::KeyValueLines;

namespace
{

const QLatin1String s_list("list");
const QLatin1String s_set("set");
const QLatin1String s_unset("unset");

QString unknown(const QString& path, const QString& name)
{
    return Zelctl::tr("%1 is not a switch, and not in %2").arg(name, path);
}

ExitStatus printValue(const QString& path, const Settings& settings, const QString& name,
                      bool isJson)
{
    const std::optional<Setting> setting = settings.find(name);
    if (!setting)
        return fail(Failed, Settings::isSwitch(name) ? Zelctl::tr("%1 has no value").arg(name)
                                                     : unknown(path, name));
    if (!setting->reason.isEmpty())
        return fail(Failed, faultMessage(path, *setting));
    return isJson ? printJson(jsonObject(
                        {{"name", name}, {"value", setting->value}, {"source", setting->source}}))
                  : printLine(setting->value);
}

/// Edits the file by a function that returns whether it has changed the text.
ExitStatus edit(const QString& path, bool mayCreate,
                const std::function<bool(KeyValueLines&)>& change)
{
    const QString problem = problemWithOutput(path);
    if (!problem.isEmpty())
        return fail(Failed, problem);
    FileReplacement file(path, FileReplacement::Edit);
    const FileContent content = readFile(file.path());
    if (file.errorString().isEmpty() && !content.error.isEmpty() && (content.exists || !mayCreate))
        return fail(Failed, content.error);
    KeyValueLines text(content.bytes);
    const bool isDone = change(text) ? replaceCleanly(file, text.text()) : file.sync();
    return isDone ? Done : fail(Failed, file.errorString());
}

ExitStatus set(const QString& path, const QString& name, const QString& value, bool isForced)
{
    if (!KeyValueLines::canHold(name, QStringLiteral("1")))
        return fail(Failed, Zelctl::tr("a line of the file cannot hold the name \"%1\"").arg(name));
    if (!isForced && !Settings::isSwitch(name))
        return fail(Failed, Zelctl::tr("%1 is not a switch; --force sets it anyway").arg(name));
    if (!KeyValueLines::canHold(name, value))
        return fail(
            Failed,
            Zelctl::tr("a line of the file cannot hold the value \"%1\" of %2").arg(value, name));
    const QString reason = Settings::refusal(name, value);
    if (!reason.isEmpty())
        return fail(Failed, reason);
    return edit(path, true, [&](KeyValueLines& file) {
        const bool isChange = file.value(name) != value;
        if (isChange)
            file.set(name, value);
        return isChange;
    });
}

ExitStatus unset(const QString& path, const QString& name)
{
    bool isThere = false;
    const ExitStatus status = edit(path, false, [&](KeyValueLines& file) {
        isThere = file.value(name).has_value();
        file.unset(name);
        return isThere;
    });
    return status != Done || isThere || Settings::isSwitch(name)
               ? status
               : fail(Failed, unknown(path, name));
}

} // namespace

void describeEnv(CommandParser& parser)
{
    parser.setDescription(
        QT_TRANSLATE_NOOP("zelctl", "Shows and edits the environment file of a machine."));
    parser.addUsages({
        {"FILE list", QT_TRANSLATE_NOOP(
                          "zelctl", "What the machine gets, and whether from the file, from the "
                                    "environment (here that of zelctl) or from the build (define). "
                                    "A value that the machine would refuse is marked as invalid.")},
        {"FILE get NAME", QT_TRANSLATE_NOOP("zelctl", "The value that the machine gets.")},
        {"FILE set NAME VALUE",
         QT_TRANSLATE_NOOP("zelctl", "Changes one line of the file, or appends it; creates a "
                                     "missing file. After \"--\" a VALUE may begin with \"-\".")},
        {"FILE unset NAME", QT_TRANSLATE_NOOP("zelctl", "Removes the lines of that name.")},
        {"catalogue",
         QT_TRANSLATE_NOOP("zelctl", "All switches: name, type, category, flags (1 is visible, 2 "
                                     "and 4 are the application's), build default, description.")},
    });
    parser.addValues({
        {"FILE", QT_TRANSLATE_NOOP("zelctl", "The environment file"), CommandParser::File},
        {"NAME", QT_TRANSLATE_NOOP("zelctl", "The name of a switch"), CommandParser::Name,
         Settings::switches()},
    });
    parser.addOptions({
        {"force", QT_TRANSLATE_NOOP("zelctl", "Also sets a name that is not a known switch.")},
        {"wide",
         QT_TRANSLATE_NOOP("zelctl", "Does not fit the list or the catalogue into the terminal.")},
        {"json", QT_TRANSLATE_NOOP(
                     "zelctl", "Prints the list, the value or the catalogue as one JSON object.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "The value was printed, or the file holds it."),
        QT_TRANSLATE_NOOP("zelctl", "The file cannot be read or written, the name is unknown, or "
                                    "the machine would refuse a value."));
    parser.addExamples({
        {"zelctl env launcher/environment list",
         QT_TRANSLATE_NOOP("zelctl", "Shows what a machine would get.")},
        {"zelctl env launcher/environment set CANBUS_SIMULATION 1",
         QT_TRANSLATE_NOOP("zelctl", "Sets a switch.")},
    });
}

ExitStatus runEnv(const CommandParser& parser)
{
    const QStringList words = parser.arguments();
    const bool isJson = parser.isSet("json");
    const int width = parser.isSet("wide") ? 0 : terminalWidth();
    const QString path = words.value(0), action = words.value(1, path), name = words.value(2);
    const QString misuse = problemWithOptions(
        parser, action,
        {{"json", "list, get, catalogue"}, {"wide", "list, catalogue"}, {"force", "set"}});
    if (!misuse.isEmpty())
        return refuse(misuse);
    if (words.size() == 1) // "catalogue"
        return printCatalogue(isJson, width);
    if (words.size() > 2 && name.isEmpty()) // a reader of the file takes it for a blank line
        return refuse(Zelctl::tr("the name is empty"));
    if (action == s_set)
        return set(path, name, words[3], parser.isSet("force"));
    if (action == s_unset)
        return unset(path, name);
    const FileContent content = readFile(path);
    if (!content.error.isEmpty())
        return fail(Failed, content.error);
    const Settings settings(zeltools::keyvaluefile::parse(content.bytes));
    return action == s_list ? printList(path, settings, isJson, width)
                            : printValue(path, settings, name, isJson);
}
