#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

/// Runs command lines and waits for them, changes the environment of this process, and prints the
/// call stack when it crashes.
///
/// "/bin/sh -c" runs a command line, so redirections and pipes work; a command line must never
/// contain text from outside. Standard input is empty. The output of the command on both streams is
/// logged line by line as it arrives, at Debug under Log::Global. Blank lines are skipped, and a
/// line of more than 4 KiB is split.
///
/// All functions may be called from any thread, with or without an event loop. They do not process
/// events while they wait.
class ZELTOOLS_EXPORT WindowsTools
{
public:
    WindowsTools() = delete;

    /// The time after which a command is killed together with its process group.
    static constexpr std::chrono::minutes commandTimeLimit{5};

    /// Runs a command. Returns true only if it ended by itself with exit code 0. A command that
    /// could not be started (the working directory is missing) or was killed is an Error line and
    /// has the exit code -1. An empty working directory means that of this process.
    ///
    /// The command ends when the shell ends. Background processes of the shell go on, but their
    /// output is no longer read.
    static bool runCommand(const QString& command, const QString& workingDirectory = QString(),
                           int* exitCode = nullptr);
    /// Runs the commands one after the other. Returns false after the first failure, without
    /// running the others.
    static bool runCommands(const QStringList& commands,
                            const QString& workingDirectory = QString());

    /// The function that runCommand() calls. The exit code is never null and is -1 by default.
    using CommandRunner =
        std::function<bool(const QString& command, const QString& workingDirectory, int* exitCode)>;
    /// Replaces the shell for tests; an empty function restores it. Returns the previous runner,
    /// which is empty for the shell. Any thread may call this function and the runner.
    static CommandRunner setCommandRunner(CommandRunner runner);

    /// Sets the variable to this value; both texts are stored as UTF-8. The value may be empty.
    /// Returns false and changes nothing if the name is empty or contains a "=".
    ///
    /// The function takes the lock under which Qt reads the environment (qgetenv()). No code that
    /// calls getenv() directly may run at the same time. Messages of zeltools::ServiceNotifier may:
    /// the function waits for one that libsystemd sends, at most a tenth of a second.
    static bool setEnv(const QString& name, const QString& value);
    /// Removes the variable if it exists. Names and locking are as for setEnv().
    static bool unsetEnv(const QString& name);

    /// The call stack, beginning with the caller of this function, with entries such as
    ///
    ///     "DrinkCycle::brew(int)+0x1c (demo+0x4f21)"
    ///
    /// A function that its program or library does not export has the name "?"; `addr2line -Cfe`
    /// finds its name by the second part of the entry. A program exports its own functions with the
    /// linker's "-rdynamic" (ENABLE_EXPORTS in CMake). The stack has at most 64 entries and none
    /// for functions that the compiler has inlined.
    static QStringList callStack();
    /// The entry of callStack() for a return address.
    static QString describeCall(const void* returnAddress);
    /// Logs the call stack at Info under Log::Global, one line per call.
    static void printCallStack();

    /// Installs handlers for SIGSEGV, SIGBUS, SIGFPE, SIGILL and SIGABRT. A crash then prints its
    /// signal and call stack to standard error and ends the process as it would have without the
    /// handlers, with the same exit status and core dump. The log files get nothing, because they
    /// need locks and memory that the crash may have left in any state. For the same reason names
    /// are not demangled (c++filt does that). If printing takes more than 5 seconds, SIGALRM ends
    /// the process.
    ///
    /// Call it in the main thread, since a stack overflow is reported only in the thread of the
    /// call. It replaces earlier handlers.
    static void installSignalHandlers();

    /// Starts the watchdog of the board. If feedWatchdog() is not called for that time, or the
    /// process crashes, the machine or the process is restarted. The watchdog is that of systemd if
    /// systemd watches this process (zeltools::ServiceNotifier), otherwise the device /dev/watchdog
    /// (zeltools::HardwareWatchdog). The unit of systemd or the driver may have another limit; the
    /// line at Info (at Warning if that limit is shorter) says which one holds.
    ///
    /// A limit of 0 stops the device and returns false. It cannot stop the watchdog of systemd, for
    /// which feedWatchdog() goes on feeding. Otherwise the device runs on when the process ends. On
    /// the desktop there is no watchdog: the function only logs this and returns false.
    /// monitored_threads::Watchdog feeds a watchdog only while all threads run; do not start both.
    static bool startWatchdog(std::chrono::seconds timeLimit);
    /// Feeds the watchdog that startWatchdog() has started, if there is one.
    static void feedWatchdog();
};
