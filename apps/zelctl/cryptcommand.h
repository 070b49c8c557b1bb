#pragma once

#include "command.h"

/// `zelctl crypt`: encrypts and decrypts files, and shows what their header says. Reads back what
/// it has written before it gives it its name.
ExitStatus runCrypt(const QStringList& arguments);
