#pragma once

#include <zeltools/declarativestatemachine/machinerecording.h>
#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QTextStream>

/// Sends the recording of a drink through a text, as from the machine to an engineer, and plays it
/// back into the description and into one whose pump may never answer. Returns whether
/// only the second one differs.
bool playBackDrink(const zeltools::declarativestatemachine::MachineRecording& recording,
                   QTextStream& out);

/// Writes pictures of the drink and of what has happened, the document for other tools and the
/// recording into the folder.
bool drawDrink(const zeltools::declarativestatemachine::StateMachineDescription& drink,
               const zeltools::declarativestatemachine::MachineRecording& recording,
               const QString& folder, QTextStream& out);
