#pragma once

#include <QMap>
#include <QStringList>
#include <QVector>

#include <optional>

/// The value that a machine gets for a name, and where it comes from.
struct Setting
{
    QString name;
    QString value;
    QLatin1String source; ///< "file", "environment" or "define"
    QLatin1String fault;  ///< "unknown", "invalid", "not reached" or empty
    QString reason;       ///< why the machine does not get the value; empty if it does
};

/// The settings of a machine that starts with an environment file, with the process environment of
/// zelctl and with its build. The file wins over the environment, and that over the build, as in
/// EnvVarStore::load().
class Settings
{
public:
    /// Takes the pairs of the environment file.
    explicit Settings(const QMap<QString, QString>& file);

    /// The names of all switches that the library knows.
    static QStringList switches();
    static bool isSwitch(const QString& name);
    /// The reason why the machine would refuse the value; empty if it would accept it.
    static QString refusal(const QString& name, const QString& value);
    /// The reason why a machine would not start in this process environment; empty if it would.
    static QString refusedAtStart();

    std::optional<Setting> find(const QString& name) const;
    /// All settings in the order of the catalogue; other names of the file come last.
    QVector<Setting> all() const;

private:
    Setting fromFile(const QString& name, const QString& value) const;

    const QMap<QString, QString> m_file;
    /// The first switch, in the order of the names, that refuses its value in the file. There
    /// EnvVarStore::load() stops. Empty if no switch does.
    QString m_firstRefused;
};
