#pragma once

#include <QTest>

#include <utility>
#include <vector>

namespace support
{

template <typename Record>
inline std::vector<Record> s_rows;

/// Adds a row for each record; its first member `name` is the name of the row. A data function has
/// a record type of its own.
template <typename Record>
void addRows(std::vector<Record> records)
{
    s_rows<Record> = std::move(records);
    QTest::addColumn<int>("row");
    for (size_t i = 0; i < s_rows<Record>.size(); ++i)
        QTest::newRow(s_rows<Record>[i].name) << static_cast<int>(i);
}

/// The record of the current row.
template <typename Record>
const Record& currentRow()
{
    QFETCH(int, row);
    return s_rows<Record>[static_cast<size_t>(row)];
}

} // namespace support
