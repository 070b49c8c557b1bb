#pragma once

#include "command.h"

/// Shows what the header of a cyphertext says, for which no key is needed.
ExitStatus showInfo(const QString& path, bool isJson);
