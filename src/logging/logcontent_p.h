#pragma once

#include "logging/rotatinglogfile.h"

/// Reads log files back, in the forms that RotatingLogFile documents.
namespace logcontent
{

/// RotatingLogFile::getLogLines()
QStringList lines(const QString& path);
/// RotatingLogFile::totalContent() of files that are given newest first.
QString total(const QStringList& paths, RotatingLogFile::Order order);
/// RotatingLogFile::pageContent() of files that are given newest first.
QString page(const QStringList& paths, unsigned firstLine, unsigned lastLine,
             RotatingLogFile::Order order);

} // namespace logcontent
