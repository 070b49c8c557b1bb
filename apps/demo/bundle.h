#pragma once

#include <QTextStream>

/// Packs what the factory needs to know about this machine into a support bundle in `folder`,
/// checks it and prints its content. Returns whether it is complete and has the general log file.
bool showBundle(const QString& folder, QTextStream& out);
