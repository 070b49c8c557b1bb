#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

#include <functional>

struct archive;
struct archive_entry;

namespace zeltools
{

/// Reads the members of a compressed tar archive from outside, one after the other, and stores
/// nothing. It stops with an error at the first member that is not a plain file with a name below
/// the folder, at a name that is there twice, and when the content becomes larger than any bundle
/// of this size, so that a small file cannot keep the reader busy with terabytes.
class BundleWalk
{
public:
    /// The most that may be unpacked: this, and for each packed byte `mostPerByte`.
    static constexpr qint64 mostUnpacked_B = qint64(1) << 30;
    static constexpr qint64 mostPerByte = 1000;

    /// The descriptor must stay open while the object lives.
    explicit BundleWalk(int file);
    ~BundleWalk();
    Q_DISABLE_COPY(BundleWalk)

    /// Goes to the next member. Returns false at the end and after an error.
    bool next();
    QByteArray name() const { return m_name; }
    qint64 size_B() const { return m_size_B; }
    /// Reads the next piece of the member. Returns an empty one at its end and after an error.
    QByteArray read();

    qint64 packed_B() const;
    /// Why the walk has ended, or an empty text if the archive is read to its end.
    QString errorString() const { return m_error; }

private:
    bool open(int file);
    QString problemWith(archive_entry* entry) const;
    bool checkUnpacked();
    bool fail(const QString& reason);
    bool failByArchive();

    archive* m_archive;
    QByteArray m_piece;
    QByteArray m_name;
    qint64 m_size_B = 0;
    qint64 m_left_B = 0;
    QSet<QByteArray> m_names;
    QString m_error;
};

} // namespace zeltools
