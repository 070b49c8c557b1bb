#pragma once

namespace zeltools
{

/// The handlers that write the report of this process into a file, and then leave the signal to the
/// handlers that were there before.
class CrashHandler
{
public:
    CrashHandler() = delete;

    /// Installs the handlers. The report is written to this file, which stays open.
    static void install(int file);
    /// Restores the handlers that were there before, unless others have been installed since.
    static void uninstall();
    /// Whether a report has been begun. It is then the last one of this process.
    static bool hasBegun();
    /// Waits as long as another thread writes a report, and then until that thread has had the time
    /// to end the process.
    static void waitForReport();
    /// Makes a forked child process forget the file and the reports of its parent.
    static void forgetInChild();
};

} // namespace zeltools
