#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

/// Reads and writes flat UTF-8 text files of `KEY=value` lines. ASCII white space at both ends of a
/// line is ignored, so a line may end in LF or CR LF.
///
///     # a comment           skipped
///     A=B=C                 key "A", value "B=C"
///     A = 1                 key "A ", value " 1": blanks around the "=" belong to the texts
///     KEY=                  key "KEY", empty value
///     CANBUS_SIMULATION     key "CANBUS_SIMULATION", value "1"
///
/// A blank line is also such a key without "=": the empty key with the value "1". This is kept on
/// purpose. If a key occurs twice, the later line counts. A NUL byte ends the key or value that
/// contains it. The format has no quoting and no escaping.
///
/// All functions may be called from any thread; two writers of one file need a lock of their own.
namespace zeltools::keyvaluefile
{

/// Reads a file. Returns no map if the file cannot be opened or read to its end, with a Warning
/// line if `logOpenFailure` is true. Regular files and character devices can be opened ("/dev/null"
/// gives an empty map); a pipe, a socket or a folder cannot.
///
/// No line is malformed. A line of more than 16 MiB is skipped with a Warning line that has its
/// number.
ZELTOOLS_EXPORT std::optional<QMap<QString, QString>> load(const QString& path,
                                                           bool logOpenFailure);

/// The pairs that load() makes of the content of a file.
ZELTOOLS_EXPORT QMap<QString, QString> parse(const QByteArray& content);

/// The line that save() writes for an entry, line feed included.
ZELTOOLS_EXPORT QByteArray toLine(const QString& key, const QString& value);

/// Truncates the file, writes one line per entry in the order of the keys, and forces the file to
/// storage. Returns false after a Warning line if the file cannot be opened or a write is
/// incomplete (the disk is full), which leaves the lines before it in the file. The old content is
/// lost first, so a power cut can leave part of a file; FileReplacement avoids that risk.
///
/// Text that the format cannot represent is written unchanged and reads back differently: a "=" in
/// a key, a line feed, white space at the ends, a key that begins with "#".
ZELTOOLS_EXPORT bool save(const QString& path, const QMap<QString, QString>& map);

/// Logs one Info line per entry, in the order of the keys. A "%2" inside a key is replaced by the
/// value here, though not in save(); this is kept on purpose.
ZELTOOLS_EXPORT void print(const QMap<QString, QString>& map);

} // namespace zeltools::keyvaluefile
