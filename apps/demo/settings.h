#pragma once

#include <QTextStream>

/// Changes the settings of the machine as a service screen would: takes changes back, stores them,
/// and meets a store that refuses one. False when anything else happened than has to.
bool changeSettings(QTextStream& out);
