#pragma once

#include "quick/countedmodel.h"

#include <QHash>

#include <type_traits>

namespace zeltools::quick
{

/// Brings the rows of a model from one list to another by insertions, removals and changes, so that
/// a view keeps its position. Neighbouring rows come and go together.
struct RowsUpdate
{
    /// Two rows are the same one if `key`, a function of a row, gives equal values, for which there
    /// is a qHash(). A row in both lists takes the new value, and is announced if it differs (==).
    template <typename Rows, typename Key>
    static void apply(CountedModel& model, Rows& rows, const Rows& wanted, const Key& key)
    {
        QHash<std::decay_t<decltype(key(wanted.first()))>, int> places;
        for (int i = 0; i < wanted.size(); ++i)
            places.insert(key(wanted[i]), i);
        const CountedModel::Update update(model);
        for (int row = 0; row < wanted.size() && update.isLast();) {
            int end = row; // of the rows that go
            while (end < rows.size() && places.value(key(rows[end]), -1) < row)
                ++end;
            if (end > row)
                remove(model, rows, row, end);
            else if (row < rows.size() && key(rows[row]) == key(wanted[row]))
                row = set(model, rows, row, wanted[row]);
            else
                row = insert(model, rows, wanted, row, key);
        }
        if (update.isLast() && rows.size() > wanted.size())
            remove(model, rows, int(wanted.size()), int(rows.size()));
    }

private:
    /// Gives the row its wanted value. Returns the number of the next row.
    template <typename Rows, typename Row>
    static int set(CountedModel& model, Rows& rows, int row, const Row& wanted)
    {
        if (!(rows[row] == wanted)) {
            rows[row] = wanted;
            Q_EMIT model.dataChanged(model.index(row), model.index(row));
        }
        return row + 1;
    }

    template <typename Rows>
    static void remove(CountedModel& model, Rows& rows, int first, int end)
    {
        model.beginRemoveRows({}, first, end - 1);
        rows.erase(rows.begin() + first, rows.begin() + end);
        model.endRemoveRows();
    }

    /// Inserts the wanted rows in front of the row that comes next. Returns the number of that row.
    template <typename Rows, typename Key>
    static int insert(CountedModel& model, Rows& rows, const Rows& wanted, int first,
                      const Key& key)
    {
        int end = first + 1;
        while (end < wanted.size() &&
               (first >= rows.size() || !(key(wanted[end]) == key(rows[first]))))
            ++end;
        model.beginInsertRows({}, first, end - 1);
        rows = rows.mid(0, first) + wanted.mid(first, end - first) + rows.mid(first);
        model.endInsertRows();
        return end;
    }
};

} // namespace zeltools::quick
