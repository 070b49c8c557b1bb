#pragma once

#include "command.h"
#include "settings.h"

/// Prints all switches that the library knows.
ExitStatus printCatalogue(bool isJson);

/// Prints the settings of a machine with that environment file. Fails, after the list, if the
/// machine would refuse a value.
ExitStatus printList(const QString& path, const Settings& settings, bool isJson);

/// The message that the machine does not get the value; names the file or the environment.
QString faultMessage(const QString& path, const Setting& setting);
