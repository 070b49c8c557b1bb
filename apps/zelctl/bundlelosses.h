#pragma once

#include <QByteArray>
#include <QString>

/// The lines that a machine tells in its general log files to have lost, as a JSON text: the total,
/// and each loss with its time.
QByteArray lossesInFiles(const QString& folder);
