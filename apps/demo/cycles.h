#pragma once

#include <QString>
#include <QTextStream>

/// Makes a drink, rinses and sends commands, each with another kind of sequence, while some answers
/// of the boards are wrong, late or missing. Prints the steps and returns whether they are the
/// expected ones. Writes pictures of the drink's machine to the folder, unless its name is empty.
bool runCycles(const QString& diagramFolder, QTextStream& out);
