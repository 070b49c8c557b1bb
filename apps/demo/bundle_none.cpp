#include "bundle.h"

bool showBundle(const QString&, QTextStream& out)
{
    out << "\nNo support bundle: the library was built without libarchive.\n";
    return true;
}
