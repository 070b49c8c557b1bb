#pragma once

#include <QStringList>
#include <QVector>

/// Makes columns as wide as their widest text, up to a limit: a damaged line of a file must not
/// widen all others. The last column has no blanks at its end. If it does not fit into lines of
/// `width` characters, it goes on below: in its column, or indented below the first one if that
/// leaves it more room. A width of 0 keeps each row in one line.
QString table(const QVector<QStringList>& rows, int width = 0);

/// The number of columns of the terminal that shows the standard output; 0 if there is none.
int terminalWidth();
