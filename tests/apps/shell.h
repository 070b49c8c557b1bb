#pragma once

#include <QProcess>
#include <QtTest>

/// Runs a command in a shell that finds zelctl. Returns all that it prints and, unless the exit
/// status is 0, a line with that.
inline QString runInShell(const QString& command, const QString& folder = QString())
{
    const QString script = "PATH=\"${0%/*}:$PATH\" LC_ALL=${LC_ALL-C}; export PATH LC_ALL; (%1) || "
                           "echo status $?";
    QProcess shell;
    shell.setWorkingDirectory(folder);
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start("/bin/sh", {"-c", script.arg(command), ZELCTL_PATH});
    const auto isOver = [&shell] { return shell.state() == QProcess::NotRunning; };
    return QTest::qWaitFor(isOver, 30000) ? QString(shell.readAll()) : "hangs";
}
