#pragma once

#include "envvar/envvar.h"

#include <QHash>
#include <QVariant>

namespace zeltools::quick
{

/// The value of a switch for a role of SwitchesModel. Values and descriptions are fit for a row,
/// except for the exact value.
QVariant switchData(const envvar::EnvVar& var, int role);

/// The names of the roles of SwitchesModel.
QHash<int, QByteArray> switchRoleNames();

} // namespace zeltools::quick
