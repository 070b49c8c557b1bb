#pragma once

#include <QTest>

#include <tuple>
#include <utility>
#include <vector>

namespace support
{

template <typename Row>
inline std::vector<Row> s_rows;

/// Adds a row for each tuple, whose first element is the name of the row.
template <typename Row>
void addRows(std::vector<Row> rows)
{
    s_rows<Row> = std::move(rows);
    QTest::addColumn<int>("row");
    for (size_t i = 0; i < s_rows<Row>.size(); ++i)
        QTest::newRow(std::get<0>(s_rows<Row>[i])) << static_cast<int>(i);
}

/// The tuple of the current row.
template <typename Row>
const Row& currentRow()
{
    QFETCH(int, row);
    return s_rows<Row>[static_cast<size_t>(row)];
}

} // namespace support
