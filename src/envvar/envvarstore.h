#pragma once

#include <zeltools/envvar/envvarbool.h>
#include <zeltools/envvar/saveresult.h>

#include <QSet>
#include <QVector>

#include <functional>

namespace zeltools::envvar
{

/// The registry of all switches. It finds them by name, loads and saves the environment file that a
/// technician leaves on the machine, lists the effective values, keeps sets of switches exclusive,
/// and makes the visibility of one switch depend on another.
///
/// It does not own the variables and does not notice when one is destroyed. Variables that were
/// linked by makeExclusive() or setVisibleIf() must live until the process ends.
///
/// The store belongs to the main thread; variables register during static initialization.
class ZELTOOLS_EXPORT EnvVarStore : public QObject
{
    Q_OBJECT

public:
    /// The only store, created by the first call and never destroyed.
    static EnvVarStore& instance();

    /// Adds a variable. Throws like throwAlreadyAdded() if there is a variable of that name. The
    /// constructor of a variable calls it; a host calls it for a variable that it has removed.
    void addEnvVar(EnvVar* var);
    /// Removes a variable, and always emits unregisterEnvVar().
    void removeEnvVar(EnvVar* var);
    /// All variables in the order of their registration.
    const QVector<EnvVar*>& vars() const { return m_vars; }
    /// The variable of exactly that name and, if given, that type; null if there is none.
    EnvVar* findEnvVar(const QString& name, const std::optional<Type>& type = std::nullopt) const;

    /// Always throws std::invalid_argument: `Env var with name X and type Boolean was already added
    /// to the store`.
    [[noreturn]] void throwAlreadyAdded(const QString& name, Type type) const;
    /// Always throws std::invalid_argument, for callers that cannot go on without the variable:
    /// `Env var with name X and type Boolean was not found in the store`.
    [[noreturn]] void throwNotFound(const QString& name, Type type) const;

    /// Adds each pair of the environment file (see keyvaluefile.h) to the process environment, in
    /// the order of the keys, and sets the variable of that name, if there is one. Returns false if
    /// the file does not exist (an Info line) or cannot be opened (a Warning line).
    ///
    /// If the variable refuses a value, load() throws std::invalid_argument. The pairs before it
    /// have then been applied, and the refused pair is in the process environment, where it would
    /// end a child process with these switches: remove it before you start one.
    bool load(const QString& path);
    /// Writes every variable that has a value from the environment, sorted by name, if
    /// m_preSaveFunction succeeds. Comments and unknown keys of an existing file are lost.
    ///
    /// The file is the old or the new one at every moment, see FileReplacement; after a failure it
    /// is the old one. If the folder does not accept a second file (no permission, read-only),
    /// keyvaluefile::save() writes the file in place, and a kill or a full disk may leave part of
    /// it. The call blocks until the file is on the storage, and waits up to ten seconds for an
    /// edit by `zelctl env`.
    SaveResult save(const QString& path);
    /// Does what save() does, but keeps the comments, unknown keys and the order of an existing
    /// file: it changes the lines of the switches only, and removes the line of a switch without a
    /// value from the environment. After a failure, which is not logged, the file is unchanged and
    /// the message gives the reason: that of the system, or the name of a switch whose value
    /// no line can hold (see KeyValueLines::canHold()).
    SaveResult saveInto(const QString& path);
    /// Does the same for the switches with these names. All other lines stay, also those of other
    /// switches.
    SaveResult saveInto(const QString& path, const QStringList& names);

    /// The function that save() calls first. If its result is a failure, save() writes nothing and
    /// returns that result. The function must not be empty.
    std::function<SaveResult()> m_preSaveFunction;

    /// Logs one Info line for each variable that has a value, with the source of the value.
    void printEnabledEnvVars();

    /// Makes the switches exclusive: from now on, a change of a member that is on switches all
    /// others off. Members that are already on together are an Error line and stay on. The set
    /// cannot be removed.
    void makeExclusive(QSet<EnvVarBool*> set);
    /// Keeps the Visible flag of the variable equal to the condition. The link cannot be removed.
    void setVisibleIf(EnvVar* var, EnvVarBool* condition);

Q_SIGNALS:
    /// Announces a variable that is still being constructed: its name, description, category and
    /// flags can be read, but its virtual functions must not be called.
    void envVarAdded(EnvVar& envVar); // clazy:exclude=fully-qualified-moc-types
    /// Emitted by removeEnvVar(), which the destructor of a variable calls: compare the pointer,
    /// and do not use the variable.
    void unregisterEnvVar(EnvVar* envVar); // clazy:exclude=fully-qualified-moc-types

public Q_SLOTS:
    /// Completes the change of a member of an exclusive set. Other calls do nothing.
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
