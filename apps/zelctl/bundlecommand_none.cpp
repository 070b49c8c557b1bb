#include "bundlecommand.h"

#include "commandparser.h"
#include "words.h"

void describeBundle(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl", "This zelctl was built without libarchive, which bundles need."));
    parser.setExitStatuses("", QT_TRANSLATE_NOOP("zelctl", "Always."));
}

ExitStatus runBundle(const CommandParser& /*parser*/)
{
    return fail(Failed, Zelctl::tr("this zelctl was built without libarchive, which bundles need"));
}
