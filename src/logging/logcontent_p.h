#pragma once

#include "logging/rotatinglogfile.h"

/// Reads log files back, in the forms that RotatingLogFile documents.
namespace logcontent
{

/// The result of RotatingLogFile::getLogLines().
QStringList lines(const QString& path);
/// The result of RotatingLogFile::totalContent() for files that are given newest first.
QString total(const QStringList& paths, RotatingLogFile::Order order);
/// The result of RotatingLogFile::pageContent() for files that are given newest first.
QString page(const QStringList& paths, unsigned firstLine, unsigned lastLine,
             RotatingLogFile::Order order);

} // namespace logcontent
