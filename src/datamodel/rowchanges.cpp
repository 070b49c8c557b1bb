#include "datamodel/rowchanges_p.h"

#include "folderlistmodel.h"

#include <QHash>

#include <utility>

namespace tools::datamodel
{

namespace
{

// Marks the values of a longest increasing subsequence of a permutation; these rows can stay.
QVector<bool> findStaying(const QVector<int>& order)
{
    QVector<int> tails;                      // the smallest last value of a sequence of each length
    QVector<int> previous(order.size(), -1); // of each value
    for (const int value : order) {
        const auto tail = std::lower_bound(tails.begin(), tails.end(), value);
        if (tail != tails.begin())
            previous[value] = *(tail - 1);
        if (tail == tails.end())
            tails.append(value);
        else
            *tail = value;
    }
    QVector<bool> staying(order.size(), false);
    for (int value = tails.isEmpty() ? -1 : tails.last(); value >= 0; value = previous[value])
        staying[value] = true;
    return staying;
}

// Moves each value that cannot stay behind its predecessor, together with the values that follow it
// already. If that takes more than maximumMoves, the result is the whole order instead.
void findMoves(QVector<int> order, RowChanges& changes)
{
    const QVector<bool> staying = findStaying(order);
    QVector<int> rows = order;
    for (int value = 0; value < rows.size(); ++value) {
        if (staying[value])
            continue;
        const int first = rows.indexOf(value);
        const int before = value == 0 ? 0 : rows.indexOf(value - 1) + 1;
        int count = 1;
        while (value + 1 < rows.size() && !staying[value + 1] &&
               rows.value(first + count) == value + 1) {
            ++value;
            ++count;
        }
        if (first == before)
            continue;
        if (changes.moved.size() == RowChanges::maximumMoves) {
            changes.moved.clear();
            changes.order.swap(order);
            return;
        }
        changes.moved.append({first, count, before});
        rotateRows(rows, changes.moved.last());
    }
}

QVector<int> changedRoles(const FolderEntry& from, const FolderEntry& to)
{
    QVector<int> roles;
    if (from.size_B != to.size_B)
        roles.append(FolderListModel::SizeRole);
    if (from.modified_ms != to.modified_ms)
        roles.append(FolderListModel::ModifiedRole);
    if (from.isFolder != to.isFolder)
        roles << FolderListModel::BaseNameRole << FolderListModel::SuffixRole
              << FolderListModel::IsFolderRole;
    return roles;
}

void addRange(QVector<RowChanges::Range>& ranges, int row)
{
    if (!ranges.isEmpty() && ranges.last().first + ranges.last().count == row)
        ++ranges.last().count;
    else
        ranges.append({row, 1});
}

void addChange(QVector<RowChanges::Change>& changes, int row, const QVector<int>& roles)
{
    if (roles.isEmpty())
        return;
    if (!changes.isEmpty() && changes.last().first + changes.last().count == row &&
        changes.last().roles == roles)
        ++changes.last().count;
    else
        changes.append({row, 1, roles});
}

} // namespace

RowChanges findRowChanges(const FolderRows& from, const FolderRows& to)
{
    RowChanges changes;
    QHash<QString, int> oldRows;
    oldRows.reserve(from.size());
    for (int row = 0; row < from.size(); ++row)
        oldRows.insert(from[row]->name, row);

    QVector<int> places(from.size(), -1); // among the rows that remain
    int remaining = 0;
    for (int row = 0; row < to.size(); ++row) {
        const int oldRow = oldRows.value(to[row]->name, -1);
        if (oldRow < 0) {
            addRange(changes.inserted, row);
            continue;
        }
        places[oldRow] = remaining++;
        addChange(changes.changed, row, changedRoles(*from[oldRow], *to[row]));
    }

    QVector<int> order;
    order.reserve(remaining);
    for (int row = 0; row < places.size(); ++row) {
        if (places[row] < 0)
            addRange(changes.removed, row);
        else
            order.append(places[row]);
    }
    std::reverse(changes.removed.begin(), changes.removed.end());
    findMoves(std::move(order), changes);
    return changes;
}

} // namespace tools::datamodel
