#include "envfile.h"

#include <zeltools/keyvaluefile.h>

#include <algorithm>

using zeltools::keyvaluefile::parse;

namespace
{

auto isOf(const QString& name)
{
    return [name](const QByteArray& line) { return parse(line).contains(name); };
}

/// The line's CR LF or LF; empty for a last line without one.
QByteArray lineEnd(const QByteArray& line)
{
    return line.endsWith("\r\n") ? "\r\n" : line.endsWith('\n') ? "\n" : "";
}

QByteArray lineOf(const QString& name, const QString& value)
{
    return QString(name + QLatin1Char('=') + value).toUtf8();
}

} // namespace

EnvFile::EnvFile(const QByteArray& text)
{
    for (int start = 0; start < text.size();) {
        const int lineFeed = text.indexOf('\n', start);
        const int end = lineFeed < 0 ? text.size() : lineFeed + 1;
        m_lines.append(text.mid(start, end - start));
        start = end;
    }
}

bool EnvFile::canHold(const QString& name, const QString& value)
{
    const QByteArray line = lineOf(name, value);
    return !name.isEmpty() && !line.contains('\r') &&
           parse(line) == QMap<QString, QString>{{name, value}};
}

std::optional<QString> EnvFile::value(const QString& name) const
{
    const auto line = std::find_if(m_lines.rbegin(), m_lines.rend(), isOf(name));
    return line != m_lines.rend() ? std::optional(parse(*line).value(name)) : std::nullopt;
}

void EnvFile::set(const QString& name, const QString& value)
{
    const auto line = std::find_if(m_lines.rbegin(), m_lines.rend(), isOf(name));
    if (line != m_lines.rend()) {
        *line = lineOf(name, value) + lineEnd(*line);
        return;
    }
    const QByteArray end =
        m_lines.isEmpty() || lineEnd(m_lines.first()).isEmpty() ? "\n" : lineEnd(m_lines.first());
    if (!m_lines.isEmpty() && lineEnd(m_lines.last()).isEmpty())
        m_lines.last() += end;
    m_lines.append(lineOf(name, value) + end);
}

void EnvFile::unset(const QString& name)
{
    m_lines.erase(std::remove_if(m_lines.begin(), m_lines.end(), isOf(name)), m_lines.end());
}
