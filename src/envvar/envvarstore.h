#pragma once

#include "envvar/envvarbool.h"
#include "envvar/saveresult.h"

#include <QSet>
#include <QVector>

#include <functional>

namespace zeltools::envvar
{

/// The registry of all switches: finds them by name, loads the environment file that a technician
/// leaves on the machine and saves it, lists what is in force, keeps sets of switches exclusive and
/// lets the visibility of one follow another.
///
/// It does not own the variables and does not notice when one is destroyed; those that were linked
/// by makeExclusive() or setVisibleIf() have to live to the end of the process.
///
/// Main thread only; variables register during static initialisation.
class ZELTOOLS_EXPORT EnvVarStore : public QObject
{
    Q_OBJECT

public:
    /// The one store, created by the first call and never destroyed.
    static EnvVarStore& instance();

    /// Throws as throwAlreadyAdded() when there is a variable of that name. The constructor of a
    /// variable calls it; a host does for one that it has removed.
    void addEnvVar(EnvVar* var);
    /// Emits unregisterEnvVar() in any case.
    void removeEnvVar(EnvVar* var);
    /// In the order of their registration.
    const QVector<EnvVar*>& vars() const { return m_vars; }
    /// The variable of exactly that name and, if given, that type; null when there is none.
    EnvVar* findEnvVar(const QString& name, const std::optional<Type>& type = std::nullopt) const;

    /// These two always throw std::invalid_argument: `Env var with name X and type Boolean was
    /// already added to the store`, or `... was not found in the store`, which is for callers that
    /// cannot go on without the variable.
    [[noreturn]] void throwAlreadyAdded(const QString& name, Type type) const;
    [[noreturn]] void throwNotFound(const QString& name, Type type) const;

    /// Puts each pair of the environment file (see keyvaluefile.h) into the process environment, in
    /// the order of the keys, and gives it to the variable of that name, if there is one. False
    /// when the file does not exist (an Info line) or cannot be opened (a Warning line).
    ///
    /// A value that the variable refuses throws std::invalid_argument, with the pairs before it
    /// applied, and that pair already in the process environment, where a child process that has
    /// these switches would end over it: take it out before starting one.
    bool load(const QString& path);
    /// Writes every variable that has a value from the environment, sorted by name, after
    /// m_preSaveFunction has agreed. Comments and unknown keys of an existing file are lost.
    ///
    /// The file is the old or the new one at every moment, see FileReplacement; after a failure it
    /// is the old one. Only where the folder does not take a second file (no permission, read-only)
    /// it is written in place by keyvaluefile::save(), and a kill or a full disk may leave part of
    /// it. Blocks until the file is on the storage. An edit by `zelctl env` is waited for, ten
    /// seconds at most.
    SaveResult save(const QString& path);

    /// What save() calls first: it writes nothing and returns this result if that is no success.
    /// Must not be empty.
    std::function<SaveResult()> m_preSaveFunction;

    /// Logs one Info line for each variable that has a value, with where the value comes from.
    void printEnabledEnvVars();

    /// From now on, a change of a member that is on switches all others off. Members that are on
    /// together already are an Error line and stay on. Cannot be undone.
    void makeExclusive(QSet<EnvVarBool*> set);
    /// Keeps the Visible flag of the variable equal to the condition. Cannot be undone.
    void setVisibleIf(EnvVar* var, EnvVarBool* condition);

Q_SIGNALS:
    /// The variable is still being constructed: name, description, category and flags can be read,
    /// its virtual functions not called.
    void envVarAdded(EnvVar& envVar);
    void unregisterEnvVar(EnvVar* envVar);

public Q_SLOTS:
    /// The end of a change of a member of an exclusive set; does nothing when called otherwise.
    void updateExclusiveVariables();

private:
    friend class EnvVar;

    EnvVarStore();
    ~EnvVarStore() override;

    void addEnvVar(EnvVar* var, Type type);

    QVector<EnvVar*> m_vars;
    QVector<QSet<EnvVarBool*>> m_exclusiveSets;
};

} // namespace zeltools::envvar
