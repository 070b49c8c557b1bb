#pragma once

#include <QString>

#include <chrono>

namespace zeltools
{

/// Runs one command line as WindowsTools::runCommand() does, with a time limit of the caller's
/// choice. The exit code must not be null.
bool runInShell(const QString& command, const QString& workingDirectory, int* exitCode,
                std::chrono::milliseconds timeLimit);

} // namespace zeltools
