#include "windowstools.h"

#include "boardwatchdog_p.h"
#include "environmentlock_p.h"
#include "shellcommand_p.h"

#include <QMutex>

#include <algorithm>
#include <utility>

namespace
{

struct ReplacedRunner
{
    QMutex mutex;
    WindowsTools::CommandRunner runner;
};

// The runner is never destroyed, since commands may run until the process ends.
ReplacedRunner& replacedRunner()
{
    static auto* replaced = new ReplacedRunner;
    return *replaced;
}

// The watchdog is never destroyed, because the end of the process must not stop the device.
zeltools::BoardWatchdog& watchdog()
{
    static auto* const watchdog = new zeltools::BoardWatchdog(zeltools::Machine());
    return *watchdog;
}

// libsystemd reads the environment at once, so that it has done so after this time.
template <class Change>
bool changeEnvironment(Change change)
{
    constexpr int patience_ms = 100;
    const bool isLocked = zeltools::environmentLock().tryLock(patience_ms);
    const bool isChanged = change();
    if (isLocked)
        zeltools::environmentLock().unlock();
    return isChanged;
}

} // namespace

bool WindowsTools::runCommand(const QString& command, const QString& workingDirectory,
                              int* exitCode)
{
    CommandRunner runner;
    {
        const QMutexLocker locker(&replacedRunner().mutex);
        runner = replacedRunner().runner;
    }
    int code = -1;
    const bool isDone =
        runner ? runner(command, workingDirectory, &code)
               : zeltools::runInShell(command, workingDirectory, &code, commandTimeLimit);
    if (exitCode != nullptr)
        *exitCode = code;
    return isDone;
}

bool WindowsTools::runCommands(const QStringList& commands, const QString& workingDirectory)
{
    return std::all_of(commands.begin(), commands.end(), [&](const QString& command) {
        return runCommand(command, workingDirectory);
    });
}

WindowsTools::CommandRunner WindowsTools::setCommandRunner(CommandRunner runner)
{
    const QMutexLocker locker(&replacedRunner().mutex);
    return std::exchange(replacedRunner().runner, std::move(runner));
}

bool WindowsTools::setEnv(const QString& name, const QString& value)
{
    return changeEnvironment([&] { return qputenv(name.toUtf8().constData(), value.toUtf8()); });
}

bool WindowsTools::unsetEnv(const QString& name)
{
    return changeEnvironment([&] { return qunsetenv(name.toUtf8().constData()); });
}

bool WindowsTools::startWatchdog(std::chrono::seconds timeLimit)
{
    return watchdog().start(timeLimit);
}

void WindowsTools::feedWatchdog()
{
    watchdog().feed();
}
