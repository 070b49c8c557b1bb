#pragma once

#include <QString>
#include <QStringList>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <unistd.h>

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

/// What comes from outside must not command a terminal by an escape sequence in it. `kept` are the
/// control characters that stay.
inline QString withoutControls(QString text, const QString& kept = QString())
{
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control && !kept.contains(character))
            character = '?';
    }
    return text;
}

/// All streams are UTF-8 whatever the locale, as the log files are.
inline ExitStatus fail(ExitStatus status, const QString& message)
{
    std::fprintf(stderr, "zelctl: %s\n", withoutControls(message).toUtf8().constData());
    return status;
}

/// Done only when all of the text has left the process: a full disk is a failure.
inline ExitStatus print(const QString& text)
{
    const bool isTerminal = isatty(STDOUT_FILENO) != 0;
    const QByteArray bytes = (isTerminal ? withoutControls(text, "\t\n") : text).toUtf8();
    const auto size = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return Done;
    return fail(Failed, QStringLiteral("cannot write the output: ") + std::strerror(errno));
}
