#pragma once

#include <QMap>
#include <QString>

namespace zeltools::keyvaluefile
{

/// Does the same as save(), with the same Warning lines, but replaces the file by a
/// FileReplacement, so that no kill and no power cut leaves part of a file. It writes in place only
/// if the folder does not accept a second file.
bool saveSafely(const QString& path, const QMap<QString, QString>& map);

} // namespace zeltools::keyvaluefile
