#include "settings.h"

#include <zeltools/envvar/envvarstore.h>
#include <zeltools/logging/logmodules.h>

#include <QSet>

using zeltools::envvar::EnvVar;
using zeltools::envvar::EnvVarStore;
using zeltools::envvar::typeToString;

namespace
{

/// Switches that are read straight from the process environment, where the file puts them.
const QStringList& logSwitches()
{
    static const QStringList names =
        LogModules::getEnvVars() + QStringList{"ZEL_DEBUG_ALL", "LOG_FROM_MAIN_THREAD"};
    return names;
}

QStringList allSwitches()
{
    QStringList names;
    for (const EnvVar* var : EnvVarStore::instance().vars())
        names += var->name();
    return names + logSwitches();
}

std::optional<QString> environmentValue(const QString& name)
{
    const QByteArray value = qgetenv(name.toUtf8().constData());
    return value.isNull() ? std::nullopt : std::optional(QString::fromUtf8(value));
}

} // namespace

Settings::Settings(const QMap<QString, QString>& file)
    : m_file(file)
{
    for (auto line = file.begin(); line != file.end() && m_firstRefused.isEmpty(); ++line) {
        const EnvVar* var = EnvVarStore::instance().findEnvVar(line.key());
        if (var != nullptr && !var->isStringValueValid(line.value()))
            m_firstRefused = line.key();
    }
}

bool Settings::isSwitch(const QString& name)
{
    static const QStringList list = allSwitches();
    static const QSet<QString> names(list.begin(), list.end());
    return names.contains(name);
}

QString Settings::refusal(const QString& name, const QString& value)
{
    const EnvVar* var = EnvVarStore::instance().findEnvVar(name);
    const bool isBoolean =
        var != nullptr ? var->type() == zeltools::envvar::Boolean : isSwitch(name);
    // A log switch would silently ignore anything but these two.
    if (var != nullptr ? var->isStringValueValid(value)
                       : !isBoolean || value == "0" || value == "1")
        return QString();
    return QStringLiteral("\"%1\" is no value for %2, which is %3")
        .arg(value, name, isBoolean ? "0 or 1" : "of type " + typeToString(var->type()));
}

QString Settings::refusedAtStart()
{
    for (const EnvVar* var : EnvVarStore::instance().vars()) {
        const std::optional<QString> value = environmentValue(var->name());
        if (value && !var->isStringValueValid(*value))
            return refusal(var->name(), *value);
    }
    return QString();
}

Setting Settings::fromFile(const QString& name, const QString& value) const
{
    if (!isSwitch(name))
        return {name, value, "file", "unknown", {}};
    const QString reason = refusal(name, value);
    if (!reason.isEmpty())
        return {name, value, "file", "invalid", reason};
    if (!m_firstRefused.isEmpty() && m_firstRefused < name)
        return {name, value, "file", "not reached",
                "the machine reads in the order of the names and stops before " + name + ": " +
                    refusal(m_firstRefused, m_file[m_firstRefused])};
    return {name, value, "file", "", {}};
}

std::optional<Setting> Settings::find(const QString& name) const
{
    const auto line = m_file.find(name);
    if (line != m_file.end())
        return fromFile(name, *line);
    const std::optional<QString> value = isSwitch(name) ? environmentValue(name) : std::nullopt;
    if (value) {
        const QString reason = refusal(name, *value);
        return Setting{name, *value, "environment", reason.isEmpty() ? "" : "invalid", reason};
    }
    const EnvVar* var = EnvVarStore::instance().findEnvVar(name);
    const auto define = var != nullptr ? var->stringValueOpt(EnvVar::Defines) : std::nullopt;
    return define ? std::optional(Setting{name, *define, "define", "", {}}) : std::nullopt;
}

QVector<Setting> Settings::all() const
{
    QStringList names = allSwitches();
    for (auto line = m_file.begin(); line != m_file.end(); ++line) {
        // A blank line is the empty key.
        if (!line.key().isEmpty() && !isSwitch(line.key()))
            names += line.key();
    }
    QVector<Setting> settings;
    for (const QString& name : qAsConst(names)) {
        if (const std::optional<Setting> setting = find(name))
            settings.append(*setting);
    }
    return settings;
}
