#pragma once

#include "filedescriptor.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

#include <sys/stat.h>

namespace zeltools
{

/// A file that belongs in a bundle.
struct BundleFile
{
    QByteArray name; ///< in the bundle
    QByteArray path;
    /// The open file, which stays the same when it is rotated or deleted. Null if it is not open.
    std::shared_ptr<const FileDescriptor> descriptor;
    struct stat status = {};
    bool isFollowed = false; ///< Whether the path may be a link.
    QString fault;           ///< Why it is not open; empty if it is, or is to be opened later.

    /// Opens the file if it is not open yet. Returns the reason of a failure, or an empty text. It
    /// fails if another file has taken the name since the folder was listed. If the descriptors
    /// have run out, `fault` stays empty, so that a later call tries again.
    QString open();
};

/// A folder whose files belong in a bundle.
struct BundleFolder
{
    QByteArray prefix; ///< of the names in the bundle
    QString path;
    bool hasOnlyLogs = false; ///< Whether files with another name than that of a log stay outside.
};

/// Whether a file with this name is a log of the library, or a predecessor of one.
bool isLogName(const QString& name);

/// The number of files that a bundle opens ahead, which leaves descriptors to the host.
size_t mostOpenFiles();

/// Lists the files of a folder, not those of its subfolders, by the bytes of their names. All are
/// opened at one moment between two rotations, so that each of them is there once; only behind
/// `leftToOpen` files, which it counts down, and when the descriptors run out are they opened
/// later. A link and everything else that is not a file has a fault.
///
/// Returns the reason why the folder cannot be read, or an empty text.
QString listFolder(const BundleFolder& folder, size_t& leftToOpen, std::vector<BundleFile>& files);

} // namespace zeltools
