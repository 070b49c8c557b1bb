#pragma once

#include <QMap>
#include <QString>

namespace zeltools::keyvaluefile
{

/// As save(), and with the same Warning lines, but replaces the file by a FileReplacement, so that
/// no kill and no power cut leaves part of a file. Writes in place only where the folder cannot
/// take a second file.
bool saveSafely(const QString& path, const QMap<QString, QString>& map);

} // namespace zeltools::keyvaluefile
