#include "envlist.h"

#include <zeltools/envvar/envvarstore.h>

#include <QJsonArray>
#include <QMetaEnum>

#include <algorithm>

using zeltools::envvar::Category;
using zeltools::envvar::EnvVar;
using zeltools::envvar::EnvVarStore;
using zeltools::envvar::typeToString;

namespace
{

/// Makes columns as wide as their widest text, up to a limit: a damaged line of the file is a name
/// to a reader and must not widen all others. The last column has no blanks at its end.
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
            text += row[column].leftJustified(widths[column]) + QLatin1String("  ");
        text += row.last() + QLatin1Char('\n');
    }
    return text;
}

QString environmentMessage(const QString& reason)
{
    return QStringLiteral("the environment: ") + reason;
}

} // namespace

ExitStatus printCatalogue(bool isJson)
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
    return isJson ? printJson(jsonObject({{"switches", array}})) : print(table(rows));
}

ExitStatus printList(const QString& path, const Settings& settings, bool isJson)
{
    QJsonArray array;
    QVector<QStringList> rows;
    QString invalid;
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
        if (!setting.reason.isEmpty() && invalid.isEmpty())
            invalid = faultMessage(path, setting);
    }
    if (invalid.isEmpty() && !Settings::refusedAtStart().isEmpty())
        invalid = environmentMessage(Settings::refusedAtStart());
    const ExitStatus status =
        isJson ? printJson(jsonObject({{"settings", array}})) : print(table(rows));
    return status == Done && !invalid.isEmpty() ? fail(Failed, invalid) : status;
}

QString faultMessage(const QString& path, const Setting& setting)
{
    return setting.source == QLatin1String("file")
               ? QStringLiteral("%1: %2").arg(path, setting.reason)
               : environmentMessage(setting.reason);
}
