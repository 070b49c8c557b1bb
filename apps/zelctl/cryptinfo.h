#pragma once

#include "command.h"

/// Shows the header of a cyphertext. It needs no key.
ExitStatus showInfo(const QString& path, bool isJson);
