#pragma once

#include <QByteArray>
#include <QString>

struct stat;

struct FileContent
{
    QByteArray bytes;
    QString error; ///< path and reason; empty when all of the file is in `bytes`
    bool exists;
};

/// Reads a regular file. Anything else is an error: a pipe would wait for its writer.
FileContent readFile(const QString& path);

/// Replaces the content of a file so that the file on disk is at every moment the old or the new
/// one, also when the power fails: the content goes to a hidden file beside it, ".NAME.zelctl",
/// reaches the storage and only then takes the name. What a power cut leaves of the hidden file the
/// next replacement removes.
///
/// Mode and owner of the file stay, its extended attributes and further hard links do not. For a
/// symbolic link the file that it points to is replaced.
///
/// Holds a lock on the folder while it lives: whoever reads the file in between, changes it and
/// puts it back loses no edit of another process that does the same.
class ReplaceFile
{
public:
    /// Waits for the lock.
    explicit ReplaceFile(const QString& path);
    ~ReplaceFile();
    Q_DISABLE_COPY(ReplaceFile)

    /// The first failure, path and reason; empty as long as there was none.
    const QString& error() const { return m_error; }
    /// The file itself where a link was given.
    QString path() const { return pathOf(m_name); }

    /// True when the new content is on the storage. After a failure the old one is still there,
    /// unless it is the folder that could not be forced to storage. A file that was not there gets
    /// the mode 0644 less the umask.
    bool replace(const QByteArray& content);
    /// Forces to storage what is there: the process that wrote it may have been killed too early.
    bool sync();

private:
    bool writeTemporary(const QByteArray& content);
    bool syncFolder();
    bool check(bool isDone, const char* action, const QByteArray& name);
    QString pathOf(const QByteArray& name) const;

    QString m_folderPath;
    QByteArray m_name;
    QByteArray m_temporaryName;
    int m_folder = -1;
    QString m_error;
};
