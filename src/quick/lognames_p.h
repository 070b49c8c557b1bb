#pragma once

#include <QString>
#include <QVariantList>

/// The names of levels and modules on the screen.
namespace zeltools::quick::lognames
{

/// In the language of the screen; empty for a value that is not a level.
QString level(int level);
/// The levels from Debug to Critical as a list of {value, name} for QML.
QVariantList levels();
/// The names of modules with an id below 64, joined by ", ".
QString modules(quint64 bits);

} // namespace zeltools::quick::lognames
