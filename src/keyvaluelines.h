#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArrayList>
#include <QHash>
#include <QString>
#include <QVector>

#include <functional>
#include <optional>

namespace zeltools
{

/// The text of a key-value file under edit (see keyvaluefile.h). Every byte outside the lines of
/// the edited keys stays: comments, other keys, blank lines, the order, CR LF, a last line without
/// a line feed.
class ZELTOOLS_EXPORT KeyValueLines
{
public:
    /// The size of the largest file that edit() reads.
    static constexpr qint64 largest_B = qint64(16) * 1024 * 1024;

    /// Takes the whole content of a file.
    explicit KeyValueLines(const QByteArray& text);

    /// Whether a line for this pair would be read back as this pair. An empty key, a "=" in the
    /// key, line breaks or white space at the ends would not.
    static bool canHold(const QString& key, const QString& value);

    /// The value that a reader gets, that of the last line with this key.
    std::optional<QString> value(const QString& key) const;
    /// Changes the line that value() is read from, or appends one. Needs canHold().
    void set(const QString& key, const QString& value);
    /// Removes all lines of the key.
    void unset(const QString& key);

    /// The content with the changes so far.
    QByteArray text() const { return m_lines.join(); }

    /// Changes a file, which is created if it is missing. Returns an empty text, or the reason of a
    /// failure in the words of the system; the file is then unchanged. Like FileReplacement, the
    /// call blocks, and it waits up to ten seconds for another edit. If the folder does not accept
    /// a second file, the text is written in place, where a kill may leave part of it.
    static QString edit(const QString& path, const std::function<void(KeyValueLines&)>& change);

private:
    void append(const QByteArray& line);

    QByteArrayList m_lines;                // each with its line end; empty if it was removed
    QHash<QString, QVector<int>> m_places; // the lines of each key in their order
};

} // namespace zeltools
