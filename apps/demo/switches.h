#pragma once

#include <QString>
#include <QTextStream>

/// Loads the environment file, which a host does first. A value that a switch rejects is reported;
/// the machine then starts with the values that were set before it.
void loadSwitches(const QString& environmentFile, QTextStream& out);

/// Logs the enabled switches and makes the switches exclusive that exclude each other.
void linkSwitches();

/// Changes a switch as a service screen does, and saves all switches to the environment file of the
/// path layout. Returns false if the file cannot be written or does not contain the current values.
bool changeAndSaveSwitches(QTextStream& out);
