#pragma once

#include <QString>
#include <QTextStream>

/// Lets machines, processes of their own, crash in three ways, and starts each of them again.
/// Prints what the next start logs, and of each report the signal, the reason and the first calls
/// of the program. Returns whether each crash has left one complete report with the right signal.
bool showCrashes(QTextStream& out);

/// Whether runCrashingMachine() knows the mode.
bool isCrashingMachine(const QString& mode);

/// The main function of such a machine. It collects the report of an earlier one in the folder, and
/// crashes unless the mode is "crash-none".
int runCrashingMachine(const QString& mode, const QString& folder);
