#include "settings.h"

#include "words.h"

#include <zeltools/envvar/envvarstore.h>
#include <zeltools/logging/logmodules.h>

#include <QSet>

using zeltools::envvar::EnvVar;
using zeltools::envvar::EnvVarStore;
using zeltools::envvar::typeToString;

namespace
{

const QLatin1String s_file("file");
const QLatin1String s_invalid("invalid");

/// Switches that are read directly from the process environment, where the file puts them.
const QStringList& logSwitches()
{
    static const QStringList names =
        LogModules::getEnvVars() +
        QStringList{QStringLiteral("ZEL_DEBUG_ALL"), QStringLiteral("LOG_FROM_MAIN_THREAD")};
    return names;
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

QStringList Settings::switches()
{
    QStringList names;
    for (const EnvVar* var : EnvVarStore::instance().vars())
        names += var->name();
    return names + logSwitches();
}

bool Settings::isSwitch(const QString& name)
{
    static const QStringList list = switches();
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
                       : !isBoolean || value == QLatin1String("0") || value == QLatin1String("1"))
        return QString();
    return isBoolean ? Zelctl::tr("\"%1\" is not a value for %2, which is 0 or 1").arg(value, name)
                     : Zelctl::tr("\"%1\" is not a value for %2, which is of type %3")
                           .arg(value, name, typeToString(var->type()));
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
        return {name, value, s_file, QLatin1String("unknown"), {}};
    const QString reason = refusal(name, value);
    if (!reason.isEmpty())
        return {name, value, s_file, s_invalid, reason};
    if (!m_firstRefused.isEmpty() && m_firstRefused < name)
        return {name, value, s_file, QLatin1String("not reached"),
                Zelctl::tr("the machine reads in the order of the names and stops before %1: %2")
                    .arg(name, refusal(m_firstRefused, m_file[m_firstRefused]))};
    return {name, value, s_file, {}, {}};
}

std::optional<Setting> Settings::find(const QString& name) const
{
    const auto line = m_file.find(name);
    if (line != m_file.end())
        return fromFile(name, *line);
    const std::optional<QString> value = isSwitch(name) ? environmentValue(name) : std::nullopt;
    if (value) {
        const QString reason = refusal(name, *value);
        return Setting{name, *value, QLatin1String("environment"),
                       reason.isEmpty() ? QLatin1String() : s_invalid, reason};
    }
    const EnvVar* var = EnvVarStore::instance().findEnvVar(name);
    const auto define = var != nullptr ? var->stringValueOpt(EnvVar::Defines) : std::nullopt;
    return define ? std::optional(Setting{name, *define, QLatin1String("define"), {}, {}})
                  : std::nullopt;
}

QVector<Setting> Settings::all() const
{
    QStringList names = switches();
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
