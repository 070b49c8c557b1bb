#include "command.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <unistd.h>

QString withoutControls(QString text, const QString& kept)
{
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control && !kept.contains(character))
            character = '?';
    }
    return text;
}

ExitStatus fail(ExitStatus status, const QString& message)
{
    std::fprintf(stderr, "zelctl: %s\n", withoutControls(message).toUtf8().constData());
    return status;
}

ExitStatus writeOutput(const QByteArray& bytes)
{
    const auto size = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return Done;
    return fail(Failed, QStringLiteral("cannot write the output: ") + std::strerror(errno));
}

ExitStatus print(const QString& text)
{
    const bool isTerminal = isatty(STDOUT_FILENO) != 0;
    return writeOutput((isTerminal ? withoutControls(text, "\t\n") : text).toUtf8());
}

std::optional<ExitStatus> parse(QCommandLineParser& parser, const QStringList& arguments)
{
    parser.addOption({{"h", "help"}, "Shows this help."});
    const bool isParsed = parser.parse(arguments);
    if (parser.isSet("help"))
        return print(parser.helpText());
    if (!isParsed)
        return fail(WrongUsage, parser.errorText());
    // What a malformed text decodes to; no file would be found by it, and no value read back.
    if (arguments.join(QString()).contains(QChar::ReplacementCharacter))
        return fail(WrongUsage, "the arguments are not UTF-8");
    return std::nullopt;
}
