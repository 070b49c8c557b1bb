#pragma once

#include "commandparser.h"
#include "logprinter.h"
#include "logselection.h"

/// The options of a `zelctl log` command line.
struct LogRequest
{
    LogSelection selection;
    std::optional<int> last; ///< only so many lines, the newest ones
    bool isFollowing = false;
    LogPrinter::Style style = LogPrinter::Plain;
};

void describeLog(CommandParser& parser);
/// Reads the options. Returns the first problem with them, or an empty text.
QString readLogRequest(const CommandParser& parser, LogRequest& request);
