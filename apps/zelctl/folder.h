#pragma once

#include <QString>

/// The reason why the path is not a folder that can be read, or an empty text. For a file it names
/// the folder to give instead.
QString problemWithFolder(const QString& path);
/// The message that the path is a folder and not the name of a file to write, or an empty text.
QString problemWithOutput(const QString& path);
