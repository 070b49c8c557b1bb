#pragma once

#include "commandparser.h"

#include <utility>
#include <vector>

/// The problem with the words of a command line that fits none of the usages of its command, or an
/// empty text. It names the word that is missing, unknown or too much. A file or a folder cannot
/// have an empty name.
QString problemWithWords(const CommandParser& parser);

/// Options that only some actions of a command have: the name, and the actions with ", " between.
using ActionOptions = std::vector<std::pair<const char*, const char*>>;

/// The problem with an option that the action does not have, or an empty text.
QString problemWithOptions(const CommandParser& parser, const QString& action,
                           const ActionOptions& options);
