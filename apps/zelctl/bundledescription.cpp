#include "bundlecommand.h"
#include "commandparser.h"
#include "words.h"

void describeBundle(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl",
        "Packs the logs of a machine and a description of the running system into one file, and "
        "reads such a file without unpacking it.\n\n"
        "OUT appears when it is complete. What cannot be read is named on stderr and in the "
        "manifest. For a name that ends in .crypt, the key comes from --key-file or from the "
        "environment variable ZEL_KEY; the cipher only protects against casual reading."));
    parser.addUsages({
        {"DIR OUT", QT_TRANSLATE_NOOP("zelctl", "Packs the log files.")},
        {"verify FILE",
         QT_TRANSLATE_NOOP("zelctl", "Checks that all files are there and undamaged.")},
        {"list FILE", QT_TRANSLATE_NOOP("zelctl", "Shows which files there are.")},
    });
    parser.addValues({
        {"DIR",
         QT_TRANSLATE_NOOP("zelctl",
                           "The folder \"logs\", the one above it, or a folder with log files"),
         CommandParser::Folder},
        {"OUT",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "The new file; its name ends in .tar.zst or .tar.gz, or with .crypt behind that"),
         CommandParser::File},
        {"FILE", "", CommandParser::File},
    });
    parser.addOptions({
        {"key-file",
         QT_TRANSLATE_NOOP("zelctl", "Reads the key, 16 hexadecimal digits, from FILE."), "FILE"},
        {"environment",
         QT_TRANSLATE_NOOP("zelctl",
                           "Adds this environment file, with the values of secrets masked."),
         "FILE"},
        {"level",
         QT_TRANSLATE_NOOP("zelctl",
                           "Compression: 1 to 19 for .tar.zst (3), 1 to 9 for .tar.gz (6)."),
         "N"},
        {"json",
         QT_TRANSLATE_NOOP("zelctl", "list: prints the manifest. verify: prints one JSON object.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "The bundle is complete, though what could not be read may be "
                                    "missing; or the file that was read is a complete bundle."),
        QT_TRANSLATE_NOOP("zelctl",
                          "There is no bundle, it is damaged, or the key is missing or wrong."));
    parser.addEnvironment(
        {{"ZEL_KEY",
          QT_TRANSLATE_NOOP("zelctl", "The key, 16 hexadecimal digits, without --key-file.")}});
    parser.addExamples({
        {"zelctl bundle /share/zel/logs machine-4711.tar.zst",
         QT_TRANSLATE_NOOP("zelctl", "Packs all logs of a machine.")},
        {"zelctl bundle list machine-4711.tar.zst --json",
         QT_TRANSLATE_NOOP("zelctl", "Prints the manifest as JSON.")},
    });
}
