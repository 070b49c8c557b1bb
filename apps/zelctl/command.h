#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <initializer_list>
#include <utility>

/// The exit status, which scripts read. A command that has not done its work gives the reason in
/// one line on stderr.
enum ExitStatus { Done = 0, Failed = 1, WrongUsage = 2 };

class CommandParser;

/// A row of the table in commands.cpp.
struct Command
{
    const char* name; ///< one word, or two, such as "log recover"
    const char* summary;
    /// Adds all that the help says about the command, and changes nothing else.
    void (*describe)(CommandParser& parser);
    /// Takes the parsed command line.
    ExitStatus (*run)(const CommandParser& parser);
};

/// Masks control characters, so that a text from outside cannot command a terminal by an escape
/// sequence. The characters in `kept` stay.
QString withoutControls(QString text, const QString& kept = QString());

/// The text for `errno`.
QString systemError();

/// Keeps the numbers of standard streams that the caller has closed from going to other files, into
/// which messages would be written. Reading from such a stream, and writing to it, fails.
void keepStandardStreams();

/// Prints the message on stderr and returns the status. All streams are UTF-8 in every locale, as
/// the log files are.
ExitStatus fail(ExitStatus status, const QString& message);

/// Prints the problem with the command line, which misuses the command that runs, and a hint to its
/// help. Returns WrongUsage.
ExitStatus refuse(const QString& problem);

/// Writes to stdout. A full disk is a failure: the result is Done only if all bytes have left the
/// process.
ExitStatus writeOutput(const QByteArray& bytes);
/// Prints a text, with its control characters masked on a terminal.
ExitStatus print(const QString& text);
/// Prints a text and a line feed.
ExitStatus printLine(const QString& text);
/// An object of members with ASCII names.
QJsonObject jsonObject(std::initializer_list<std::pair<const char*, QJsonValue>> members);
/// The object in one line, with its line feed.
QString jsonLine(const QJsonObject& object);
/// Prints an object in one line.
ExitStatus printJson(const QJsonObject& object);
