#pragma once

#include "zeltools_export.h"

#include <QByteArray>
#include <QMap>
#include <QString>

/// The parts of keyvaluefile.h that the environment store and zelctl need.
namespace zeltools::keyvaluefile
{

/// What load() makes of the content of a file.
ZELTOOLS_EXPORT QMap<QString, QString> parse(const QByteArray& content);

/// The line that save() writes for an entry, line feed included.
ZELTOOLS_EXPORT QByteArray toLine(const QString& key, const QString& value);

/// As save(), and with the same Warning lines, but replaces the file by a FileReplacement, so that
/// no kill and no power cut leaves part of a file. Writes in place only where the folder cannot
/// take a second file.
bool saveSafely(const QString& path, const QMap<QString, QString>& map);

} // namespace zeltools::keyvaluefile
