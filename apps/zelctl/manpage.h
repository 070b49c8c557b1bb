#pragma once

#include <QString>

class CommandParser;

/// The man page of the program, zelctl(1), in the language of man(7). Its date is that of
/// SOURCE_DATE_EPOCH, or today if that is not set.
QString programManPage();
/// The man page of a command, such as zelctl-log-recover(1).
QString commandManPage(const CommandParser& parser);
/// The name of the page of a command, without a section.
QString manPageName(const QString& command);
