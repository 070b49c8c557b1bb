#pragma once

#include <QString>

/// The repairs of Path. Each function returns whether the result is as described.
namespace zeltools
{

/// Makes the link lead to the folder, which is created if missing. Only a link is ever replaced: a
/// folder in its place may hold data.
bool repairLink(const QString& link, const QString& folder);

/// Makes the target a copy of the source. An identical copy is not written again, and a failure
/// does not change the old one.
bool copyIfChanged(const QString& source, const QString& target);

/// Deletes a file, a link or a folder with its content. It refuses an empty path, the root and
/// paths that end with "." or "..".
bool deleteRecursively(QString path);

} // namespace zeltools
