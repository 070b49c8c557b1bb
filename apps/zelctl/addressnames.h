#pragma once

#include <QStringList>
#include <QVector>

#include <chrono>

/// Asks the program addr2line of binutils for the functions at addresses in a file. The result has
/// an entry for each address: the function with its place in the source, such as "brew(int) at
/// drink.cpp:12", then the functions into which the compiler has put it; nothing for an unknown
/// address. "near brew(int)" has an unknown place, and may be a function after that one. If the
/// program is missing, fails or takes too long, the result is empty and the reason is in `error`.
QVector<QStringList> addressNames(const QString& file, const QVector<quint64>& addresses,
                                  std::chrono::milliseconds patience, QString& error);
