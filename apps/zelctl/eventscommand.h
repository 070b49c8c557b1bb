#pragma once

#include "command.h"

/// `zelctl events`: prints a page of the event files in a folder, oldest event first. Only reads; a
/// machine that rotates its files at that very moment may hide some events from it.
ExitStatus runEvents(const QStringList& arguments);
