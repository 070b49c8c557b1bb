#include "kmsgcommand.h"

#include "commandparser.h"
#include "follow.h"
#include "kmsgselection.h"
#include <zeltools/dmesg/kmsgreader.h>

#include <QDateTime>

#include <cstdio>
#include <functional>

#include <unistd.h>

using dmesg::KmsgReader;
using dmesg::KmsgRecord;

namespace
{

void addOptions(CommandParser& parser)
{
    parser.setDescription("Prints the log of the running kernel with time, level and facility.");
    parser.addOptions({
        {"level",
         "Only this level and more severe ones: debug, info, notice, warn, err, crit, alert, "
         "emerg.",
         "LEVEL"},
        {"facility", "Only these facilities, separated by commas: kern, user, daemon and so on.",
         "NAMES"},
        {"follow", "Goes on with new records, until interrupted."},
        {"json", "Prints one JSON object for each record."},
    });
}

QJsonObject recordObject(const KmsgRecord& record)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(record.time.count());
    QJsonObject object = jsonObject({{"time", time.toString(Qt::ISODateWithMs)},
                                     {"level", KmsgRecord::levelName(record.level)},
                                     {"facility", KmsgRecord::facilityName(record.facility)},
                                     {"sequence", static_cast<double>(record.sequence)},
                                     {"text", QString::fromUtf8(record.text)}});
    QJsonObject fields;
    for (auto field = record.fields.begin(); field != record.fields.end(); ++field)
        fields.insert(QString::fromUtf8(field.key()), QString::fromUtf8(field.value()));
    if (!fields.isEmpty())
        object.insert(QStringLiteral("fields"), fields);
    return object;
}

QString recordLine(const KmsgRecord& record)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(record.time.count());
    // A record of several lines is indented, so that none of them looks like another record.
    return time.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss:zzz| ")) +
           QStringLiteral("%1 | %2 | ")
               .arg(KmsgRecord::levelName(record.level), -6)
               .arg(KmsgRecord::facilityName(record.facility), -6) +
           record.printableText().replace(QLatin1Char('\n'), QStringLiteral("\n  "));
}

/// Prints the records that are there until `isEnd` is true of one, since a flood may go on for
/// ever. Returns Done if more may come.
ExitStatus printRecords(KmsgReader& reader, const KmsgSelection& selection, bool isJson,
                        const std::function<bool(const KmsgRecord&)>& isEnd)
{
    KmsgRecord record;
    for (;;) {
        const KmsgReader::Result result = reader.next(record);
        if (result == KmsgReader::Result::Malformed)
            continue;
        if (result == KmsgReader::Result::Nothing)
            return Done;
        if (result != KmsgReader::Result::Record)
            return fail(Failed, result == KmsgReader::Result::Ended
                                    ? QStringLiteral("the kernel log has ended")
                                    : reader.error());
        if (isEnd(record))
            return Done;
        if (record.overwritten > 0)
            std::fprintf(stderr, "zelctl: %llu records were overwritten before they were read\n",
                         static_cast<unsigned long long>(record.overwritten));
        if (!selection.matches(record))
            continue;
        const ExitStatus status =
            isJson ? printJson(recordObject(record)) : printLine(recordLine(record));
        if (status != Done)
            return status;
    }
}

/// Prints the records that are there at the start.
ExitStatus printOnce(KmsgReader& reader, const KmsgSelection& selection, bool isJson)
{
    KmsgReader laterReader;
    const QString problem = laterReader.open();
    if (!problem.isEmpty() || ::lseek(laterReader.descriptor(), 0, SEEK_END) < 0)
        return fail(Failed,
                    problem.isEmpty() ? QStringLiteral("the kernel log has no end") : problem);
    std::optional<quint64> firstLater;
    return printRecords(reader, selection, isJson, [&](const KmsgRecord& record) {
        KmsgRecord later;
        if (!firstLater && laterReader.next(later) == KmsgReader::Result::Record)
            firstLater = later.sequence;
        return firstLater && record.sequence >= *firstLater;
    });
}

ExitStatus follow(KmsgReader& reader, const KmsgSelection& selection, bool isJson)
{
    const Follow waiting;
    const auto isEnd = [&waiting](const KmsgRecord& /*record*/) { return waiting.isInterrupted(); };
    ExitStatus status = Done;
    do
        status = printRecords(reader, selection, isJson, isEnd);
    while (status == Done && waiting.wait());
    return status;
}

} // namespace

ExitStatus runKmsg(const QStringList& arguments)
{
    CommandParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parser.parse(arguments))
        return *status;
    if (!parser.arguments().isEmpty())
        return fail(WrongUsage,
                    QStringLiteral("kmsg takes no argument, see \"zelctl kmsg --help\""));
    KmsgSelection selection;
    QString problem = parser.isSet("level") ? selection.setLevel(parser.value("level")) : QString();
    if (problem.isEmpty() && parser.isSet("facility"))
        problem = selection.setFacilities(parser.value("facility"));
    if (!problem.isEmpty())
        return fail(WrongUsage, problem);
    KmsgReader reader;
    problem = reader.open();
    if (!problem.isEmpty())
        return fail(Failed, problem);

    const bool isJson = parser.isSet("json");
    return parser.isSet("follow") ? follow(reader, selection, isJson)
                                  : printOnce(reader, selection, isJson);
}
