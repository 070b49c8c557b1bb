#pragma once

#include <QTextStream>

/// Captures the kernel log of a machine that is made up, in memory and in a file. Prints its end;
/// false when anything of it is missing.
bool showKernelLog(QTextStream& out);

/// Prints the calls that led here. False when their names are not there.
bool showCallStack(QTextStream& out);
