#pragma once

#include "command.h"

#include <QCommandLineParser>

#include <initializer_list>
#include <optional>

/// Reads the command line of one command and prints its help. All texts are ASCII.
class CommandParser
{
public:
    /// An option takes a value if that has a name.
    struct Option
    {
        const char* name;
        const char* description;
        const char* valueName = "";
        const char* defaultValue = "";
    };

    void setDescription(const char* description);
    /// The syntax stands in the line of usage; without one, the name does.
    void addArgument(const char* name, const char* description, const char* syntax = "");
    void addOptions(std::initializer_list<Option> options);

    /// Takes "zelctl <name>" and the words after it. Returns a status if the command ends here
    /// because it has shown its help or was called wrongly.
    std::optional<ExitStatus> parse(const QStringList& words);

    QStringList arguments() const { return m_parser.positionalArguments(); }
    bool isSet(const char* option) const { return m_parser.isSet(QString::fromLatin1(option)); }
    QString value(const char* option) const { return m_parser.value(QString::fromLatin1(option)); }

private:
    QCommandLineParser m_parser;
};
