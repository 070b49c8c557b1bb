#pragma once

namespace zeltools
{

class CrashReportWriter;

/// Writes the program and the libraries that are loaded, one a line: the address at which the ELF
/// file is loaded (0 for a program that is not relocatable), the end of its last mapping, its build
/// id or "-", and its path. Async-signal-safe.
void writeModules(CrashReportWriter& writer);

} // namespace zeltools
