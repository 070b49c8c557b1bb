#pragma once

#include <QTextStream>

/// Captures the kernel log of an imaginary machine in memory and in a file. Prints its last lines
/// and returns whether both are complete.
bool showKernelLog(QTextStream& out);

/// Prints the call stack and returns whether it contains the names of the functions.
bool showCallStack(QTextStream& out);
