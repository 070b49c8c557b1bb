#include "envlist.h"

#include "table.h"
#include "words.h"
#include <zeltools/envvar/envvarstore.h>

#include <QJsonArray>
#include <QMetaEnum>

using zeltools::envvar::Category;
using zeltools::envvar::EnvVar;
using zeltools::envvar::EnvVarStore;
using zeltools::envvar::typeToString;

namespace
{

QString environmentMessage(const QString& reason)
{
    return Zelctl::tr("the environment: %1").arg(reason);
}

} // namespace

ExitStatus printCatalogue(bool isJson, int width)
{
    QJsonArray array;
    QVector<QStringList> rows;
    for (const EnvVar* var : EnvVarStore::instance().vars()) {
        const QString type = typeToString(var->type());
        const auto category =
            QString::fromLatin1(QMetaEnum::fromType<Category>().valueToKey(var->category()));
        const auto define = var->stringValueOpt(EnvVar::Defines);
        array.append(jsonObject({
            {"name", var->name()},
            {"type", type},
            {"category", category},
            {"flags", int(var->flags())},
            {"default", define ? QJsonValue(*define) : QJsonValue()},
            {"description", var->description()},
        }));
        rows.append({var->name(), type, category, QString::number(int(var->flags())),
                     define.value_or(QStringLiteral("-")),
                     QString(var->description()).replace(QLatin1Char('\n'), QLatin1Char(' '))});
    }
    return isJson ? printJson(jsonObject({{"switches", array}})) : print(table(rows, width));
}

ExitStatus printList(const QString& path, const Settings& settings, bool isJson, int width)
{
    QJsonArray array;
    QVector<QStringList> rows;
    QString invalid;
    bool hasCause = false;
    const QVector<Setting> all = settings.all();
    for (const Setting& setting : all) {
        array.append(jsonObject({
            {"name", setting.name},
            {"value", setting.value},
            {"source", setting.source},
            {"known", setting.fault != QLatin1String("unknown")},
            {"valid", setting.reason.isEmpty()},
        }));
        const QString separator = setting.fault.isEmpty() ? QString() : QStringLiteral(", ");
        rows.append({setting.name, setting.source + separator + setting.fault, setting.value});
        // Rows that are not reached name themselves in their reasons, and not the cause.
        const bool isCause = setting.fault == QLatin1String("invalid");
        if (!setting.reason.isEmpty() && (invalid.isEmpty() || (isCause && !hasCause)))
            invalid = faultMessage(path, setting);
        hasCause = hasCause || isCause;
    }
    if (invalid.isEmpty() && !Settings::refusedAtStart().isEmpty())
        invalid = environmentMessage(Settings::refusedAtStart());
    const ExitStatus status =
        isJson ? printJson(jsonObject({{"settings", array}})) : print(table(rows, width));
    return status == Done && !invalid.isEmpty() ? fail(Failed, invalid) : status;
}

QString faultMessage(const QString& path, const Setting& setting)
{
    return setting.source == QLatin1String("file")
               ? QStringLiteral("%1: %2").arg(path, setting.reason)
               : environmentMessage(setting.reason);
}
