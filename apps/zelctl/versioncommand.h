#pragma once

#include "command.h"

/// `zelctl version`: compares two versions as the machine does, or tells that of the library.
ExitStatus runVersion(const QStringList& arguments);
