// Compares the parser of key-value files with a plain reader, and parses a file that is written
// from the result.

#include "fuzz.h"
#include <zeltools/keyvaluefile.h>

#include <QBuffer>

using Map = QMap<QString, QString>;
namespace keyvaluefile = zeltools::keyvaluefile;

namespace
{

Map readLineByLine(QByteArray content)
{
    Map map;
    QBuffer file(&content);
    file.open(QIODevice::ReadOnly);
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        line = line.trimmed();
        if (line.startsWith('#'))
            continue;
        const int equals = line.indexOf('=');
        if (equals < 0)
            map[QString::fromUtf8(line)] = QStringLiteral("1");
        else
            map[QString::fromUtf8(line.left(equals))] = QString::fromUtf8(line.mid(equals + 1));
    }
    return map;
}

// Whether a line can hold the pair. Not every pair that was read can be written: white space before
// a NUL or behind a byte order mark is not trimmed, but the conversion drops these two characters.
bool fits(const QString& key, const QString& value)
{
    const QByteArray line = keyvaluefile::toLine(key, value).chopped(1);
    const QChar mark(QChar::ByteOrderMark);
    return line.trimmed() == line && !line.startsWith('#') && !key.startsWith(mark) &&
           !value.startsWith(mark);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray content = toBytes(data, size);
    const Map map = keyvaluefile::parse(content);
    require(map == readLineByLine(content));

    QByteArray written;
    Map fitting;
    for (auto pair = map.begin(); pair != map.end(); ++pair) {
        if (!fits(pair.key(), pair.value()))
            continue;
        fitting.insert(pair.key(), pair.value());
        written += keyvaluefile::toLine(pair.key(), pair.value());
    }
    require(keyvaluefile::parse(written) == fitting);
    return 0;
}
