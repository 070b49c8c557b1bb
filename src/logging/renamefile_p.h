#pragma once

#include <QFile>
#include <QString>

#include <cerrno>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

/// Calls rename(2), which replaces `to` in one step, or changes nothing and returns false.
inline bool renameFile(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

/// Replaces `to` by `from`, and removes `to` if `from` does not exist. Returns false and changes
/// neither file if the system refuses.
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
