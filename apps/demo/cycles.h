#pragma once

#include <QString>
#include <QTextStream>

/// Makes a drink, rinses and sends commands, each by another kind of sequence, with boards that
/// answer wrongly, late or not at all at times. Prints what happened; false when it was not what
/// has to happen. Leaves pictures of the drink's machine in the folder, unless that is empty.
bool runCycles(const QString& diagramFolder, QTextStream& out);
