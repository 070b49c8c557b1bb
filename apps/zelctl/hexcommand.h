#pragma once

#include "command.h"

/// `zelctl hex`: brings hexadecimal text into one form, and converts between it and bytes.
ExitStatus runHex(const QStringList& arguments);
