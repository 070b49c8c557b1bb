#include "declarativestatemachine/svgwriter.h"

#include "timedprocess.h"

#include <QStandardPaths>

#include <unistd.h>

namespace zeltools::declarativestatemachine
{

namespace
{

// A reason in one line, also if the program complains about many things.
QString firstLine(const QByteArray& output)
{
    return QString::fromUtf8(output).trimmed().section(QLatin1Char('\n'), 0, 0);
}

} // namespace

std::optional<QByteArray> toSvg(const QString& dot, QString& error)
{
    using namespace std::chrono_literals;
    const QString program = QStandardPaths::findExecutable(QStringLiteral("dot"));
    if (program.isEmpty()) {
        error = QStringLiteral("The program \"dot\" is missing; it is part of Graphviz");
        return {};
    }
    TimedProcess process([] { setpgid(0, 0); });
    process.start(program,
                  {QStringLiteral("-Tsvg"), QStringLiteral("-Gfontname=Helvetica"),
                   QStringLiteral("-Nfontname=Helvetica"), QStringLiteral("-Efontname=Helvetica")});
    process.write(dot.toUtf8());
    process.closeWriteChannel();
    error = process.waitForEnd(60s);
    const QByteArray picture = process.readAllStandardOutput();
    if (error.isEmpty() && (process.exitStatus() != QProcess::NormalExit ||
                            process.exitCode() != 0 || picture.isEmpty())) {
        error = firstLine(process.readAllStandardError());
        if (error.isEmpty())
            error = QStringLiteral("The program crashed");
    }
    if (error.isEmpty())
        return picture;
    error.prepend(QStringLiteral("\"dot\" cannot draw the machine: "));
    return {};
}

} // namespace zeltools::declarativestatemachine
