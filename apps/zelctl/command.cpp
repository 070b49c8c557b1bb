#include "command.h"

#include "words.h"

#include <QJsonDocument>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

QString withoutControls(QString text, const QString& kept)
{
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control && !kept.contains(character))
            character = QLatin1Char('?');
    }
    return text;
}

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

void keepStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY); // takes the lowest
    }
}

ExitStatus fail(ExitStatus status, const QString& message)
{
    std::fprintf(stderr, "zelctl: %s\n", withoutControls(message).toUtf8().constData());
    return status;
}

ExitStatus refuse(const QString& problem)
{
    // The name of the program is "zelctl" and the command.
    const QString command = QCoreApplication::arguments().constFirst();
    return fail(WrongUsage, Zelctl::tr("%1; see \"%2 --help\"").arg(problem, command));
}

ExitStatus writeOutput(const QByteArray& bytes)
{
    const auto size = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return Done;
    return fail(Failed, Zelctl::tr("cannot write the output: %1").arg(systemError()));
}

ExitStatus print(const QString& text)
{
    const bool isTerminal = isatty(STDOUT_FILENO) != 0;
    return writeOutput(
        (isTerminal ? withoutControls(text, QStringLiteral("\t\n")) : text).toUtf8());
}

ExitStatus printLine(const QString& text)
{
    return print(text + QLatin1Char('\n'));
}

QJsonObject jsonObject(std::initializer_list<std::pair<const char*, QJsonValue>> members)
{
    QJsonObject object;
    for (const auto& [name, value] : members)
        object.insert(QString::fromLatin1(name), value);
    return object;
}

QString jsonLine(const QJsonObject& object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) +
           QLatin1Char('\n');
}

ExitStatus printJson(const QJsonObject& object)
{
    return print(jsonLine(object));
}
