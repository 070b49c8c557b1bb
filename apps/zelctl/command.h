#pragma once

#include <QString>
#include <QStringList>

#include <cerrno>
#include <cstdio>
#include <cstring>

/// What a script can read from the exit status. A command that has not done its work says why in
/// one line on stderr.
enum ExitStatus { Done = 0, Failed = 1, WrongUsage = 2 };

/// A row of the table in main.cpp.
struct Command
{
    const char* name;
    const char* summary;
    /// Gets "zelctl <name>" and what follows it on the command line.
    ExitStatus (*run)(const QStringList& arguments);
};

/// Both streams are UTF-8 whatever the locale, as the log files are.
inline ExitStatus fail(ExitStatus status, const QString& message)
{
    std::fprintf(stderr, "zelctl: %s\n", message.toUtf8().constData());
    return status;
}

/// Done only when all of the text has left the process: a full disk is a failure.
inline ExitStatus print(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return Done;
    return fail(Failed, QStringLiteral("cannot write the output: ") + std::strerror(errno));
}
