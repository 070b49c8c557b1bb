#include "bundlecommand.h"

ExitStatus runBundle(const QStringList&)
{
    return fail(Failed, QStringLiteral("this zelctl was built without libarchive, which bundles "
                                       "need"));
}
