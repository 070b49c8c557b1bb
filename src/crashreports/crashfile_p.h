#pragma once

#include <QString>

namespace zeltools
{

/// The file that waits for the report of this process: "crash-<process>-<start>.open". It is locked
/// as long as the process lives, has its first section and the space for the rest. The end of the
/// process removes it, as late as the library can, if no report has been begun.
class CrashFile
{
public:
    CrashFile() = delete;

    /// Creates the file in the folder, which must exist. Returns its descriptor, or -1 with
    /// `errno`.
    static int create(const QString& folder);
    /// Removes the handlers and closes the file, and removes it unless a report has been begun. If
    /// another thread crashes meanwhile, waits for the end of the process.
    static void close();

private:
    static void forgetInChild();
};

} // namespace zeltools
