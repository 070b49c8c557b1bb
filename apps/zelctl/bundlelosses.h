#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/// The lines that a machine tells in its general log files to have lost, as a JSON text: the total,
/// and the newest 10,000 losses with their times. `progress` is called with the number of bytes
/// that have been read of a series of files and their sum.
QByteArray lossesInFiles(const QString& folder,
                         const std::function<void(qint64 done_B, qint64 total_B)>& progress);
