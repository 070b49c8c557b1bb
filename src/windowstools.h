#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

/// Runs command lines and waits for them, changes the environment of this process, and tells where
/// it is when it crashes.
///
/// A command line goes to "/bin/sh -c", so redirections and pipes work; never put text from outside
/// into one. Standard input is empty. What the command prints on both outputs goes to the log line
/// by line as it comes, at Debug under Log::Global; blank lines are left out, and a line of more
/// than 4 KiB becomes several.
///
/// Safe to call from any thread, with or without an event loop; events are not processed meanwhile.
class ZELTOOLS_EXPORT WindowsTools
{
public:
    WindowsTools() = delete;

    /// A command that runs longer is killed, with all of its process group.
    static constexpr std::chrono::minutes commandTimeLimit{5};

    /// True only when the command ended by itself with exit code 0. A command that could not be
    /// started (the working directory is missing) or was killed is an Error line and has the exit
    /// code -1. An empty working directory means that of this process.
    ///
    /// The end of the shell is the end of the command: what it leaves in the background goes on
    /// without its output being read.
    static bool runCommand(const QString& command, const QString& workingDirectory = QString(),
                           int* exitCode = nullptr);
    /// One after the other; stops at the first failure and returns false.
    static bool runCommands(const QStringList& commands,
                            const QString& workingDirectory = QString());

    /// What runCommand() calls; the exit code is never null and -1 when nothing is written to it.
    using CommandRunner =
        std::function<bool(const QString& command, const QString& workingDirectory, int* exitCode)>;
    /// Replaces the shell, for tests; an empty function brings it back. Returns the one before,
    /// empty for the shell. May be called from any thread, and must be callable from any.
    static CommandRunner setCommandRunner(CommandRunner runner);

    /// Gives the variable this value, in place of another one; both texts in UTF-8. An empty value
    /// is a value. False, and nothing changed, for a name that is empty or holds a "=".
    ///
    /// Takes the lock under which Qt reads the environment (qgetenv()); code that calls getenv()
    /// itself must not run meanwhile.
    static bool setEnv(const QString& name, const QString& value);
    /// Removes the variable, if it is there. Otherwise as setEnv().
    static bool unsetEnv(const QString& name);

    /// The calls that led here, the caller of this method first, as in
    ///
    ///     "DrinkCycle::brew(int)+0x1c (demo+0x4f21)"
    ///
    /// A function that its program or library does not export has "?" for a name; `addr2line -Cfe`
    /// finds it by the second part. A program exports its own functions with the linker's
    /// "-rdynamic" (ENABLE_EXPORTS in CMake). At most 64 calls; what the compiler has merged into
    /// its caller is not there.
    static QStringList callStack();
    /// Logs them at Info under Log::Global, a line each.
    static void printCallStack();

    /// From now on a crash (SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT) prints its signal and the
    /// calls that led to it to standard error, then ends the process as it would have without: the
    /// exit status and the core dump stay. Not to the log files, which need locks and memory that
    /// the crash may have left in any state; for the same reason names are not demangled (c++filt
    /// does that). Where printing takes more than 5 seconds SIGALRM ends the process.
    ///
    /// Call it from the main thread, which alone can also tell of a stack overflow. A handler that
    /// was there before is replaced.
    static void installSignalHandlers();

    /// Would have the hardware restart a machine on which feedWatchdog() is not called for so long.
    /// There is no such hardware here: it does nothing but log that, and returns false.
    static bool startWatchdog(std::chrono::seconds timeLimit);
    /// Does nothing.
    static void feedWatchdog();

private:
    friend class TestWindowsTools;

    static bool runInShell(const QString& command, const QString& workingDirectory, int* exitCode,
                           std::chrono::milliseconds timeLimit);
};
