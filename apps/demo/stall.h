#pragma once

#include <QString>
#include <QTextStream>

/// Lets two machines log, with immediate and with buffered delivery, while the storage stands still
/// for two seconds; then kills the buffered one and starts it again. Without root and a loop
/// device, a standard error stream that nobody reads takes the place of the storage. Call it while
/// the process has one thread.
///
/// Prints the longest wait of each machine, and how many lines were acknowledged, found and
/// recovered. Returns whether each acknowledged line is found once. Writes the picture of the waits
/// to the folder, unless its name is empty.
bool showStall(const QString& pictureFolder, QTextStream& out);
