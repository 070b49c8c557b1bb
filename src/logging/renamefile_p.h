#pragma once

#include <QFile>
#include <QString>

#include <cerrno>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

/// rename(2): replaces `to` in one step, or changes nothing and returns false.
inline bool renameFile(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

/// Has `from` replace `to`. Where there is no `from`, nothing replaces `to`. Returns false, with
/// both files as they were, when the system refuses.
inline bool takePlace(const QString& from, const QString& to)
{
    if (renameFile(from, to))
        return true;
    struct stat file;
    if (errno != ENOENT || lstat(QFile::encodeName(from).constData(), &file) == 0 ||
        errno != ENOENT)
        return false;
    ::unlink(QFile::encodeName(to).constData());
    return true;
}
