#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>

#include <functional>

struct stat;

namespace zeltools
{

/// Replaces the content of a file so that the file on disk is the old or the new one at every
/// moment, even if the process is killed or the power fails. The content is written to a hidden
/// file beside it, ".NAME.new", and forced to storage before the hidden file is renamed. The next
/// replacement removes a hidden file that a kill or a power cut has left behind.
///
/// The mode and the owner of the file are kept; extended attributes and further hard links are not.
/// A symbolic link is followed, and the file that it points to is replaced.
///
/// The hidden file is locked while it is being written: if two replacements of one file overlap,
/// the second one fails, and neither changes the hidden file of the other. For an edit, the object
/// also holds a lock on the folder while it lives, so that concurrent processes that read, change
/// and replace the file lose no edit.
///
/// The functions block, install no signal handlers and log nothing. An object belongs to one
/// thread.
class ZELTOOLS_EXPORT FileReplacement
{
public:
    /// Whether the new content depends on the old one.
    enum Purpose {
        Overwrite, ///< The new content does not depend on the old one.
        Edit       ///< The constructor waits for the lock on the folder, ten seconds at most.
    };
    /// Writes the content to the descriptor of the hidden file. Returns an empty text, or the
    /// reason of a failure, which becomes errorString(). When it throws, the old file stays and the
    /// exception leaves replace().
    using Writer = std::function<QString(int fileDescriptor)>;

    /// Resolves links. An error is kept for replace() and errorString().
    explicit FileReplacement(const QString& path, Purpose purpose = Overwrite);
    /// Releases the lock on the folder.
    ~FileReplacement();
    Q_DISABLE_COPY(FileReplacement)

    /// Replaces the content. Returns true if the new content is on the storage. After a failure the
    /// old content is kept, unless the folder could not be forced to storage. A new file
    /// gets the mode 0644 less the umask. After an earlier failure the call only returns false.
    bool replace(const QByteArray& content);
    bool replace(const Writer& writer);
    /// Forces the existing file to storage. An edit that changes nothing calls it, because the
    /// process that wrote the file may have been killed before it did so.
    bool sync();

    /// The first failure with path and reason, such as "cannot create /etc/.env.new: Read-only file
    /// system". Empty without a failure.
    const QString& errorString() const { return m_error; }
    /// Whether the only remaining way after a failure is to write the file in place. This is the
    /// case if its folder does not accept a second file (no permission, read-only, no support for
    /// locks), the file cannot be renamed (it is a mount point), its owner cannot be kept, or the
    /// path is a device or a broken link. The old content is unchanged then.
    bool needsWritingInPlace() const { return m_needsWritingInPlace; }

    /// The path of the file that is replaced, with links resolved.
    QString path() const { return pathOf(m_name); }
    /// The path of the hidden file. It exists while a writer runs.
    QString temporaryPath() const { return pathOf(m_temporaryName); }
    /// Whether the path leads to the replaced file or to the hidden one, so that the replacement
    /// would destroy data that is read from there.
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
