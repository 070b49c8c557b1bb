#pragma once

#include <QStringList>

class LogCompression;
class PrimaryFile;
class PrimaryWriter;
struct RotatingLogFileConfiguration;

/// The rotation of a RotatingLogFile: the names of its primary P and the predecessors P.1, P.2 and
/// so on, the limits, and the renames. It uses no mutex: RotatingLogFile calls it under its own.
///
/// A rotation that fails or is interrupted at any step continues at that step when it is called
/// again, and only loses the oldest predecessor.
class LogRotation
{
public:
    LogRotation(const RotatingLogFileConfiguration& configuration, PrimaryFile& file,
                PrimaryWriter& writer, LogCompression& compression);

    void setPrimary(const QString& path) { m_primary = path; }
    const QString& primary() const { return m_primary; }
    void setPredecessorsCount(int count) { m_predecessorsCount = count; }
    void setMaximumSizeMiB(double size_MiB);
    void copyLimits(const LogRotation& other);
    qint64 maximumSize_B() const { return m_maximumSize_B; }

    /// P for 0, "P.<index>" for a predecessor; empty for a negative index or without P.
    QString filename(int index) const;
    /// P and its predecessors, the newest file first.
    QStringList filenames() const;
    /// The paths that keep the files of filenames() after a deletion.
    QStringList deletedFilenames() const;

    /// Whether a primary of this size is rotated.
    bool isDue(qint64 size_B) const { return m_predecessorsCount > 0 && size_B > m_maximumSize_B; }
    /// Renames the files and opens a new primary, unless another writer has the lock of P.
    void rotate();
    /// Removes the files or renames them to deletedFilenames(), and opens a new primary.
    void deleteFiles(bool areKept);

private:
    bool shift();
    bool shiftToBePacked();
    void shiftArchives();
    bool makeRoom(const QString& suffix);
    void endShift();
    QString archive() const;
    QString shiftMark() const;
    int firstGap(const QString& suffix) const;

    PrimaryFile& m_file;
    PrimaryWriter& m_writer;
    LogCompression& m_compression;
    QString m_primary;
    qint64 m_maximumSize_B = 0;
    int m_predecessorsCount;
    bool m_compressed;
    bool m_isShifting = false; // remains set when a step fails
};
