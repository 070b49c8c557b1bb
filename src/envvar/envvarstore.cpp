#include "envvar/envvarstore.h"

#include "keyvaluefile.h"
#include "keyvaluefile_p.h"
#include "keyvaluelines.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "windowstools.h"

#include <QFile>
#include <QScopedValueRollback>

#include <algorithm>
#include <stdexcept>

namespace zeltools::envvar
{

namespace
{

[[noreturn]] void throwAbout(const QString& name, Type type, const char* what)
{
    throw std::invalid_argument("Env var with name " + name.toStdString() + " and type " +
                                typeToString(type).toStdString() + what);
}

} // namespace

EnvVarStore::EnvVarStore()
    : m_preSaveFunction([] {
        return SaveResult{true, std::nullopt};
    })
{
}

EnvVarStore::~EnvVarStore() = default;

EnvVarStore& EnvVarStore::instance()
{
    static auto* const store = new EnvVarStore;
    return *store;
}

void EnvVarStore::addEnvVar(EnvVar* var)
{
    addEnvVar(var, var->type());
}

void EnvVarStore::addEnvVar(EnvVar* var, Type type)
{
    if (findEnvVar(var->name(), std::nullopt) != nullptr)
        throwAlreadyAdded(var->name(), type);
    m_vars.append(var);
    Q_EMIT envVarAdded(*var);
}

void EnvVarStore::removeEnvVar(EnvVar* var)
{
    m_vars.removeAll(var);
    Q_EMIT unregisterEnvVar(var);
}

EnvVar* EnvVarStore::findEnvVar(const QString& name, const std::optional<Type>& type) const
{
    const auto found = std::find_if(m_vars.begin(), m_vars.end(), [&](const EnvVar* var) {
        return var->name() == name && (!type || var->type() == *type);
    });
    return found != m_vars.end() ? *found : nullptr;
}

void EnvVarStore::throwAlreadyAdded(const QString& name, Type type) const
{
    throwAbout(name, type, " was already added to the store");
}

void EnvVarStore::throwNotFound(const QString& name, Type type) const
{
    throwAbout(name, type, " was not found in the store");
}

bool EnvVarStore::load(const QString& path)
{
    if (!QFile::exists(path)) {
        LogFormatter(LogLevel::Info).log(Log::Global)
            << "Environment file" << path << "does not exist, using default environment";
        return false;
    }
    LogFormatter(LogLevel::Info).log(Log::Global) << "Loading environment from file" << path;
    const std::optional<QMap<QString, QString>> map = keyvaluefile::load(path, true);
    if (!map) {
        LogFormatter(LogLevel::Warning).log(Log::Global)
            << "bool zeltools::envvar::EnvVarStore::load(const QString&)"
            << "Failed parsing file" << path;
        return false;
    }
    for (auto pair = map->begin(); pair != map->end(); ++pair) {
        WindowsTools::setEnv(pair.key(), pair.value());
        if (EnvVar* var = findEnvVar(pair.key(), std::nullopt))
            var->setStringValueOpt(EnvVar::Env, pair.value());
    }
    return true;
}

SaveResult EnvVarStore::save(const QString& path)
{
    SaveResult prepared = m_preSaveFunction();
    if (!prepared.success)
        return prepared;
    QMap<QString, QString> map;
    const QVector<EnvVar*> vars = m_vars;
    for (const EnvVar* var : vars) {
        if (const std::optional<QString> value = var->stringValueOpt(EnvVar::Env))
            map.insert(var->name(), *value);
    }
    if (!keyvaluefile::saveSafely(path, map)) {
        //: Access error while writing to environment variables file
        return {false, tr("File access error")};
    }
    return {true, std::nullopt};
}

SaveResult EnvVarStore::saveInto(const QString& path)
{
    QStringList names;
    for (const EnvVar* var : qAsConst(m_vars))
        names.append(var->name());
    return saveInto(path, names);
}

SaveResult EnvVarStore::saveInto(const QString& path, const QStringList& names)
{
    SaveResult prepared = m_preSaveFunction();
    if (!prepared.success)
        return prepared;
    QVector<EnvVar*> vars = m_vars;
    const auto isOther = [&names](const EnvVar* var) { return !names.contains(var->name()); };
    vars.erase(std::remove_if(vars.begin(), vars.end(), isOther), vars.end());
    for (const EnvVar* var : qAsConst(vars)) {
        const std::optional<QString> value = var->stringValueOpt(EnvVar::Env);
        if (value && !KeyValueLines::canHold(var->name(), *value))
            return {false, tr("A line of the file cannot hold the value of %1").arg(var->name())};
    }
    const QString reason = KeyValueLines::edit(path, [&vars](KeyValueLines& lines) {
        for (const EnvVar* var : qAsConst(vars)) {
            const std::optional<QString> value = var->stringValueOpt(EnvVar::Env);
            if (!value)
                lines.unset(var->name());
            else if (lines.value(var->name()) != value)
                lines.set(var->name(), *value);
        }
    });
    return {reason.isEmpty(), reason.isEmpty() ? std::nullopt : std::optional(reason)};
}

void EnvVarStore::printEnabledEnvVars()
{
    QVector<EnvVar*> enabled;
    int width = 0;
    for (EnvVar* var : qAsConst(m_vars)) {
        if (var->stringValueOpt()) {
            enabled.append(var);
            width = std::max<int>(width, var->name().size());
        }
    }
    for (const EnvVar* var : qAsConst(enabled)) {
        LogFormatter(LogLevel::Info).log(Log::Global).noquote() << "    " << var->toString(width);
    }
}

void EnvVarStore::makeExclusive(QSet<EnvVarBool*> set)
{
    QStringList enabled;
    for (const EnvVarBool* var : qAsConst(set)) {
        if ((*var)())
            enabled.append(var->name());
    }
    if (enabled.size() > 1) {
        LogFormatter(LogLevel::Error).log(Log::Global).noquote()
            << "Request to make a set exlusive, but the following variables are enabled "
               "simultaneously:"
            << enabled.join(QLatin1Char(' '));
    }
    for (const EnvVarBool* var : qAsConst(set)) {
        connect(var, &EnvVar::changed, this, &EnvVarStore::updateExclusiveVariables,
                Qt::UniqueConnection); // it may be a member of two sets
    }
    m_exclusiveSets.append(std::move(set));
}

void EnvVarStore::updateExclusiveVariables()
{
    auto* const changed = qobject_cast<EnvVarBool*>(sender());
    if (changed == nullptr)
        return;
    // A copy, because a listener may make another set exclusive.
    const QVector<QSet<EnvVarBool*>> sets = m_exclusiveSets;
    for (const QSet<EnvVarBool*>& set : sets) {
        if (!(*changed)() || !set.contains(changed))
            continue;
        for (EnvVarBool* var : set) {
            if (var != changed)
                var->set(false);
        }
    }
}

void EnvVarStore::setVisibleIf(EnvVar* var, EnvVarBool* condition)
{
    // Setting the flag is a change of the variable, which may lead back here through another link
    // or an exclusive set. The rollback guard ends such a circle.
    auto follow = [var, condition, isFollowing = false]() mutable {
        if (isFollowing)
            return;
        const QScopedValueRollback<bool> rollback(isFollowing, true);
        bool isVisible = false;
        do {
            isVisible = (*condition)();
            var->setFlag(Visible, isVisible);
        } while (isVisible != (*condition)());
    };
    follow();
    connect(condition, &EnvVar::changed, condition, follow, Qt::DirectConnection);
}

} // namespace zeltools::envvar
