#include "envcommand.h"

#include "cleanreplacement.h"
#include "envfile.h"
#include "readfile.h"
#include "settings.h"
#include <zeltools/envvar/envvarstore.h>
#include <zeltools/keyvaluefile.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaEnum>

#include <algorithm>
#include <functional>

using zeltools::FileReplacement;
using zeltools::envvar::Category;
using zeltools::envvar::EnvVar;
using zeltools::envvar::EnvVarStore;
using zeltools::envvar::typeToString;

namespace
{

QString unknown(const QString& path, const QString& name)
{
    return name + " is no switch, and not in " + path;
}

/// Columns as wide as their widest text; the last one has no blanks at its end. A line of rubbish
/// in the file, which is a name to a reader, does not widen all others.
QString table(const QVector<QStringList>& rows)
{
    constexpr int maximumWidth = 50;
    QVector<int> widths(rows.value(0).size());
    for (const QStringList& row : rows) {
        for (int column = 0; column < row.size(); ++column)
            widths[column] =
                std::max(widths[column], std::min<int>(row[column].size(), maximumWidth));
    }
    QString text;
    for (const QStringList& row : rows) {
        for (int column = 0; column < row.size() - 1; ++column)
            text += row[column].leftJustified(widths[column]) + "  ";
        text += row.last() + '\n';
    }
    return text;
}

ExitStatus printJson(const char* member, const QJsonArray& array)
{
    return print(QString::fromUtf8(
                     QJsonDocument(QJsonObject{{member, array}}).toJson(QJsonDocument::Compact)) +
                 '\n');
}

ExitStatus printCatalogue(bool isJson)
{
    QJsonArray array;
    QVector<QStringList> rows;
    for (const EnvVar* var : EnvVarStore::instance().vars()) {
        const auto category = QMetaEnum::fromType<Category>().valueToKey(var->category());
        const auto define = var->stringValueOpt(EnvVar::Defines);
        array.append(QJsonObject{{"name", var->name()},
                                 {"type", typeToString(var->type())},
                                 {"category", category},
                                 {"flags", int(var->flags())},
                                 {"default", define ? QJsonValue(*define) : QJsonValue()},
                                 {"description", var->description()}});
        rows.append({var->name(), typeToString(var->type()), category,
                     QString::number(int(var->flags())), define.value_or("-"),
                     QString(var->description()).replace('\n', ' ')});
    }
    return isJson ? printJson("switches", array) : print(table(rows));
}

QString originOf(const QString& source, const QString& path)
{
    return source == "file" ? path : "the environment";
}

ExitStatus printList(const QString& path, const Settings& settings, bool isJson)
{
    QJsonArray array;
    QVector<QStringList> rows;
    QString invalid;
    for (const Setting& setting : settings.all()) {
        const QString fault = setting.fault;
        array.append(QJsonObject{{"name", setting.name},
                                 {"value", setting.value},
                                 {"source", setting.source},
                                 {"known", fault != "unknown"},
                                 {"valid", setting.reason.isEmpty()}});
        rows.append({setting.name, setting.source + (fault.isEmpty() ? fault : ", " + fault),
                     setting.value});
        if (!setting.reason.isEmpty() && invalid.isEmpty())
            invalid = originOf(setting.source, path) + ": " + setting.reason;
    }
    if (invalid.isEmpty() && !Settings::refusedAtStart().isEmpty())
        invalid = originOf("environment", path) + ": " + Settings::refusedAtStart();
    const ExitStatus status = isJson ? printJson("settings", array) : print(table(rows));
    return status == Done && !invalid.isEmpty() ? fail(Failed, invalid) : status;
}

ExitStatus printValue(const QString& path, const Settings& settings, const QString& name)
{
    const std::optional<Setting> setting = settings.find(name);
    if (!setting)
        return fail(Failed,
                    Settings::isSwitch(name) ? name + " has no value" : unknown(path, name));
    return setting->reason.isEmpty()
               ? print(setting->value + '\n')
               : fail(Failed, originOf(setting->source, path) + ": " + setting->reason);
}

/// `change` returns whether there was anything to change.
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
    if (!EnvFile::canHold(name, "1"))
        return fail(Failed, "a line of the file cannot hold the name \"" + name + '"');
    if (!isForced && !Settings::isSwitch(name))
        return fail(Failed, name + " is no switch; --force sets it all the same");
    if (!EnvFile::canHold(name, value))
        return fail(Failed,
                    "a line of the file cannot hold the value \"" + value + "\" of " + name);
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

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
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
    parser.addPositionalArgument("FILE", "The environment file.",
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
    QCommandLineParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parse(parser, arguments))
        return *status;
    const QStringList words = parser.positionalArguments();
    const bool isJson = parser.isSet("json");
    if (words == QStringList("catalogue"))
        return printCatalogue(isJson);

    const QString path = words.value(0), action = words.value(1), name = words.value(2);
    const QMap<QString, int> wordsOf{{"list", 2}, {"get", 3}, {"set", 4}, {"unset", 3}};
    if (path.isEmpty() || wordsOf.value(action) != words.size() || (isJson && action != "list") ||
        (parser.isSet("force") && action != "set"))
        return fail(WrongUsage, "see \"zelctl env --help\" for what env needs");
    if (words.size() > 2 && name.isEmpty())
        return fail(WrongUsage, "the name is empty"); // to a reader of the file, a blank line
    if (action == "set")
        return set(path, name, words[3], parser.isSet("force"));
    if (action == "unset")
        return unset(path, name);
    const FileContent content = readFile(path);
    if (!content.error.isEmpty())
        return fail(Failed, content.error);
    const Settings settings(zeltools::keyvaluefile::parse(content.bytes));
    return action == "list" ? printList(path, settings, isJson) : printValue(path, settings, name);
}
