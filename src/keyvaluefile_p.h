#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QMap>
#include <QString>

namespace zeltools::keyvaluefile
{

/// What load() makes of the content of a file.
ZELTOOLS_EXPORT QMap<QString, QString> parse(const QByteArray& content);

/// The line that save() writes for an entry, line feed included.
ZELTOOLS_EXPORT QByteArray toLine(const QString& key, const QString& value);

} // namespace zeltools::keyvaluefile
