#include "kmsgcommand.h"

#include "commandparser.h"
#include "follow.h"
#include "kmsgselection.h"
#include "words.h"
#include <zeltools/dmesg/kmsgreader.h>

#include <QDateTime>

#include <cstdio>
#include <functional>

#include <unistd.h>

using dmesg::KmsgReader;
using dmesg::KmsgRecord;

namespace
{

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
                                    ? Zelctl::tr("the kernel log has ended")
                                    : reader.error());
        if (isEnd(record))
            return Done;
        if (record.overwritten > 0)
            fail(Done,
                 Zelctl::counted(
                     static_cast<qint64>(record.overwritten),
                     QT_TRANSLATE_NOOP("zelctl", "1 record was overwritten before it was read"),
                     QT_TRANSLATE_N_NOOP("zelctl",
                                         "%n records were overwritten before they were read")));
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
        return fail(Failed, problem.isEmpty() ? Zelctl::tr("the kernel log has no end") : problem);
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

void describeKmsg(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl", "Prints the log of the running kernel with time, level and facility."));
    parser.addValues({
        {"LEVEL", QT_TRANSLATE_NOOP("zelctl", "A level"), CommandParser::OneOf,
         KmsgSelection::levelNames()},
        {"NAMES", QT_TRANSLATE_NOOP("zelctl", "Facilities"), CommandParser::OneOf,
         KmsgSelection::facilityNames()},
    });
    parser.addOptions({
        {"level", QT_TRANSLATE_NOOP("zelctl", "Only this level and more severe ones."), "LEVEL"},
        {"facility",
         QT_TRANSLATE_NOOP(
             "zelctl", "Only these facilities, separated by commas; may be given several times."),
         "NAMES", "", true},
        {"follow", QT_TRANSLATE_NOOP("zelctl", "Continues with new records, until interrupted.")},
        {"json", QT_TRANSLATE_NOOP("zelctl", "Prints one JSON object for each record.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "The records were printed."),
        QT_TRANSLATE_NOOP("zelctl",
                          "The log cannot be read; the kernel may show it to root only."));
    parser.addFiles({{"/dev/kmsg", QT_TRANSLATE_NOOP("zelctl", "The log of the kernel.")}});
    parser.addExamples({
        {"zelctl kmsg --level warn --facility kern --follow",
         QT_TRANSLATE_NOOP("zelctl", "Follows what the kernel warns of.")},
    });
}

ExitStatus runKmsg(const CommandParser& parser)
{
    KmsgSelection selection;
    QString problem = parser.isSet("level") ? selection.setLevel(parser.value("level")) : QString();
    if (problem.isEmpty() && parser.isSet("facility"))
        problem = selection.setFacilities(parser.names("facility"));
    if (!problem.isEmpty())
        return refuse(problem);
    KmsgReader reader;
    problem = reader.open();
    if (!problem.isEmpty())
        return fail(Failed, problem);

    const bool isJson = parser.isSet("json");
    return parser.isSet("follow") ? follow(reader, selection, isJson)
                                  : printOnce(reader, selection, isJson);
}
