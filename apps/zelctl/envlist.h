#pragma once

#include "command.h"
#include "settings.h"

/// Prints all switches that the library knows, as JSON or as a table() of that width.
ExitStatus printCatalogue(bool isJson, int width);

/// Prints the settings of a machine with that environment file. Fails, after the list, if the
/// machine would refuse a value.
ExitStatus printList(const QString& path, const Settings& settings, bool isJson, int width);

/// The message that the machine does not get the value; names the file or the environment.
QString faultMessage(const QString& path, const Setting& setting);
