#pragma once

#include <QString>
#include <QTextStream>

/// Loads the environment file, as the first thing that a host does. A value that a switch refuses
/// is reported, and the machine starts with what was applied before it.
void loadSwitches(const QString& environmentFile, QTextStream& out);

/// Logs the switches that are on and links those that exclude one another.
void linkSwitches();

/// Changes a switch as a service screen would, and saves all of them to the environment file of the
/// path layout. False when the file could not be written or does not hold what is in force.
bool changeAndSaveSwitches(QTextStream& out);
