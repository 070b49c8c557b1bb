#include "filerepairs_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace zeltools
{

bool repairLink(const QString& link, const QString& folder)
{
    if (!QDir().mkpath(folder))
        return false;
    // Resolved by the system, since a ".." behind a linked folder leads elsewhere than its text.
    const QString target = QFileInfo(folder).canonicalFilePath();
    const QFileInfo info(link);
    if (info.isSymLink()) {
        if (info.canonicalFilePath() == target)
            return true;
        QFile::remove(link);
    }
    return QDir().mkpath(info.path()) && QFile::link(target, link);
}

bool copyIfChanged(const QString& source, const QString& target)
{
    QFile from(source);
    if (!from.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = from.readAll();
    if (from.error() != QFileDevice::NoError)
        return false; // only a part was read
    QFile current(target);
    if (current.open(QIODevice::ReadOnly) && current.readAll() == content)
        return true;
    QSaveFile to(target); // forces the copy to storage before it takes the name
    return to.open(QIODevice::WriteOnly) && to.write(content) == content.size() && to.commit();
}

bool deleteRecursively(QString path)
{
    while (path.endsWith(QLatin1Char('/'))) // "link/" would be the folder behind the link
        path.chop(1);
    const QFileInfo info(path);
    const QString name = info.fileName();
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
        return false;
    if (info.isSymLink())
        return QFile::remove(path);
    if (!info.exists())
        return true;
    // By its resolved name, since QDir would take "link/.." for the folder that holds the link.
    return info.isDir() ? QDir(info.canonicalFilePath()).removeRecursively() : QFile::remove(path);
}

} // namespace zeltools
