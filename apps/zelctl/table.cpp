#include "table.h"

#include <algorithm>

QString table(const QVector<QStringList>& rows)
{
    constexpr int maximumWidth = 50;
    QVector<int> widths(rows.value(0).size());
    for (const QStringList& row : rows) {
        for (int column = 0; column < row.size(); ++column)
            widths[column] =
                std::max(widths[column], std::min<int>(row[column].size(), maximumWidth));
    }
    QString text;
    for (const QStringList& row : rows) {
        for (int column = 0; column < row.size() - 1; ++column)
            text += row[column].leftJustified(widths[column]) + QLatin1String("  ");
        text += row.last() + QLatin1Char('\n');
    }
    return text;
}
