#pragma once

#include <QStringList>

/// The names of all kinds of events.
QStringList eventKindKeys();
/// The text in the files for the name or the text of a kind; empty for an unknown one.
QString eventKindInFile(const QString& name);
