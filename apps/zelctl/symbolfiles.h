#pragma once

#include <zeltools/crashreports/crashreport.h>

#include <QHash>
#include <QSet>

/// Finds the files with the symbols of the modules in a crash report. Only the build id decides:
/// the addresses of another build of the same source name other functions.
class SymbolFiles
{
public:
    struct Answer
    {
        QString path;     ///< empty if there is none
        QString obstacle; ///< why there is none
    };

    /// Searches the folder alone. An empty one means the folder of Debian's packages with symbols,
    /// and the modules themselves at their places.
    SymbolFiles(const QString& folder, const QVector<zeltools::CrashReport::Module>& modules);

    Answer find(const zeltools::CrashReport::Module& module) const;

private:
    void addFiles(const QSet<QString>& moduleNames);
    QString path(const QByteArray& buildId, const QString& modulePath) const;

    const QString m_folder;
    QHash<QByteArray, QString> m_paths; ///< by build id
    QSet<QString> m_names; ///< of the modules of which the folder has a file, whatever its build id
};
