#include "hexcommand.h"

#include "commandparser.h"
#include "readfile.h"
#include <zeltools/binarydataformatter.h>
#include <zeltools/wrongbytedataexception.h>

#include <new>

#include <unistd.h>

namespace
{

constexpr qint64 s_largestInput_B = qint64(64) * 1024 * 1024;

void addOptions(CommandParser& parser)
{
    parser.setDescription(
        "Prints hexadecimal text in one form, or the bytes that it means, or the text for bytes.\n"
        "The text may have letters of either case, \"-\", \":\" and 0x anywhere; white space is\n"
        "allowed at its ends. Examples:\n\n"
        "  zelctl hex 0xde:ad-BEEF --prefix 0x       0xDE-AD-BE-EF\n"
        "  zelctl hex --from-bytes - < frame.bin     the bytes of a file\n"
        "  zelctl hex --to-bytes 48:49               HI, without a line feed");
    parser.addArgument(
        "TEXT", "The text. \"-\" is the standard input: each line is a text of its own, blank ones "
                "stay blank.");
    parser.addOptions({
        {"prefix", "Begins each text with <PREFIX>, as it is.", "PREFIX"},
        {"separator", "Parts the bytes by <SEPARATOR>, in upper case; \"-\" unless given.",
         "SEPARATOR", "-"},
        {"from-bytes", "Takes TEXT, or the standard input as a whole, for the bytes themselves."},
        {"to-bytes", "Prints the bytes of all texts, one after the other."},
    });
}

/// The details of the exception without its name, and shortened, since they quote the whole text.
QString reasonOf(const WrongByteDataException& exception)
{
    constexpr int enough = 200;
    const QString text = QString::fromLocal8Bit(exception.what());
    const int start = text.indexOf(QLatin1Char('"')) + 1;
    const QString details = text.mid(start, text.size() - start - 1);
    return details.size() > enough ? details.left(enough) + QStringLiteral("...") : details;
}

ExitStatus convert(const CommandParser& parser, const QByteArray& input, bool isLines)
{
    const QString prefix = parser.value("prefix"), separator = parser.value("separator");
    if (parser.isSet("from-bytes"))
        return printLine(BinaryDataFormatter(input).format(prefix, separator));

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
                text += (line.isEmpty() ? QString() : formatter.format(prefix, separator)) +
                        QLatin1Char('\n');
        } catch (const WrongByteDataException& exception) {
            const QString place = isLines ? QStringLiteral("line %1: ").arg(i + 1) : QString();
            return fail(Failed, place + reasonOf(exception));
        }
    }
    return parser.isSet("to-bytes") ? writeOutput(bytes) : print(text);
}

} // namespace

ExitStatus runHex(const QStringList& arguments)
{
    CommandParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parser.parse(arguments))
        return *status;
    const QStringList texts = parser.arguments();
    if (texts.size() != 1)
        return fail(WrongUsage, QStringLiteral("hex needs one text, see \"zelctl hex --help\""));
    const bool isToBytes = parser.isSet("to-bytes");
    if (isToBytes &&
        (parser.isSet("from-bytes") || parser.isSet("prefix") || parser.isSet("separator")))
        return fail(WrongUsage, QStringLiteral("--to-bytes goes with no other option"));
    if (isToBytes && isatty(STDOUT_FILENO) != 0)
        return fail(WrongUsage,
                    QStringLiteral("bytes could command the terminal, send them to a file"));

    const bool isLines = texts.first() == QLatin1String("-");
    const FileContent content = isLines ? readStandardInput(s_largestInput_B)
                                        : FileContent{texts.first().toUtf8(), {}, true};
    if (!content.error.isEmpty())
        return fail(Failed, content.error);
    try {
        return convert(parser, content.bytes, isLines);
    } catch (const std::bad_alloc&) {
        return fail(Failed,
                    QStringLiteral("the text for so many bytes does not fit into the memory"));
    }
}
