#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/// The lines that a machine tells in its general log files to have lost, as a JSON text: the total,
/// and the newest 10,000 losses with their times. If a file could not be read to its end, the text
/// says that it is incomplete, and `error` has the first such file with the reason. `progress` is
/// called with the number of bytes that have been read of a series of files and their sum.
QByteArray lossesInFiles(const QString& folder, QString& error,
                         const std::function<void(qint64 done_B, qint64 total_B)>& progress);
