#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

/// Flat text files of `KEY=value` lines, UTF-8. White space (ASCII) at both ends of a line is
/// dropped, so a line may end in LF or CR LF.
///
///     # a comment           skipped
///     A=B=C                 key "A", value "B=C"
///     A = 1                 key "A ", value " 1": blanks around the "=" belong to the texts
///     KEY=                  key "KEY", empty value
///     CANBUS_SIMULATION     key "CANBUS_SIMULATION", value "1"
///
/// A blank line is such a key without "=" too, the empty one with the value "1"; this is kept on
/// purpose. A later line of the same key wins, and a NUL byte ends the key or value that it is in.
/// There is no quoting and no escaping.
///
/// Safe to call from any thread; two writers of one file need a lock of their own.
namespace zeltools::keyvaluefile
{

/// Nothing when the file cannot be opened, or when reading it fails before its end; that is a
/// Warning line if `logOpenFailure`. Regular files and character devices can be opened ("/dev/null"
/// is an empty map); a pipe, a socket or a folder cannot.
///
/// There are no malformed lines. A line of more than 16 MiB gives no pair but a Warning line with
/// its number.
ZELTOOLS_EXPORT std::optional<QMap<QString, QString>> load(const QString& path,
                                                           bool logOpenFailure);

/// What load() makes of the content of a file.
ZELTOOLS_EXPORT QMap<QString, QString> parse(const QByteArray& content);

/// The line that save() writes for an entry, line feed included.
ZELTOOLS_EXPORT QByteArray toLine(const QString& key, const QString& value);

/// Truncates the file, writes one line an entry in the order of the keys, and forces it to storage.
/// False after a Warning line when the file cannot be opened or a write falls short (the disk is
/// full); the lines before stay in it. The old content is gone in either case, so a cut of the
/// supply at the wrong moment leaves part of a file; FileReplacement is the way without that risk.
///
/// What the format cannot hold is written as it is and reads back as something else: a "=" in a
/// key, a line feed, white space at the ends, a key that begins with "#".
ZELTOOLS_EXPORT bool save(const QString& path, const QMap<QString, QString>& map);

/// Logs one Info line an entry, in the order of the keys. A "%2" inside a key becomes the value
/// here, though not in save(); kept on purpose.
ZELTOOLS_EXPORT void print(const QMap<QString, QString>& map);

} // namespace zeltools::keyvaluefile
