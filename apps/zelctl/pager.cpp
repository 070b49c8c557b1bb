#include "pager.h"

#include <QStandardPaths>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

QByteArray pagerCommand()
{
    if (qEnvironmentVariableIsSet("PAGER"))
        return qgetenv("PAGER");
    const bool hasLess = !QStandardPaths::findExecutable(QStringLiteral("less")).isEmpty();
    return hasLess ? QByteArrayLiteral("less -R") : QByteArray();
}

} // namespace

Pager::Pager()
{
    const QByteArray command = pagerCommand();
    if (isatty(STDOUT_FILENO) == 0 || command.isEmpty())
        return;
    if (!qEnvironmentVariableIsSet("LESS"))
        qputenv("LESS", "FRX"); // no pages for what one screen can show, and with colours
    m_pipe = popen(command.constData(), "we");
    if (m_pipe == nullptr)
        return;
    signal(SIGINT, SIG_IGN); // it goes to the pager too, which ends only on a key
    m_terminal = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    dup2(fileno(m_pipe), STDOUT_FILENO);
}

ExitStatus Pager::end()
{
    if (m_pipe == nullptr)
        return Done;
    dup2(m_terminal, STDOUT_FILENO); // the pager's input ends
    close(m_terminal);
    const int status = pclose(m_pipe);
    m_pipe = nullptr;
    signal(SIGINT, SIG_DFL);
    constexpr int notFound = 127; // of the shell, which has told it
    return WIFEXITED(status) && WEXITSTATUS(status) == notFound ? Failed : Done;
}
