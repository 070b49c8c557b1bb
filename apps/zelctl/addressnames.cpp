#include "addressnames.h"

#include "words.h"

#include <zeltools/timedprocess.h>

namespace
{

/// The limit of what a damaged file with symbols may make the program print.
constexpr int s_mostOutput_B = 64 * 1024 * 1024;

QByteArray hexLines(const QVector<quint64>& addresses)
{
    QByteArray lines;
    for (const quint64 address : addresses)
        lines += "0x" + QByteArray::number(address, 16) + '\n';
    return lines;
}

/// Returns what the program prints for the addresses.
QByteArray run(const QString& file, const QVector<quint64>& addresses,
               std::chrono::milliseconds patience, QString& error)
{
    QByteArray output;
    zeltools::TimedProcess process([] {});
    process.setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&] {
        output += process.readAllStandardOutput();
        if (output.size() > s_mostOutput_B)
            process.kill();
    });
    process.start(QStringLiteral("addr2line"), {QStringLiteral("-Cfipe"), file});
    // A report may have more addresses than a command line can take.
    process.write(hexLines(addresses));
    process.closeWriteChannel();
    process.waitForEnd(patience);
    if (process.error() == QProcess::FailedToStart)
        error = Zelctl::tr("addr2line of binutils is missing, so calls have no names");
    else if (process.isOverdue())
        error = Zelctl::tr("addr2line takes too long for %1").arg(file);
    else if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        error = Zelctl::tr("addr2line cannot read %1").arg(file);
    return output;
}

/// The name without what addr2line prints for an unknown place or function. Without a place, the
/// name is that of the symbol before the address. In a file that has only the symbols of exported
/// functions, the address may belong to another function.
QString shortened(const QString& name)
{
    if (name == QLatin1String("?? ??:0"))
        return QString();
    for (const QLatin1String unknown : {QLatin1String(" at ??:0"), QLatin1String(" at ??:?")}) {
        if (name.endsWith(unknown))
            return QStringLiteral("near ") + name.left(name.size() - unknown.size());
    }
    return name;
}

QVector<QStringList> parse(const QByteArray& output)
{
    const QLatin1String mark(" (inlined by) ");
    QVector<QStringList> all;
    const QStringList lines = QString::fromUtf8(output).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const bool isContinued = line.startsWith(mark) && !all.isEmpty();
        const QString name = shortened(isContinued ? line.mid(mark.size()) : line);
        if (!isContinued)
            all.append(QStringList());
        if (!name.isEmpty())
            all.last().append(name);
    }
    all.removeLast(); // what follows the last line feed
    return all;
}

} // namespace

QVector<QStringList> addressNames(const QString& file, const QVector<quint64>& addresses,
                                  std::chrono::milliseconds patience, QString& error)
{
    const QByteArray output = run(file, addresses, patience, error);
    const QVector<QStringList> names = error.isEmpty() ? parse(output) : QVector<QStringList>();
    if (error.isEmpty() && names.size() != addresses.size())
        error = Zelctl::tr("addr2line does not give the names in %1 one by one").arg(file);
    return error.isEmpty() ? names : QVector<QStringList>();
}
