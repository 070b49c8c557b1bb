#pragma once

#include "command.h"

/// `zelctl hex`: brings hexadecimal text into one form, and turns it into bytes and bytes into it.
ExitStatus runHex(const QStringList& arguments);
