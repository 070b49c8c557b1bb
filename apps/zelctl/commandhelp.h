#pragma once

#include "commandparser.h"

/// The help of the program, which lists its commands.
QString programHelp();
/// The help of a command, in lines of at most 79 characters.
QString commandHelp(const CommandParser& parser);

/// Breaks a paragraph into lines of at most 79 characters. The first one stands behind `indent`
/// characters, and all others begin with so many spaces.
QString wrapped(const QString& text, int indent = 0);
/// The option as it is typed, such as "-h, --help" or "--level LEVEL".
QString optionSyntax(const CommandParser::Option& option);
/// The usages as they are typed, with the name of the command.
QStringList usageLines(const CommandParser& parser);
/// The description of the value, with its words if they are few enough.
QString valueText(const CommandParser::Value& value);
/// The exit statuses in the order of their numbers, and what they mean.
std::vector<CommandParser::Row> exitStatuses(const CommandParser::Description& description);
