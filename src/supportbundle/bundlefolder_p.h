#pragma once

#include "filedescriptor.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

#include <sys/stat.h>

namespace zeltools
{

/// A file that belongs into a bundle.
struct BundleFile
{
    QByteArray name; ///< in the bundle
    QByteArray path;
    /// The open file, which stays the same when it is rotated or deleted. Null if it is not open.
    std::shared_ptr<const FileDescriptor> descriptor;
    struct stat status = {};
    QString fault; ///< Why it is not open; empty if it is, or is to be opened later.

    /// Opens the file if it is not open yet. Returns the reason of a failure, or an empty text. It
    /// fails if another file has taken the name since the folder was listed.
    QString open();
};

/// Lists the files of a folder, not those of its subfolders, by the bytes of their names. All are
/// opened at one moment between two rotations, so that each of them is there once; only behind
/// `mostOpen` files are they opened later. The names in the bundle begin with `prefix`. A link and
/// everything else that is not a file has a fault.
///
/// Returns the reason why the folder cannot be read, or an empty text.
QString listFolder(const QByteArray& path, const QByteArray& prefix, size_t mostOpen,
                   std::vector<BundleFile>& files);

} // namespace zeltools
