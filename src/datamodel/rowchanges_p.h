#pragma once

#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>
#include <QVector>

#include <algorithm>

namespace tools::datamodel
{

/// A file or folder as it was when it was listed. Entries are immutable and shared between threads.
struct FolderEntry : QSharedData
{
    FolderEntry(const QString& entryName, bool isAFolder, qint64 sizeInBytes, qint64 time_ms)
        : name(entryName)
        , isFolder(isAFolder)
        , size_B(sizeInBytes)
        , modified_ms(time_ms)
    {
    }

    const QString name;
    const bool isFolder;
    const qint64 size_B;
    const qint64 modified_ms; // since 1970, in UTC

    QStringView baseName() const { return QStringView(name).left(dot()); }
    QStringView suffix() const { return QStringView(name).mid(qMin(dot() + 1, size())); }

private:
    int size() const { return static_cast<int>(name.size()); }
    int dot() const
    {
        const auto last = isFolder ? -1 : static_cast<int>(name.lastIndexOf(QLatin1Char('.')));
        return last < 0 ? size() : last;
    }
};

using FolderRows = QVector<QExplicitlySharedDataPointer<const FolderEntry>>;

inline QString pathPrefix(const QString& folder)
{
    return folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
}

/// The changes that lead from some rows to others, in the order of the members. The row numbers of
/// each step are those after the steps before it.
struct RowChanges
{
    struct Range
    {
        int first;
        int count;
    };
    struct Move
    {
        int first;
        int count;
        int before; ///< the row before which they are inserted, counted before the move
    };
    struct Change
    {
        int first;
        int count;
        QVector<int> roles;
    };

    QVector<Range> removed;  ///< the last range first
    QVector<Move> moved;     ///< at most `maximumMoves`, of as few rows as possible
    QVector<int> order;      ///< instead of more moves: the new row of each remaining row
    QVector<Range> inserted; ///< the first range first
    QVector<Change> changed;

    static constexpr int maximumMoves = 64;
};

/// Takes O(n log n) time for n rows. Rows with the same name are the same row.
RowChanges findRowChanges(const FolderRows& from, const FolderRows& to);

template <typename T>
void rotateRows(QVector<T>& rows, const RowChanges::Move& move)
{
    const auto first = rows.begin() + move.first, end = first + move.count;
    const auto before = rows.begin() + move.before;
    if (move.before < move.first)
        std::rotate(before, first, end);
    else
        std::rotate(first, end, before);
}

} // namespace tools::datamodel
