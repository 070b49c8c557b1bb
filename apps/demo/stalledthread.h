#pragma once

#include <QTextStream>

/// Lets a thread of an imaginary machine hang and a second one work. Prints what the monitor says
/// about them: the states, and the call stack of the thread that hangs. Returns whether the monitor
/// has named the function and, once the thread continues, the recovery.
bool showStalledThread(QTextStream& out);
