#include "keyvaluelines.h"

#include "filereplacement.h"
#include "keyvaluefile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <unistd.h>

namespace zeltools
{

using keyvaluefile::parse;

namespace
{

bool isThere(const QByteArray& line)
{
    return !line.isEmpty();
}

/// The line's CR LF or LF; empty for a last line without one.
QByteArray lineEnd(const QByteArray& line)
{
    return line.endsWith("\r\n") ? "\r\n" : line.endsWith('\n') ? "\n" : "";
}

QByteArray lineOf(const QString& key, const QString& value)
{
    return QString(key + QLatin1Char('=') + value).toUtf8();
}

/// Reads a file, which may be missing. Returns an empty text or the reason of a failure.
QString read(const QString& path, QByteArray& content)
{
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    if (!info.isFile()) // opening a pipe would wait for a process at its other end
        return path + QStringLiteral(" is not a file");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot open %1: %2").arg(path, file.errorString());
    if (file.size() > KeyValueLines::largest_B)
        return path + QStringLiteral(" is too large");
    content = file.readAll();
    return file.error() == QFile::NoError
               ? QString()
               : QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
}

/// Writes over the old content, and puts it back if the disk is full. The room of the old content
/// is never given up before.
QString writeInPlace(const QString& path, const QByteArray& old, const QByteArray& content)
{
    QFile file(path);
    const auto put = [&file](const QByteArray& bytes) {
        return file.seek(0) && file.write(bytes) == bytes.size() && file.resize(bytes.size()) &&
               ::fsync(file.handle()) == 0;
    };
    if (file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) && put(content))
        return {};
    const QString reason = file.errorString();
    if (file.isOpen())
        put(old);
    return QStringLiteral("cannot write %1: %2").arg(path, reason);
}

} // namespace

KeyValueLines::KeyValueLines(const QByteArray& text)
{
    for (int start = 0; start < text.size();) {
        const int lineFeed = text.indexOf('\n', start);
        const int end = lineFeed < 0 ? text.size() : lineFeed + 1;
        append(text.mid(start, end - start));
        start = end;
    }
}

void KeyValueLines::append(const QByteArray& line)
{
    const QMap<QString, QString> pair = parse(line); // empty for a comment
    if (!pair.isEmpty())
        m_places[pair.firstKey()].append(int(m_lines.size()));
    m_lines.append(line);
}

bool KeyValueLines::canHold(const QString& key, const QString& value)
{
    const QByteArray line = lineOf(key, value);
    return !key.isEmpty() && !line.contains('\r') &&
           parse(line) == QMap<QString, QString>{{key, value}};
}

std::optional<QString> KeyValueLines::value(const QString& key) const
{
    const auto places = m_places.find(key);
    return places != m_places.end() ? std::optional(parse(m_lines[places->last()]).value(key))
                                    : std::nullopt;
}

void KeyValueLines::set(const QString& key, const QString& value)
{
    const auto places = m_places.constFind(key);
    if (places != m_places.constEnd()) {
        QByteArray& line = m_lines[places->last()];
        line = lineOf(key, value) + lineEnd(line);
        return;
    }
    const auto first = std::find_if(m_lines.begin(), m_lines.end(), isThere);
    const QByteArray end =
        first == m_lines.end() || lineEnd(*first).isEmpty() ? "\n" : lineEnd(*first);
    const auto last = std::find_if(m_lines.rbegin(), m_lines.rend(), isThere);
    if (last != m_lines.rend() && lineEnd(*last).isEmpty())
        *last += end;
    append(lineOf(key, value) + end);
}

void KeyValueLines::unset(const QString& key)
{
    const QVector<int> places = m_places.take(key);
    for (const int place : places)
        m_lines[place].clear();
}

QString KeyValueLines::edit(const QString& path, const std::function<void(KeyValueLines&)>& change)
{
    FileReplacement file(path, FileReplacement::Edit);
    if (!file.errorString().isEmpty() && !file.needsWritingInPlace())
        return file.errorString();
    QByteArray content;
    QString reason = read(file.path(), content);
    if (!reason.isEmpty())
        return reason;
    KeyValueLines lines(content);
    change(lines);
    if (file.replace(lines.text()))
        return {};
    return file.needsWritingInPlace() ? writeInPlace(file.path(), content, lines.text())
                                      : file.errorString();
}

} // namespace zeltools
