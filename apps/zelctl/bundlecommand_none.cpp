#include "bundlecommand.h"

#include "words.h"

ExitStatus runBundle(const CommandParser& /*parser*/)
{
    return fail(Failed, Zelctl::tr("this zelctl was built without libarchive, which bundles need"));
}
