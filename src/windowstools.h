#pragma once

#include "zeltools_export.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

/// Runs command lines and waits for them, and changes the environment of this process.
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

private:
    friend class TestWindowsTools;

    static bool runInShell(const QString& command, const QString& workingDirectory, int* exitCode,
                           std::chrono::milliseconds timeLimit);
};
