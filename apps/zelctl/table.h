#pragma once

#include <QStringList>
#include <QVector>

/// Makes columns as wide as their widest text, up to a limit: a damaged line of a file must not
/// widen all others. The last column has no blanks at its end.
QString table(const QVector<QStringList>& rows);
