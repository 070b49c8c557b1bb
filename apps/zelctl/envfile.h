#pragma once

#include <QByteArrayList>
#include <QString>

#include <optional>

/// The text of an environment file under edit. Every byte outside the lines of the edited key
/// stays: comments, other keys, blank lines, the order, CR LF, a last line without a line feed.
class EnvFile
{
public:
    explicit EnvFile(const QByteArray& text);

    /// Whether a line for this pair would be read back as this pair. An empty name, a "=" in the
    /// name, line breaks or white space at the ends would not.
    static bool canHold(const QString& name, const QString& value);

    /// The value that a reader gets, that of the last line with this key.
    std::optional<QString> value(const QString& name) const;
    /// Changes the line that value() is read from, or appends one. Needs canHold().
    void set(const QString& name, const QString& value);
    /// Removes all lines of the key.
    void unset(const QString& name);

    QByteArray text() const { return m_lines.join(); }

private:
    QByteArrayList m_lines; // each with its line end
};
