#pragma once

#include <zeltools/filereplacement.h>

/// FileReplacement::replace() for a program that a signal may end: SIGHUP, SIGINT and SIGTERM leave
/// no hidden file behind. Outside the writer, and while given content is written, they wait until
/// the replacement is done.
bool replaceCleanly(zeltools::FileReplacement& file, const QByteArray& content);
bool replaceCleanly(zeltools::FileReplacement& file,
                    const zeltools::FileReplacement::Writer& writer);
