#pragma once

#include <QString>

/// The names of all kinds of events, separated by commas.
QString eventKindKeys();
/// The text in the files for the name or the text of a kind; empty for an unknown one.
QString eventKindInFile(const QString& name);
