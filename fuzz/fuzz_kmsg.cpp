// Compares the records that are read from a file of kernel records with those that regular
// expressions find, and checks that their lines can be printed.

#include "dmesg/kmsgreader.h"
#include "fuzz.h"

#include <QRegularExpression>
#include <QVector>

#include <sys/mman.h>
#include <unistd.h>

using namespace dmesg;

namespace
{

// Latin-1 keeps each byte as one character.
QByteArray decoded(QString text)
{
    static const QRegularExpression escape(QStringLiteral("\\\\x([0-9A-Fa-f]{2})"));
    QByteArray bytes;
    int position = 0;
    for (auto matches = escape.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        bytes += text.mid(position, match.capturedStart() - position).toLatin1();
        bytes += QByteArray::fromHex(match.captured(1).toLatin1());
        position = match.capturedEnd();
    }
    return bytes + text.mid(position).toLatin1();
}

struct Expected
{
    bool isRecord = false;
    quint32 priority = 0;
    quint64 sequence = 0;
    quint64 sinceBoot_us = 0;
    QByteArray text;
    QMap<QByteArray, QByteArray> fields;
};

Expected expectedRecord(const QString& record)
{
    static const QRegularExpression form(
        QStringLiteral("^(\\d+),(\\d+),(\\d+)(?:,[^;\\n]*)?;([^\\n]*)"));
    static const QRegularExpression field(QStringLiteral("\\n ([^=\\n]+)=([^\\n]*)"));
    Expected expected;
    const QRegularExpressionMatch match = form.match(record);
    bool isPriority = false, isSequence = false, isTime = false;
    expected.priority = match.captured(1).toUInt(&isPriority);
    expected.sequence = match.captured(2).toULongLong(&isSequence);
    expected.sinceBoot_us = match.captured(3).toULongLong(&isTime);
    expected.isRecord = match.hasMatch() && isPriority && isSequence && isTime &&
                        expected.sinceBoot_us < quint64(1) << 62;
    expected.text = decoded(match.captured(4));
    for (auto fields = field.globalMatch(record, match.capturedEnd()); fields.hasNext();) {
        const QRegularExpressionMatch found = fields.next();
        expected.fields[found.captured(1).toLatin1()] = decoded(found.captured(2));
    }
    return expected;
}

void checkLines(const KmsgRecord& record)
{
    const QStringList lines = record.lines();
    require(lines.size() == record.text.count('\n') + 1 && lines.first().startsWith('['));
    for (const QString& line : lines) {
        for (const QChar character : line)
            require(character.category() != QChar::Other_Control || character.isSpace());
    }
    KmsgRecord::levelName(record.level);
    KmsgRecord::facilityName(record.facility);
}

void checkRecord(KmsgReader& reader, const QString& bytes)
{
    const Expected expected = expectedRecord(bytes);
    KmsgRecord record;
    const KmsgReader::Result result = reader.next(record);
    require(result ==
            (expected.isRecord ? KmsgReader::Result::Record : KmsgReader::Result::Malformed));
    if (!expected.isRecord)
        return;
    require(record.facility == expected.priority / 8 &&
            record.level == static_cast<int>(expected.priority % 8) &&
            record.sequence == expected.sequence &&
            record.sinceBoot.count() == static_cast<qint64>(expected.sinceBoot_us) &&
            record.text == expected.text && record.fields == expected.fields);
    checkLines(record);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const int file = memfd_create("kmsg", 0);
    static const QRegularExpression record(QStringLiteral("\\G[^\\n]*(\\n [^\\n]*)*+\\n"));
    require(ftruncate(file, 0) == 0 && pwrite(file, data, size, 0) == static_cast<ssize_t>(size));
    KmsgReader reader(QStringLiteral("/proc/self/fd/%1").arg(file));
    require(reader.open().isEmpty());
    // The size keeps what follows a NUL.
    const QString bytes =
        QString::fromLatin1(reinterpret_cast<const char*>(data), static_cast<int>(size));
    for (auto records = record.globalMatch(bytes); records.hasNext();)
        checkRecord(reader, records.next().captured());
    KmsgRecord rest;
    require(reader.next(rest) == KmsgReader::Result::Ended);
    return 0;
}
