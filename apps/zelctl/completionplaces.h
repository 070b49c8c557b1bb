#pragma once

#include "commandparser.h"

/// What may stand at a place of the command line of a command.
struct CompletionPlace
{
    int position = 0; ///< how many words, without the options, stand between the command and it
    /// The words that must stand before it, with their positions.
    QVector<QPair<int, QString>> wordsBefore;
    bool hasFiles = false;
    bool hasFolders = false;
    QStringList words;
};

/// The places in all usages of the command. No two have the same position and words before them.
QVector<CompletionPlace> completionPlaces(const CommandParser& parser);
/// What may stand behind the option; its position means nothing.
CompletionPlace valuePlace(const CommandParser& parser, const CommandParser::Option& option);
