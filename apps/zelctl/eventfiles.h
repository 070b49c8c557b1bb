#pragma once

#include <QStringList>
#include <QVector>

#include <sys/stat.h>

/// The event files of a machine that exist now.
struct EventFiles
{
    QStringList paths; ///< oldest first
    QVector<struct stat> states;
    QString unread; ///< the first file that cannot be read, with the reason; it is not in `paths`

    /// Finds the files in a folder. Returns the reason if none can be read, or an empty text.
    QString find(const QString& folder);
    bool areSameAs(const EventFiles& other) const;
};

/// Finds the folder with the event files: the given one, or one below it where `zelctl log` would
/// read them. Returns the reason if it is not clear which one is meant, or an empty text.
QString findEventFolder(const QString& given, QString& folder);
