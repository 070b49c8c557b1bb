#include "folder.h"

#include "words.h"

#include <QFileInfo>

QString problemWithFolder(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return Zelctl::tr("no folder %1").arg(path);
    if (!info.isDir())
        return Zelctl::tr("%1 is a file; give its folder, which is %2").arg(path, info.path());
    return info.isReadable() && info.isExecutable()
               ? QString()
               : Zelctl::tr("cannot read the folder %1").arg(path);
}

QString problemWithOutput(const QString& path)
{
    return QFileInfo(path).isDir()
               ? Zelctl::tr("%1 is a folder; give the name of a file in it").arg(path)
               : QString();
}
