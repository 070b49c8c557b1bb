#pragma once

#include <QTextStream>

/// Changes the settings of the machine as a service screen does: reverts changes, stores them, and
/// handles a store that refuses one. Returns whether all steps had the expected result.
bool changeSettings(QTextStream& out);
