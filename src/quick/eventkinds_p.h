#pragma once

#include <QString>
#include <QVariantList>

/// The kinds of events on the screen. The files have names of their own for them, which stay as
/// they are in every language.
namespace zeltools::quick::eventkinds
{

/// The filters of LogManager::EventModuleFilter as a list of {value, name} for QML, in the language
/// of the screen.
QVariantList filters();
bool isFilter(int value);
/// The name for the screen of a kind in a file ("MenuAccess"), or of several ("MenuAccess,NONE"). A
/// name that is not known stays.
QString shownName(const QString& nameInFile);

} // namespace zeltools::quick::eventkinds
