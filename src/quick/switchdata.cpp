#include "quick/switchdata_p.h"

#include "quick/access.h"
#include "quick/displaytext_p.h"
#include "quick/switchesmodel.h"
#include "quick/switchtexts_p.h"
#include "secretmask.h"

namespace zeltools::quick
{

using envvar::EnvVar;

namespace
{

QString sourceOf(const EnvVar& var)
{
    if (var.stringValueOpt(EnvVar::Env))
        return QStringLiteral("environment");
    return var.stringValueOpt(EnvVar::Defines) ? QStringLiteral("build") : QStringLiteral("unset");
}

/// The value, masked if it is a secret and the user may not change it.
QString visibleValue(const EnvVar& var, const std::optional<QString>& value)
{
    if (!value || Access::instance()->allows(Access::Technician))
        return value.value_or(QString());
    return withoutSecret(var.name(), *value);
}

DisplayText shown(const EnvVar& var, const std::optional<QString>& value)
{
    return DisplayText(visibleValue(var, value));
}

} // namespace

QVariant switchData(const EnvVar& var, int role)
{
    switch (role) {
    case Qt::DisplayRole:
    case SwitchesModel::NameRole:
        return DisplayText(var.name()).text;
    case SwitchesModel::ValueRole:
        return shown(var, var.stringValueOpt()).text;
    case SwitchesModel::FullValueRole:
        return visibleValue(var, var.stringValueOpt());
    case SwitchesModel::IsCutRole:
        return shown(var, var.stringValueOpt()).isCut;
    case SwitchesModel::DefaultValueRole:
        return shown(var, var.stringValueOpt(EnvVar::Defines)).text;
    case SwitchesModel::SourceRole:
        return sourceOf(var);
    case SwitchesModel::TypeRole:
        return int(var.type());
    case SwitchesModel::TypeNameRole:
        return SwitchTexts::typeName(var.type());
    case SwitchesModel::DescriptionRole:
        return DisplayText(SwitchTexts::description(var)).text;
    case SwitchesModel::CategoryRole:
        return int(var.category());
    case SwitchesModel::CategoryNameRole:
        return SwitchTexts::categoryName(var.category());
    case SwitchesModel::IsEditableRole:
        return Access::instance()->allows(Access::Technician);
    case SwitchesModel::IsVisibleRole:
        return var.flags().testFlag(envvar::Visible);
    case SwitchesModel::IsOnRole:
        return var.type() == envvar::Boolean && var.stringValueOpt() == QStringLiteral("1");
    default:
        return {};
    }
}

QHash<int, QByteArray> switchRoleNames()
{
    return {{SwitchesModel::NameRole, "name"},
            {SwitchesModel::ValueRole, "value"},
            {SwitchesModel::FullValueRole, "fullValue"},
            {SwitchesModel::IsCutRole, "isCut"},
            {SwitchesModel::DefaultValueRole, "defaultValue"},
            {SwitchesModel::SourceRole, "source"},
            {SwitchesModel::TypeRole, "type"},
            {SwitchesModel::TypeNameRole, "typeName"},
            {SwitchesModel::DescriptionRole, "description"},
            {SwitchesModel::CategoryRole, "category"},
            {SwitchesModel::CategoryNameRole, "categoryName"},
            {SwitchesModel::IsEditableRole, "isEditable"},
            {SwitchesModel::IsVisibleRole, "isVisible"},
            {SwitchesModel::IsOnRole, "isOn"}};
}

} // namespace zeltools::quick
