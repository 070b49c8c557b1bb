#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>
#include <QStringList>
#include <qqml.h>

namespace zeltools::quick
{

/// Reads and deletes files below folders that the host names, and no others: neither ".." nor a
/// symbolic link leads out of them, not even a link that is put there meanwhile, and only regular
/// files are opened. Use it in the thread of the QML engine, which a slow disk blocks.
class ZELTOOLS_EXPORT FilesAccess : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(FilesAccess)
    /// The absolute paths of the folders; nothing is accessible without one.
    Q_PROPERTY(QStringList roots READ roots WRITE setRoots NOTIFY rootsChanged)
    /// The folders of the application's own log files, to show where the host names none.
    Q_PROPERTY(QStringList ownFolders READ ownFolders CONSTANT)
    /// The reason for the user why the last readText() failed; empty if it did not.
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)

public:
    explicit FilesAccess(QObject* parent = nullptr);
    ~FilesAccess() override;

    QStringList roots() const { return m_roots; }
    void setRoots(const QStringList& roots);
    QStringList ownFolders() const;
    QString error() const { return m_error; }

    /// Reads at most that many bytes, and at most 16 MiB, of a regular file, from a place in it on.
    /// The zero byte becomes U+2400; bytes that are not UTF-8 and the other control characters
    /// except the line feed and the tab become U+FFFD. After a failure the text is empty.
    Q_INVOKABLE QString readText(const QString& path, int maximumBytes, qint64 from = 0);
    /// Deletes a file or a symbolic link, but never a folder. It needs Access::Technician and
    /// writes an event line. Returns an empty text or the reason for the user.
    Q_INVOKABLE QString remove(const QString& path);

Q_SIGNALS:
    void rootsChanged();
    void errorChanged();

private:
    /// Whether the open file or folder lies in one of the roots, or is one.
    bool contains(int descriptor) const;
    QString read(const QString& path, int maximumBytes, qint64 from, QByteArray& bytes) const;

    QStringList m_roots;
    QString m_error;
};

} // namespace zeltools::quick
