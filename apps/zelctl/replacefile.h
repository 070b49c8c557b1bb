#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

struct stat;

struct FileContent
{
    QByteArray bytes;
    QString error; ///< path and reason; empty when all of the file is in `bytes`
    bool exists;
};

/// A hundred times what any file has that a machine is configured by.
constexpr qint64 largestTextFile = qint64(16) * 1024 * 1024;

/// Reads a regular file of at most `limit` bytes. Anything else is an error: a pipe would wait for
/// its writer.
FileContent readFile(const QString& path, qint64 limit = largestTextFile);
/// Reads what standard input holds until it ends.
FileContent readStandardInput(qint64 limit);
/// Why the path is no file that could be read; empty when it is one. A link is followed.
QString whyUnreadable(const QString& path);

/// Replaces the content of a file so that the file on disk is at every moment the old or the new
/// one, also when the power fails: the content goes to a hidden file beside it, ".NAME.zelctl",
/// reaches the storage and only then takes the name. What a power cut or a SIGKILL leaves of the
/// hidden file the next replacement removes.
///
/// Mode and owner of the file stay, its extended attributes and further hard links do not. For a
/// symbolic link the file that it points to is replaced.
///
/// Of two processes that write the hidden file at once the second one fails. For an edit the object
/// holds a lock on the folder while it lives: whoever reads the file in between, changes it and
/// puts it back loses no edit of another process that does the same.
class ReplaceFile
{
public:
    enum Purpose { Edit, Overwrite };
    /// Writes the content into a new file and tells in one line what hindered it, or nothing.
    using Writer = std::function<QString(int descriptor)>;

    /// An edit waits for the lock, ten seconds at most.
    ReplaceFile(const QString& path, Purpose purpose);
    ~ReplaceFile();
    Q_DISABLE_COPY(ReplaceFile)

    /// Whether the path is the file that is replaced or the hidden one.
    bool wouldLose(const QString& path) const;
    /// The first failure, path and reason; empty as long as there was none.
    const QString& error() const { return m_error; }
    /// The file itself where a link was given.
    QString path() const { return pathOf(m_name); }

    /// True when the new content is on the storage. After a failure the old one is still there,
    /// unless it is the folder that could not be forced to storage. A file that was not there gets
    /// the mode 0644 less the umask.
    bool replace(const QByteArray& content);
    bool replace(const Writer& write);
    /// Forces to storage what is there: the process that wrote it may have been killed too early.
    bool sync();

private:
    bool isHolding(const QByteArray& name, const struct stat& file) const;
    bool removeStaleTemporary();
    int createTemporary(bool isPrivate);
    bool writeTemporary(int file, const struct stat* old, const Writer& write);
    bool syncFolder();
    bool check(bool isDone, const char* action, const QByteArray& name);
    QString pathOf(const QByteArray& name) const;

    QString m_folderPath;
    QByteArray m_name;
    QByteArray m_temporaryName;
    Purpose m_purpose;
    int m_folder = -1;
    QString m_error;
};
