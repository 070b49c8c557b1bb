#pragma once

#include "envvar/envvarstore.h"

#include <QCoreApplication>
#include <QMap>

#include <optional>

namespace zeltools::quick
{

/// Changes switches for the person in front of the screen: asks the access level, tells the event
/// log, and keeps the environment file up to date. A change writes only the lines of the switches
/// that it changes.
///
/// The functions return an empty text, or the reason for the user why they did nothing. If only the
/// file could not be written, the reason is also fileProblem().
class SwitchEditor
{
    Q_DECLARE_TR_FUNCTIONS(zeltools::quick::SwitchEditor)

public:
    QString file() const { return m_file; }
    /// Sets the path of the file; empty for none.
    void setFile(const QString& path);
    /// In the language of the screen, which may change while it is shown.
    QString fileProblem() const;

    /// A null pointer stands for a switch that is no longer there.
    QString set(envvar::EnvVar* var, const QString& value);
    QString reset(envvar::EnvVar* var);
    QString save();

private:
    using Values = QMap<QString, std::optional<QString>>; // of all switches by their names

    static QString obstacle(const envvar::EnvVar* var);
    QString change(envvar::EnvVar& var, const std::optional<QString>& value);
    static Values values();
    static void record(const QString& name, const std::optional<QString>& value);
    QString finish(const envvar::SaveResult& result);

    QString m_file;
    std::optional<envvar::SaveResult> m_failure; // of the last attempt to write the file
    QStringList m_unwritten;                     // names of changed switches
};

} // namespace zeltools::quick
