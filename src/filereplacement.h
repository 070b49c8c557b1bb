#pragma once

#include "zeltools_export.h"

#include <QByteArray>
#include <QString>

#include <functional>

struct stat;

namespace zeltools
{

/// Replaces the content of a file so that the file on disk is the old or the new one at every
/// moment, also when the process is killed or the power fails: the content goes to a hidden file
/// beside it, ".NAME.new", reaches the storage and only then takes the name. The next replacement
/// removes the hidden file that a kill or a power cut has left behind.
///
/// Mode and owner of the file stay, its extended attributes and further hard links do not. A
/// symbolic link is followed, and the file that it points to is replaced.
///
/// The hidden file is locked while it is being written: when two replacements of one file meet, the
/// second one fails, and neither touches the hidden file of the other. For an edit the object also
/// holds a lock on the folder while it lives, so that reading the file, changing it and putting it
/// back loses no edit of another process that does the same.
///
/// The class blocks, installs no signal handlers and logs nothing. An object belongs to one thread.
class ZELTOOLS_EXPORT FileReplacement
{
public:
    enum Purpose {
        Overwrite, ///< the new content does not depend on the old one
        Edit       ///< the constructor waits for the lock on the folder, ten seconds at most
    };
    /// Writes the content to the descriptor of the hidden file. Returns an empty text, or the
    /// reason of a failure, which becomes errorString(). When it throws, the old file stays and the
    /// exception leaves replace().
    using Writer = std::function<QString(int fileDescriptor)>;

    explicit FileReplacement(const QString& path, Purpose purpose = Overwrite);
    ~FileReplacement();
    Q_DISABLE_COPY(FileReplacement)

    /// True when the new content is on the storage. After a failure the old one is still there,
    /// unless it was the folder that could not be forced to storage. A new file gets the mode 0644
    /// less the umask. Returns false at once when a step has failed before.
    bool replace(const QByteArray& content);
    bool replace(const Writer& writer);
    /// Forces the file that is there to storage, for an edit that finds nothing to change: the
    /// process that wrote it may have been killed before it did so.
    bool sync();

    /// The first failure with path and reason, as in "cannot create /etc/.env.new: Read-only file
    /// system". Empty as long as there was none.
    const QString& errorString() const { return m_error; }
    /// True after a failure that leaves no way but to write the file in place, since its folder
    /// takes no second file (no permission, read-only, the lock is not supported), the file cannot
    /// be moved away (it is a mount point) or its owner cannot be kept, or since the path is a
    /// device or a link to nothing. The old content is untouched then.
    bool needsWritingInPlace() const { return m_needsWritingInPlace; }

    /// The path of the file that is replaced, with links resolved.
    QString path() const { return pathOf(m_name); }
    /// The path of the hidden file. It exists while a writer runs.
    QString temporaryPath() const { return pathOf(m_temporaryName); }
    /// Whether the path leads to the file that is replaced or to the hidden one, so that the
    /// replacement would destroy what is read from there.
    bool wouldLose(const QString& path) const;

private:
    bool isHolding(const QByteArray& name, const struct stat& file) const;
    bool write(int file, const struct stat* old, const Writer& writer);
    bool syncFolder();
    bool check(bool isDone, const char* action, const QByteArray& name);
    void refuse(const QString& path, const char* reason);
    QString pathOf(const QByteArray& name) const;

    QString m_folderPath;
    QByteArray m_name;
    QByteArray m_temporaryName;
    int m_folder = -1;
    QString m_error;
    bool m_needsWritingInPlace = false;
};

} // namespace zeltools
