#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <optional>

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
QString withoutControls(QString text, const QString& kept = QString());

/// All streams are UTF-8 whatever the locale, as the log files are.
ExitStatus fail(ExitStatus status, const QString& message);

/// Done only when all of it has left the process: a full disk is a failure.
ExitStatus writeOutput(const QByteArray& bytes);
/// The same for a text, with its control characters masked on a terminal.
ExitStatus print(const QString& text);

/// Reads the command line. The status is for a command that ends here: with its help, or because
/// it was called wrongly.
std::optional<ExitStatus> parse(QCommandLineParser& parser, const QStringList& arguments);
