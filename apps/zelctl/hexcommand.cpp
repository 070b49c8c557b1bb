#include "hexcommand.h"

#include "commandparser.h"
#include "readfile.h"
#include "words.h"
#include <zeltools/binarydataformatter.h>
#include <zeltools/wrongbytedataexception.h>

#include <new>

#include <unistd.h>

namespace
{

constexpr qint64 s_largestInput_B = qint64(64) * 1024 * 1024;

/// The details of the exception without its name, and shortened, since they quote the whole text.
QString reasonOf(const WrongByteDataException& exception)
{
    constexpr int enough = 200;
    const QString text = QString::fromLocal8Bit(exception.what());
    const int start = text.indexOf(QLatin1Char('"')) + 1;
    const QString details = text.mid(start, text.size() - start - 1);
    return details.size() > enough ? details.left(enough) + QStringLiteral("...") : details;
}

/// The line that is printed for the bytes; a blank line stays blank.
QString lineOf(const CommandParser& parser, const BinaryDataFormatter& formatter, bool isBlank)
{
    const QString text =
        isBlank ? QString() : formatter.format(parser.value("prefix"), parser.value("separator"));
    return parser.isSet("json")
               ? jsonLine(jsonObject({{"text", text}, {"bytes", formatter.data().size()}}))
               : text + QLatin1Char('\n');
}

ExitStatus convert(const CommandParser& parser, const QByteArray& input, bool isLines)
{
    if (parser.isSet("from-bytes"))
        return print(lineOf(parser, BinaryDataFormatter(input), false));

    const QByteArrayList lines = input.split('\n');
    QByteArray bytes;
    QString text;
    for (int i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines[i].trimmed();
        if (line.isEmpty() && i == lines.size() - 1 && isLines)
            break;
        try {
            const BinaryDataFormatter formatter(QString::fromUtf8(line));
            if (parser.isSet("to-bytes"))
                bytes += formatter.data();
            else
                text += lineOf(parser, formatter, line.isEmpty());
        } catch (const WrongByteDataException& exception) {
            const QString reason = reasonOf(exception);
            return fail(Failed, isLines
                                    ? Zelctl::tr("line %1: %2").arg(QString::number(i + 1), reason)
                                    : reason);
        }
    }
    return parser.isSet("to-bytes") ? writeOutput(bytes) : print(text);
}

} // namespace

void describeHex(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl", "Prints hexadecimal text in one form, or the bytes that it means, or the text "
                  "for bytes. The text may have letters of either case, \"-\", \":\" and 0x "
                  "anywhere; white space is allowed at its ends."));
    parser.addUsages({{"TEXT", ""}});
    parser.addValues({
        {"TEXT", QT_TRANSLATE_NOOP("zelctl", "The text. \"-\" is the standard input: each line is "
                                             "a text of its own, blank ones stay blank")},
    });
    parser.addOptions({
        {"prefix", QT_TRANSLATE_NOOP("zelctl", "Begins each text with PREFIX, as it is."),
         "PREFIX"},
        {"separator",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "Puts SEPARATOR, converted to upper case, between the bytes; \"-\" unless given."),
         "SEPARATOR", "-"},
        {"from-bytes",
         QT_TRANSLATE_NOOP(
             "zelctl", "Takes TEXT, or the standard input as a whole, for the bytes themselves.")},
        {"to-bytes",
         QT_TRANSLATE_NOOP("zelctl", "Prints the bytes of all texts, one after the other.")},
        {"json", QT_TRANSLATE_NOOP("zelctl", "Prints one JSON object for each text.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "All texts were converted."),
        QT_TRANSLATE_NOOP("zelctl", "A text is not hexadecimal, or the input is too large."));
    parser.addExamples({
        {"zelctl hex 0xde:ad-BEEF --prefix 0x",
         QT_TRANSLATE_NOOP("zelctl", "Prints 0xDE-AD-BE-EF.")},
        {"zelctl hex --from-bytes - < frame.bin",
         QT_TRANSLATE_NOOP("zelctl", "Prints the bytes of a file.")},
        {"zelctl hex --to-bytes 48:49 > hi",
         QT_TRANSLATE_NOOP("zelctl", "Writes HI, without a line feed.")},
    });
}

ExitStatus runHex(const CommandParser& parser)
{
    const QString argument = parser.arguments().value(0);
    const bool isToBytes = parser.isSet("to-bytes");
    if (isToBytes && (parser.isSet("from-bytes") || parser.isSet("prefix") ||
                      parser.isSet("separator") || parser.isSet("json")))
        return refuse(Zelctl::tr("--to-bytes cannot be combined with other options"));
    if (isToBytes && isatty(STDOUT_FILENO) != 0)
        return fail(WrongUsage,
                    Zelctl::tr("bytes are not written to a terminal; redirect the output"));

    const bool isLines = argument == QLatin1String("-");
    const FileContent content =
        isLines ? readStandardInput(s_largestInput_B) : FileContent{argument.toUtf8(), {}, true};
    if (!content.error.isEmpty())
        return fail(Failed, content.error);
    try {
        return convert(parser, content.bytes, isLines);
    } catch (const std::bad_alloc&) {
        return fail(Failed, Zelctl::tr("the text for so many bytes does not fit into the memory"));
    }
}
